#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

/// Reads lines from a file descriptor without blocking, and notices its end.
class CommandInput final : public QObject
{
    Q_OBJECT

public:
    explicit CommandInput(int descriptor, QObject* parent = nullptr);

signals:
    void lineRead(const QString& line);

    /// Emitted once, when the input has ended or cannot be read.
    void ended();

private:
    void read();
    void take(QByteArray line);

    const int m_descriptor;
    QByteArray m_pending;
    bool m_skips = false; // the rest of a line that is too long
    QSocketNotifier m_notifier;
};

/// Emits a signal when the program is asked to end by SIGTERM or SIGINT. One at most.
class EndSignals final : public QObject
{
    Q_OBJECT

public:
    explicit EndSignals(QObject* parent = nullptr);
    ~EndSignals() override;

signals:
    void endAsked();

private:
    int m_descriptor; // of a signalfd
    QSocketNotifier m_notifier;
};
