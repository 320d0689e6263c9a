#pragma once

#include <QtGlobal>

/// The reason why ITargetSelectInterfaceHandler::CheckIPAddress rejects an address. The panel has a
/// text for each; any other code counts as IPCHECK_UNREASONABLE.
enum IPCheckResult : quint32 {
    IPCHECK_SAME_AS_PC = 0xE0832000,       ///< An address of the PC itself.
    IPCHECK_USED = 0xE0832001,             ///< Used by another entry or processor.
    IPCHECK_STARTS_WITH_ZERO = 0xE0832002, ///< The first octet is 0.
    IPCHECK_GATEWAY = 0xE0832003,          ///< The default gateway.
    IPCHECK_BROADCAST = 0xE0832004,        ///< A broadcast address.
    IPCHECK_UNREASONABLE = 0xE0832005      ///< Not a possible address of a processor.
};

/// Results of operations on the IP list other than 0, which is success.
enum IPListResult : quint32 {
    /// ReadOnlineIPAddresses: the list has no room for all addresses.
    IPLIST_FULL = 0xE0831028,
    /// ReadOnlineIPAddresses: no online processor has an address.
    IPLIST_ONLINE_EMPTY = 0xE0831034,
    /// ImportIPFile: the file has no line with a valid address.
    IPIMPORT_NO_VALID_IP = 0xE0831033,
    /// ImportIPFile: the file cannot be opened.
    IPIMPORT_OPEN_FAILED = 0xE083200B
};
