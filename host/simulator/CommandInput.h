#pragma once

#include <QByteArray>
#include <QObject>

#include <memory>

/// Reads lines from a file descriptor without blocking, and notices its end. A thread of its own
/// reads: on Windows neither a pipe nor a console wakes an event loop. It may block in the system
/// until the process ends, and consume what comes, after this object is gone.
class CommandInput final : public QObject
{
    Q_OBJECT

public:
    explicit CommandInput(int descriptor, QObject* parent = nullptr);
    ~CommandInput() override;

signals:
    /// A line without its end; the last one of the input may have none.
    void lineRead(const QString& line);

    /// Emitted once, when the input has ended or cannot be read.
    void ended();

private:
    /// Takes what has been read, nothing at the end of the input.
    void take(const QByteArray& bytes);
    void takeLine(QByteArray line);

    struct Shared;
    const std::shared_ptr<Shared> m_shared; // with the thread
    QByteArray m_pending;
    bool m_skips = false; // the rest of a line that is too long
};
