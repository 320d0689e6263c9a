// Keys in the processor tree.

#include "base/NodeType.h"
#include "base/TargetSelectHandler.h"
#include "processortree/view/ArrivalWatch.h"
#include "processortree/view/ProcessorTreeView.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>

void CProcessorTreeView::keyPressEvent(QKeyEvent* event)
{
    m_arrivals->stop();
    if (event->matches(QKeySequence::Cancel) && !m_cut.isEmpty()) {
        setCut({});
        return;
    }
    followUser([&] { CTreeView::keyPressEvent(event); });
}

/// With Shift or Ctrl the keys take the current row along, which is a processor: they pass what is
/// none. Where there is no further one in their direction, it is the last one on the way.
QModelIndex CProcessorTreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex target = CTreeView::moveCursor(action, modifiers);
    if (!(modifiers & (Qt::ShiftModifier | Qt::ControlModifier)))
        return target;
    const bool isUp = action == MoveUp || action == MovePageUp || action == MoveHome;
    if (!isUp && action != MoveDown && action != MovePageDown && action != MoveEnd)
        return target;
    const auto nearest = [&](bool up) {
        QModelIndex row = target;
        while (row.isValid() && nodeType(row) != NodeProcessor)
            row = up ? indexAbove(row) : indexBelow(row);
        return row;
    };
    const QModelIndex onward = nearest(isUp);
    return onward.isValid() ? onward : nearest(!isUp);
}

void CProcessorTreeView::cutSelection()
{
    if (mayChange())
        setCut(selectedProcessors());
}

/// Under the conditions of a drop, and with what the host hears of one.
void CProcessorTreeView::pasteCut()
{
    const Life alive(this);
    if (m_cut.isEmpty() || askHost(&Host::IsRestrictedMode) || !alive || !mayChange())
        return;
    const QModelIndex row = standingRow();
    const QList<QUuid> processors = m_cut;
    if (row.isValid() && moveOnto(processors, row) && alive)
        setCut({});
}

void CProcessorTreeView::setCut(const QList<QUuid>& processors)
{
    m_cut = processors;
    viewport()->update();
    emit cutChanged();
}

bool CProcessorTreeView::isCut(const QModelIndex& index) const
{
    return !m_cut.isEmpty() && m_cut.contains(index.data(UuidRole).toUuid());
}

/// Qt's own search stays before the first row of that name that cannot become current. This one
/// goes through the processors that are shown, from the current one on, and from the top again. A
/// further key within Qt's time narrows it; the same key again goes on to the next one.
void CProcessorTreeView::keyboardSearch(const QString& search)
{
    const bool continues =
        m_sinceKey.isValid() && m_sinceKey.elapsed() <= QApplication::keyboardInputInterval();
    m_sinceKey.start();
    m_typed = continues ? m_typed + search : search;
    if (!model() || m_typed.isEmpty())
        return;
    const bool isOneKey = m_typed.count(m_typed.front()) == m_typed.size();
    const QString wanted = isOneKey ? QString(m_typed.at(0)) : m_typed;

    QModelIndexList rows;
    for (QModelIndex row = model()->index(0, 0); row.isValid(); row = indexBelow(row)) {
        if (nodeType(row) == NodeProcessor || row == currentIndex())
            rows.append(row);
    }
    const int current = rows.indexOf(currentIndex());
    if (current >= 0)
        std::rotate(rows.begin(), rows.begin() + current + (isOneKey ? 1 : 0), rows.end());
    const auto hit = std::find_if(rows.begin(), rows.end(), [&wanted](const QModelIndex& row) {
        return row.data().toString().startsWith(wanted, Qt::CaseInsensitive);
    });
    if (hit != rows.end())
        setCurrentIndex(*hit);
}
