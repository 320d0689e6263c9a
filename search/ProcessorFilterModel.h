#pragma once

#include <QAbstractProxyModel>
#include <QPersistentModelIndex>
#include <QPointer>

#include <vector>

class CFoundProcessors;
class CProcessorFilterProxyModel;
class QStandardItem;

/// The processors of a tree of processors as a list, in ascending order of their numbers, equal
/// ones in the order of the tree. Rows with children and rows of any other kind are left out.
///
/// The list follows the tree. Views hear of it as a model reset when rows of the tree come or go,
/// and not at all when it changes otherwise: after those changes they look again by themselves. It
/// follows a filter of the processor tree behind that filter's own signals of changes.
///
/// Not supported: a proxy model on top, which would not hear enough; rows that leave the tree
/// without a signal, as QStandardItem::takeChild() takes them. GUI thread.
class CProcessorFilterModel final : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit CProcessorFilterModel(QObject* parent = nullptr);
    ~CProcessorFilterModel() override;

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& index) const override;

    /// The length of the list, whatever `parent` is.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Does nothing for null.
    void setSourceModel(QAbstractItemModel* model) override;
    QModelIndex mapToSource(const QModelIndex& proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex& sourceIndex) const override;

signals:
    /// Rows of the tree came, or went; the list is up to date and views were reset.
    void rowsAdded();
    void rowsRemed();

public slots:
    /// Takes the list anew from the tree. Emits no signal.
    void invalidate();

private:
    /// A row of the source, known by its item where the source filters the processor tree.
    struct Row
    {
        QStandardItem* item = nullptr;
        QPersistentModelIndex index;

        bool operator==(const Row& other) const
        {
            return item == other.item && index == other.index;
        }
    };

    void connectSource(const QAbstractItemModel& source);
    void connectRows();
    void refresh();
    void reset(bool haveGone, bool haveCome);
    const CFoundProcessors* found() const;
    void takeRows();
    const Row* rowAt(const QModelIndex& index) const;
    QModelIndex indexOf(const Row& row) const;
    QModelIndex readableIndex(const QModelIndex& index) const;

    std::vector<Row> m_rows;
    QPointer<CProcessorFilterProxyModel> m_filter; // the source, if it is one
    std::vector<QMetaObject::Connection> m_rowConnections;
};
