#pragma once

#include "base/TargetSelectHandler.h"

#include <QtGlobal>

class CSubject;

/// What a host gets wrong in an event, as far as the event itself shows it; see ContractCheck. Any
/// thread, while the contract checks are on.
namespace EventChecks {

/// Looks at the event that `subject` delivers, before it takes effect.
void check(const CSubject& subject);

/// Looks at what the host of `panel` answers about the identities that the event has removed. On
/// the thread that tells the event.
void checkRemoval(const CSubject& subject, const HandlerPlace::CPanelWatch& panel);

/// Returns how many events were looked at so far.
quint64 count();

} // namespace EventChecks
