#pragma once

#include <QReadWriteLock>

/// A read-write lock that a thread may take again in any order, whatever it holds already: to read
/// while it writes, and to write while it reads (its reads are put down while it waits, so what it
/// has read may be out of date afterwards).
class CReentrantLock final
{
public:
    CReentrantLock() = default;
    CReentrantLock(const CReentrantLock&) = delete;
    CReentrantLock& operator=(const CReentrantLock&) = delete;

    void lockForRead();
    void lockForWrite();
    void unlock();

    /// Whether the calling thread holds the lock for reading alone.
    bool isHeldForReading();

    /// What the calling thread holds, put down by release() and taken up again by restore().
    struct Hold
    {
        int depth = 0;
        bool writes = false;
    };
    Hold release();
    void restore(const Hold& hold);

private:
    Hold& mine();
    void take(bool toWrite);
    void drop();
    void forget();

    QReadWriteLock m_lock{QReadWriteLock::Recursive};
};

/// The lock of the bridge: a recursive read-write lock that a thread can hold while it waits for
/// the GUI thread, without the GUI thread ever waiting for that thread in turn.
///
/// It is two locks. The outer one keeps threads other than the GUI thread apart for the whole of an
/// operation. The inner one, the floor, is what the GUI thread takes; every thread holds it while
/// it works. A thread that is about to wait for the GUI thread lends the floor and keeps the outer
/// lock: the GUI thread reads and writes as if the lock were free, and nobody else does. A thread
/// that calls into the host, which may wait for any thread, lends both.
///
/// So: whoever holds the floor must not wait for another thread.
class CLendableLock final
{
public:
    /// Takes the floor and, off the GUI thread, first the outer lock. Any thread, any nesting; the
    /// GUI thread is that of the application.
    void lockForRead();
    void lockForWrite();
    void unlock();

    enum class Borrower { GuiThread, Everybody };

    /// Lends what the calling thread holds for its lifetime; a thread that holds nothing lends
    /// nothing.
    class CLoan final
    {
    public:
        CLoan(CLendableLock& lock, Borrower borrower);
        ~CLoan();
        CLoan(const CLoan&) = delete;
        CLoan& operator=(const CLoan&) = delete;

    private:
        CLendableLock& m_lock;
        CReentrantLock::Hold m_floor;
        CReentrantLock::Hold m_outer;
    };

    class CReader final
    {
    public:
        explicit CReader(CLendableLock& lock)
            : m_lock(lock)
        {
            m_lock.lockForRead();
        }
        ~CReader() { m_lock.unlock(); }
        CReader(const CReader&) = delete;
        CReader& operator=(const CReader&) = delete;

    private:
        CLendableLock& m_lock;
    };

    class CWriter final
    {
    public:
        explicit CWriter(CLendableLock& lock)
            : m_lock(lock)
        {
            m_lock.lockForWrite();
        }
        ~CWriter() { m_lock.unlock(); }
        CWriter(const CWriter&) = delete;
        CWriter& operator=(const CWriter&) = delete;

    private:
        CLendableLock& m_lock;
    };

private:
    CReentrantLock m_outer;
    CReentrantLock m_floor;
};
