#pragma once

#include <QtGlobal>

#if defined(HOSTCOMMON_BUILD)
#define HOSTCOMMON_EXPORT Q_DECL_EXPORT
#else
#define HOSTCOMMON_EXPORT Q_DECL_IMPORT
#endif
