#pragma once

#include <QAbstractProxyModel>
#include <QPersistentModelIndex>
#include <QPointer>

#include <vector>

class CFoundProcessors;
class CProcessorFilterProxyModel;
class QStandardItem;

/// A flat list of the processors of a processor tree, sorted by number and then by their order in
/// the tree. Rows with children and rows of other types are left out.
///
/// The list follows its source. Inserted and removed rows cause a model reset. Other changes update
/// the list without a signal, so views must update themselves after them. Above a
/// CProcessorFilterProxyModel, the list changes after that model has emitted its own signals.
///
/// Not supported: a proxy model on top, because the list does not announce all changes; rows that
/// leave the tree without a signal, such as by QStandardItem::takeChild(). GUI thread.
class CProcessorFilterModel final : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit CProcessorFilterModel(QObject* parent = nullptr);
    ~CProcessorFilterModel() override;

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& index) const override;

    /// Returns the length of the list for every `parent`.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Ignores a null `model`.
    void setSourceModel(QAbstractItemModel* model) override;
    QModelIndex mapToSource(const QModelIndex& proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex& sourceIndex) const override;

signals:
    /// Emitted after rows of the tree were inserted or removed, when the list is up to date and
    /// views were reset.
    void rowsAdded();
    void rowsRemed();

public slots:
    /// Reads the list from the source again. Emits no signal.
    void invalidate();

private:
    /// A row of the source: its item if the source is a filter of the processor tree, else its
    /// index.
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
    QPointer<CProcessorFilterProxyModel> m_filter; // the source; null if it is another class
    std::vector<QMetaObject::Connection> m_rowConnections;
};
