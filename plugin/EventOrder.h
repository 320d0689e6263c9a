#pragma once

#include "base/TargetSelectHandler.h"

#include <QList>
#include <QUuid>

#include <memory>
#include <thread>

/// The one order of the host's events: each takes a place when it arrives, whatever thread tells
/// it.
///
/// With this class the bridge keeps its first law: *the host's last word wins*. What the host
/// answered for an event may be used only while nothing newer about the same identity has arrived;
/// the change of an event that was overtaken asks the host anew when it runs.
///
/// Thread-safe.
class CEventOrder final
{
    struct State;

public:
    /// The place of one event, kept as long as something is to be done for the event.
    class CPlace final
    {
    public:
        ~CPlace();
        CPlace(const CPlace&) = delete;
        CPlace& operator=(const CPlace&) = delete;

        /// The thread that told the event.
        std::thread::id teller() const { return m_teller; }

        /// Rises from event to event.
        quint64 number() const { return m_number; }

        /// The panel that the event was told to.
        const HandlerPlace::CPanelWatch& panel() const { return m_watch; }

        /// Returns whether that panel has gone.
        bool isOver() const;

    private:
        friend class CEventOrder;
        CPlace(std::shared_ptr<State> state, quint64 number);

        const std::shared_ptr<State> m_state;
        const quint64 m_number;
        const std::thread::id m_teller;
        const HandlerPlace::CPanelWatch m_watch;
        const bool m_hasPanel;
    };
    using Place = std::shared_ptr<const CPlace>;

    CEventOrder();
    CEventOrder(const CEventOrder&) = delete;
    CEventOrder& operator=(const CEventOrder&) = delete;

    /// What an event may change beyond the rows of its own identities.
    enum class Reach { OwnRows, WholeTree };

    /// Takes the next place, for an event about `ids`.
    Place take(const QList<QUuid>& ids, Reach reach);

    /// Returns whether a newer event may have changed what the host says about `id`.
    bool isOvertaken(const CPlace& place, const QUuid& id) const;

    /// Returns whether another thread has told a newer event about `id` itself.
    bool isContested(const CPlace& place, const QUuid& id) const;

    /// Returns the number of the newest place.
    quint64 lastNumber() const;

    /// Returns whether any newer event has arrived.
    bool isOvertakenAtAll(const CPlace& place) const;

    /// Returns whether at most one event has a place.
    bool hasNoOther() const;

private:
    const std::shared_ptr<State> m_state; // shared with the places, which may live longer
};
