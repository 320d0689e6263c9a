#pragma once

/// How much a project holds at most. Host and panel go by the same numbers: the panel offers no
/// addition for which there is no room, and shows no more of the IP list.
namespace ProjectLimits {

/// Number of processors.
constexpr int kMaxProcessors = 255;

/// Number of entries in the host's IP list.
constexpr int kMaxIpEntries = 255;

} // namespace ProjectLimits
