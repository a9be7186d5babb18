// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraft.h>

class QDomElement;

/*! Counts, inside \a root, the text that reading a script leaves behind; empty elements are none.
 */
MVRFinalDraft::LeftOut leftOutOf(const QDomElement &root);
