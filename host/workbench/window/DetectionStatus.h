#pragma once

#include <QObject>

class QProgressBar;
class QPushButton;
class QStatusBar;
class Session;

/// The detection in progress, in the status bar: how far it is, and a button that cancels it.
class DetectionStatus final : public QObject
{
    Q_OBJECT

public:
    /// A child of `bar`. `session` must outlive it.
    DetectionStatus(QStatusBar& bar, Session& session);

    void retranslate();

private:
    void proceed(int done, int total);
    void end(const QString& message);

    QStatusBar& m_bar;
    QProgressBar* m_progress; // the status bar's
    QPushButton* m_cancel;    // the status bar's
};
