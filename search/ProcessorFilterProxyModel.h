#pragma once

#include "search/SearchText.h"

#include <QSortFilterProxyModel>

#include <memory>

class CFoundProcessors;

/// Filters the processor tree by a search text. Accepts processors whose name, dotted address or
/// displayed number contains the text, other rows whose name contains it, and the parents of all
/// these rows. Names are compared case-insensitively.
///
/// A processor addressed by IP is not found by its number, and one addressed by number is not found
/// by its address. An empty text matches nothing.
///
/// GUI thread.
class CProcessorFilterProxyModel final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit CProcessorFilterProxyModel(QObject* parent = nullptr);
    ~CProcessorFilterProxyModel() override;

    void setSourceModel(QAbstractItemModel* model) override;

    /// Sets the search text.
    void setFilterText(const QString& text);

    const CSearchText& searchText() const { return m_text; }

    /// Returns the accepted processors; null if the source is not a processor tree.
    /// setSourceModel() replaces the object; the new one is valid from modelReset() on.
    CFoundProcessors* found() const { return m_found.get(); }

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    void reviewBranch(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                      const QVector<int>& roles);

    CSearchText m_text;
    QMetaObject::Connection m_review;
    std::unique_ptr<CFoundProcessors> m_found;
    bool m_isSettingText = false;
    mutable bool m_isAsked = false; // a row was requested, so that callers may hold its index
};
