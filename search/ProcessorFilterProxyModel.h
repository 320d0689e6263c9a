#pragma once

#include "search/SearchText.h"

#include <QSortFilterProxyModel>

#include <memory>

class CFoundProcessors;

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

    const CSearchText& searchText() const { return m_text; }

    /// The processors that come through; null when the source is no processor tree. Another one
    /// for another source, from modelReset() on.
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
    mutable bool m_isAsked = false; // for a row, so that somebody may have it
};
