#pragma once

#include <QtGlobal>

#ifdef NK_QT4EXT_LIBRARY
#define NK_QT4EXT_EXPORT Q_DECL_EXPORT
#else
#define NK_QT4EXT_EXPORT Q_DECL_IMPORT
#endif
