#pragma once

#include "Interface/ObserverPattern"

#include <QStringList>
#include <QThread>

#include <functional>
#include <mutex>
#include <vector>

/// Takes events as a panel does and remembers them.
class RecordingObserver final : public CObserver
{
public:
    void Update(CSubject* subject) override;

    /// The numbers so far: "20 30".
    QString numbers() const;

    /// The threads that delivered so far.
    QList<QThread*> threads() const;

    void clear();

    /// Run inside each delivery, on its thread.
    std::function<void(CSubject&)> inside;

private:
    mutable std::mutex m_mutex;
    QStringList m_numbers;
    std::vector<QThread*> m_threads;
};
