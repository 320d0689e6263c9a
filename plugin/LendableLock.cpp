#include "plugin/LendableLock.h"

#include "plugin/ThreadAnnotations.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Holds = std::vector<std::pair<const CReentrantLock*, CReentrantLock::Hold>>;

/// What the calling thread holds of each lock. A handful of entries at most.
Holds& holds()
{
    thread_local Holds instance;
    return instance;
}

bool onGuiThread()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

} // namespace

CReentrantLock::Hold& CReentrantLock::mine()
{
    const auto found = std::find_if(holds().begin(), holds().end(),
                                    [this](const auto& entry) { return entry.first == this; });
    return found != holds().end() ? found->second : holds().emplace_back(this, Hold()).second;
}

void CReentrantLock::take(bool toWrite)
{
    if (toWrite)
        m_lock.lockForWrite();
    else
        m_lock.lockForRead();
    annotateAcquire(this);
}

void CReentrantLock::drop()
{
    annotateRelease(this);
    m_lock.unlock();
}

void CReentrantLock::lockForRead()
{
    Hold& hold = mine();
    if (hold.depth++ == 0)
        take(false);
}

void CReentrantLock::lockForWrite()
{
    Hold& hold = mine();
    if (!hold.writes) {
        if (hold.depth > 0)
            drop();
        take(true);
        hold.writes = true;
    }
    ++hold.depth;
}

void CReentrantLock::unlock()
{
    Hold& hold = mine();
    if (hold.depth > 0 && --hold.depth == 0) {
        hold.writes = false;
        drop();
    }
    if (hold.depth == 0)
        forget();
}

bool CReentrantLock::isHeldForReading()
{
    const Hold& hold = mine();
    return hold.depth > 0 && !hold.writes;
}

void CReentrantLock::forget()
{
    holds().erase(std::find_if(holds().begin(), holds().end(),
                               [this](const auto& entry) { return entry.first == this; }));
}

CReentrantLock::Hold CReentrantLock::release()
{
    const Hold hold = mine();
    if (hold.depth > 0)
        drop();
    forget();
    return hold;
}

void CReentrantLock::restore(const Hold& hold)
{
    if (hold.depth == 0)
        return;
    take(hold.writes);
    mine() = hold;
}

void CLendableLock::lockForRead()
{
    if (!onGuiThread())
        m_outer.lockForRead();
    m_floor.lockForRead();
}

void CLendableLock::lockForWrite()
{
    if (!onGuiThread()) {
        // Nobody may wait for the outer lock with the floor in hand: its holder may need the floor.
        if (m_floor.isHeldForReading()) {
            const CLoan loan(*this, Borrower::GuiThread);
            m_outer.lockForWrite();
        } else {
            m_outer.lockForWrite();
        }
    }
    m_floor.lockForWrite();
}

void CLendableLock::unlock()
{
    m_floor.unlock();
    m_outer.unlock();
}

CLendableLock::CLoan::CLoan(CLendableLock& lock, Borrower borrower)
    : m_lock(lock)
{
    m_floor = m_lock.m_floor.release();
    if (borrower == Borrower::Everybody)
        m_outer = m_lock.m_outer.release();
}

CLendableLock::CLoan::~CLoan()
{
    m_lock.m_outer.restore(m_outer);
    m_lock.m_floor.restore(m_floor);
}
