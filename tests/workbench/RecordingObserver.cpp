#include "tests/workbench/RecordingObserver.h"

void RecordingObserver::Update(CSubject* subject)
{
    {
        const std::lock_guard guard(m_mutex);
        m_numbers.append(QString::number(subject->GetEvent()));
        m_threads.push_back(QThread::currentThread());
    }
    if (inside)
        inside(*subject);
}

QString RecordingObserver::numbers() const
{
    const std::lock_guard guard(m_mutex);
    return m_numbers.join(QLatin1Char(' '));
}

QList<QThread*> RecordingObserver::threads() const
{
    const std::lock_guard guard(m_mutex);
    return QList<QThread*>(m_threads.begin(), m_threads.end());
}

void RecordingObserver::clear()
{
    const std::lock_guard guard(m_mutex);
    m_numbers.clear();
    m_threads.clear();
}
