#pragma once

#include "search/SearchedRows.h"

#include <QSortFilterProxyModel>
#include <QString>

#include <vector>

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
    void connectBefore(const QAbstractItemModel& model);
    void reviewBranch(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                      const QVector<int>& roles);

    QString m_text;
    QString m_foldedText;
    bool m_isPlain = true; // a name holds m_text when its folded form holds m_foldedText
    bool m_isShown = true; // an address or a number may hold m_text
    quint32 m_search = 0;  // counts the texts
    mutable CSearchedRows m_rows;
    std::vector<QMetaObject::Connection> m_connections; // to the source
};
