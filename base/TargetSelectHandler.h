#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"

#include <QtGlobal>

#include <memory>
#include <utility>

/// The host's handler, the one way to reach the host. Empty while there is no panel, or when the
/// host gave its layer no handler or one of another kind.
///
/// Ask for it anew for each call and hold it only that long: a host may replace it at any time, and
/// the one in hand lives until the call ends. While the GUI thread holds it, it counts as being
/// inside a question to the host, and threads that wait for the GUI thread do not do so for ever.
/// Any thread; other threads than the GUI thread get the handler that the GUI thread saw last, and
/// none when the host has released that one.
std::shared_ptr<ITargetSelectInterfaceHandler> GetTargetSelectHandler();

/// Asks the handler of the moment one question, as in `askHost(&Host::IsRestrictedMode)`. Without
/// one the answer is the empty one: no, zero, nothing. Any thread.
template <typename Result, typename... Parameters, typename... Arguments>
Result askHost(Result (ITargetSelectInterfaceHandler::*question)(Parameters...),
               Arguments&&... arguments)
{
    const auto handler = GetTargetSelectHandler();
    return handler ? (handler.get()->*question)(std::forward<Arguments>(arguments)...) : Result();
}

using Host = ITargetSelectInterfaceHandler;

/// How often the host is asked the same when each answer is void: it replaces its handler, or what
/// it is asked about, inside the question.
constexpr int kMostAttempts = 3;

/// Where the host keeps its handler. The panel tells; everybody else asks the functions above.
namespace HandlerPlace {

/// Names the pointer to which the host assigns its handler; null when the panel goes. The pointer
/// is read on the GUI thread only. GUI thread.
void set(const std::shared_ptr<IAbstractControlInterface>* place);

/// Notes the handler that the panel's observer is registered with. Any thread.
void noteConnected(const std::shared_ptr<IAbstractControlInterface>& handler);

/// Returns whether a handler was noted since the panel was built. Any thread.
bool isConnected();

/// Names the panel that exists: a number that no other panel of the process has, 0 without a panel.
/// Any thread.
quint64 panel();

/// Remembers the panel that exists when it is made. The host may destroy the panel inside a
/// question, and build another one, perhaps of another project: what was begun for the first one
/// must neither ask the second one's host nor change its tree. Any thread.
class CPanelWatch final
{
public:
    /// Returns whether that panel has gone.
    bool isOver() const { return panel() != m_panel; }

private:
    quint64 m_panel = panel();
};

/// Returns whether there is a panel. Any thread.
inline bool isSet()
{
    return panel() != 0;
}

/// Lets other threads have the handler that is there now, which the host assigns without a word.
/// GUI thread.
void refresh();

/// The handler that GetTargetSelectHandler() would ask, of whatever kind. Any thread.
std::shared_ptr<IAbstractControlInterface> current();

/// Returns whether current() is the one that `source` was. Any thread.
bool isCurrent(const std::weak_ptr<IAbstractControlInterface>& source);

} // namespace HandlerPlace
