#pragma once

#include <QtGlobal>

#if defined(HOSTWIDGETS_BUILD)
#define HOSTWIDGETS_EXPORT Q_DECL_EXPORT
#else
#define HOSTWIDGETS_EXPORT Q_DECL_IMPORT
#endif
