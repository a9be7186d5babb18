// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// Marks what libMvrText hands to others; everything else is hidden.
#ifdef MvrText_EXPORTS
#define MVRTEXT_EXPORT Q_DECL_EXPORT
#else
#define MVRTEXT_EXPORT Q_DECL_IMPORT
#endif
