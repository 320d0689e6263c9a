#include "host/workbench/window/FindingsLabel.h"

#include "host/workbench/trace/TraceModel.h"
#include "host/workbench/window/Findings.h"

#include <QEvent>

FindingsLabel::FindingsLabel(TraceModel& trace, QWidget* parent)
    : QLabel(parent)
{
    connect(&trace, &TraceModel::added, this, &FindingsLabel::count);
    connect(&trace, &TraceModel::modelReset, this, [this] {
        m_breaches = m_hints = 0;
        retranslate();
    });
    retranslate();
}

void FindingsLabel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QLabel::changeEvent(event);
}

void FindingsLabel::count(const QVector<TraceEntry>& entries)
{
    const int before = m_breaches + m_hints;
    for (const TraceEntry& entry : entries) {
        if (entry.kind == TraceEntry::Kind::Finding)
            ++(Findings::isBreach(entry.text) ? m_breaches : m_hints);
    }
    if (m_breaches + m_hints != before)
        retranslate();
}

void FindingsLabel::retranslate()
{
    setText(tr("Findings: %1 breaches, %2 hints").arg(m_breaches).arg(m_hints));
    setVisible(m_breaches + m_hints > 0);
}
