#include "host/workbench/window/DetectionStatus.h"

#include "host/workbench/network/InputGate.h"
#include "host/workbench/session/Session.h"

#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>

namespace {

constexpr int kMessageMs = 5000;
constexpr int kProgressWidth = 200;

} // namespace

DetectionStatus::DetectionStatus(QStatusBar& bar, Session& session)
    : QObject(&bar)
    , m_bar(bar)
    , m_progress(new QProgressBar(&bar))
    , m_cancel(new QPushButton(&bar))
{
    m_progress->setFixedWidth(kProgressWidth);
    // The keyboard stays where it is; Escape does the same.
    m_cancel->setFocusPolicy(Qt::NoFocus);
    InputGate::admit(*m_cancel);
    bar.addPermanentWidget(m_progress);
    bar.addPermanentWidget(m_cancel);
    m_progress->hide();
    m_cancel->hide();
    connect(m_cancel, &QPushButton::clicked, &session, &Session::cancelDetection);
    connect(&session, &Session::detectionProceeded, this, &DetectionStatus::proceed);
    connect(&session, &Session::detectionCancelled, this,
            [this](int found) { end(tr("Detection cancelled; processors found: %1").arg(found)); });
}

void DetectionStatus::retranslate()
{
    m_progress->setAccessibleName(tr("Detection"));
    m_cancel->setText(tr("Cancel"));
    m_cancel->setAccessibleName(tr("Cancel the detection"));
    m_cancel->setToolTip(tr("Cancel the detection (Esc)"));
}

void DetectionStatus::proceed(int done, int total)
{
    m_progress->setRange(0, total);
    m_progress->setValue(done);
    if (done >= total) {
        end(tr("Processors found: %1").arg(total));
        return;
    }
    m_progress->show();
    m_cancel->show();
    m_bar.showMessage(tr("Detecting devices..."));
    m_bar.repaint();
}

/// Paints at once, because the host may be busy and handle no paint event.
void DetectionStatus::end(const QString& message)
{
    m_progress->hide();
    m_cancel->hide();
    m_bar.showMessage(message, kMessageMs);
    m_bar.repaint();
}
