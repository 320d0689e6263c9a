#pragma once

#include <QtGlobal>

/// Status codes that the host answers the panel with; 0 is success.
constexpr quint32 kIpCheckUsed = 0xE0832001;
constexpr quint32 kIpCheckUnreasonable = 0xE0832005;
constexpr quint32 kIpListFull = 0xE0831028;
constexpr quint32 kIpListOnlineEmpty = 0xE0831034;
constexpr quint32 kIpImportNoValidIp = 0xE0831033;
constexpr quint32 kIpImportOpenFailed = 0xE083200B;
