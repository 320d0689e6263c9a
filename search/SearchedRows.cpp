#include "search/SearchedRows.h"

CSearchedRows::Row& CSearchedRows::at(int row, const QModelIndex& parent)
{
    if (m_lastPlace < 0 || m_lastParent != parent) {
        m_lastParent = parent;
        m_lastPlace = m_places.value(parent, static_cast<int>(m_branches.size()));
        if (m_lastPlace == static_cast<int>(m_branches.size())) {
            m_places.insert(parent, m_lastPlace);
            m_branches.emplace_back();
        }
    }
    auto& rows = m_branches[static_cast<std::size_t>(m_lastPlace)];
    const auto place = static_cast<std::size_t>(row);
    if (place >= rows.size())
        rows.resize(place + 1);
    return rows[place];
}

void CSearchedRows::forget(const QModelIndex& parent, int first, int last)
{
    const auto found = m_places.constFind(parent);
    if (found == m_places.constEnd())
        return;
    auto& rows = m_branches[static_cast<std::size_t>(*found)];
    for (int row = first; row <= last && row < static_cast<int>(rows.size()); ++row)
        rows[static_cast<std::size_t>(row)] = Row();
}

void CSearchedRows::forgetAll()
{
    m_places.clear();
    m_branches.clear();
    m_lastPlace = -1;
}
