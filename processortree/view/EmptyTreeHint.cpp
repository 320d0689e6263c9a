#include "processortree/view/EmptyTreeHint.h"

#include "processortree/model/ProcessorTreeModel.h"

#include <QPainter>
#include <QTreeView>

namespace {

// To the left and right, so that the middle is that of the controls above the tree.
constexpr int kLeftMargin = 10;
constexpr int kRightMargin = 20;

} // namespace

CEmptyTreeHint::CEmptyTreeHint(QTreeView* view)
    : QObject(view)
    , m_view(view)
{
}

void CEmptyTreeHint::setModel(CProcessorTreeModel* model)
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    if (model) {
        connect(model, &QAbstractItemModel::rowsInserted, this, &CEmptyTreeHint::update);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &CEmptyTreeHint::update);
        connect(model, &QAbstractItemModel::modelReset, this, &CEmptyTreeHint::update);
    }
    update();
}

void CEmptyTreeHint::paint()
{
    if (m_text.isEmpty() || !isDue())
        return;
    const QRect place = room();
    const QFontMetrics& metrics = m_view->fontMetrics();
    if (place.height() < metrics.height() || place.width() <= 0)
        return;
    QPainter painter(m_view->viewport());
    painter.setPen(m_view->palette().color(QPalette::PlaceholderText));
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine,
                     metrics.elidedText(m_text, Qt::ElideRight, place.width()));
}

bool CEmptyTreeHint::isDue() const
{
    return m_model && m_model->isFilled() && m_model->getAllProcessorCount() == 0;
}

void CEmptyTreeHint::update()
{
    const QString text = isDue() ? tr("No processors yet") : QString();
    if (text == m_text)
        return;
    m_text = text;
    m_view->setAccessibleDescription(text);
    m_view->viewport()->update();
}

/// Returns the part of the viewport below the last row.
QRect CEmptyTreeHint::room() const
{
    QModelIndex last = m_view->model()->index(0, 0);
    for (QModelIndex next = last; next.isValid(); next = m_view->indexBelow(next))
        last = next;
    QRect room = m_view->viewport()->rect().adjusted(kLeftMargin, 0, -kRightMargin, 0);
    if (last.isValid())
        room.setTop(m_view->visualRect(last).bottom() + 1);
    return room;
}
