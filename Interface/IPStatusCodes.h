#pragma once

#include <QtGlobal>

/// Why ITargetSelectInterfaceHandler::CheckIPAddress rejects an address. The panel tells the user
/// in words of its own; a code that is not listed reads as IPCHECK_UNREASONABLE.
enum IPCheckResult : quint32 {
    IPCHECK_SAME_AS_PC = 0xE0832000,       ///< An address of the PC itself.
    IPCHECK_USED = 0xE0832001,             ///< Taken by another entry or processor.
    IPCHECK_STARTS_WITH_ZERO = 0xE0832002, ///< The first octet is 0.
    IPCHECK_GATEWAY = 0xE0832003,          ///< The default gateway.
    IPCHECK_BROADCAST = 0xE0832004,        ///< A broadcast address.
    IPCHECK_UNREASONABLE = 0xE0832005      ///< No address that a processor can have.
};

/// What the operations on the IP list answer when they do not answer 0, success.
enum IPListResult : quint32 {
    /// ReadOnlineIPAddresses: the list was full before every address had its place.
    IPLIST_FULL = 0xE0831028,
    /// ReadOnlineIPAddresses: no processor online has an address.
    IPLIST_ONLINE_EMPTY = 0xE0831034,
    /// ImportIPFile: no line of the file holds a valid address.
    IPIMPORT_NO_VALID_IP = 0xE0831033,
    /// ImportIPFile: the file cannot be opened.
    IPIMPORT_OPEN_FAILED = 0xE083200B
};
