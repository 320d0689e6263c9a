#pragma once

#include <QAbstractProxyModel>
#include <QPersistentModelIndex>

#include <optional>
#include <vector>

/// The processors of a tree of processors as a list, in ascending order of their numbers, equal
/// ones in the order of the tree. Rows with children and rows of any other kind are left out.
///
/// The list follows the tree. Views hear of it as a model reset when rows of the tree come or go,
/// and not at all when it changes otherwise: after those changes they look again by themselves.
///
/// Not supported: a proxy model on top, which would not hear enough. GUI thread.
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
    const std::vector<QPersistentModelIndex>& rows() const;
    void refreshRows();
    void onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                       const QVector<int>& roles);
    void onRowsInserted(const QModelIndex& parent, int first, int last);
    void onRowsRemoved();

    // By row of the list, once somebody has asked for them.
    mutable std::optional<std::vector<QPersistentModelIndex>> m_rows;
};
