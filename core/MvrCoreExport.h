// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// Marks what libMvrCore hands to others; everything else is hidden.
#ifdef MvrCore_EXPORTS
#define MVRCORE_EXPORT Q_DECL_EXPORT
#else
#define MVRCORE_EXPORT Q_DECL_IMPORT
#endif
