#pragma once

#include <QSortFilterProxyModel>
#include <QString>

/// The part of the processor tree that holds a search text: processors whose name, dotted address
/// or displayed number contains it, other rows whose name does, and the rows above all of these.
///
/// A processor addressed by IP is not found by its number, one addressed by number not by its
/// address. Case counts for neither of them, as they have none, and does not for names. Nothing is
/// found with an empty text.
///
/// GUI thread.
class CProcessorFilterProxyModel final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit CProcessorFilterProxyModel(QObject* parent = nullptr);
    ~CProcessorFilterProxyModel() override;

    void setSourceModel(QAbstractItemModel* model) override;

    /// Searches for `text` from now on.
    void setFilterText(const QString& text);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    void onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                             const QVector<int>& roles);

    QString m_text;
    QMetaObject::Connection m_dataChanged;
};
