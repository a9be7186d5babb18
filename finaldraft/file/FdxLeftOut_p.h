// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraft.h>
#include <finaldraft/file/FdxNotes_p.h>

/*! Counts what of a file's text its document does not show; elements without text are none. */
MVRFinalDraft::LeftOut fdxLeftOut(const FdxScript &script, const QVector<FdxNote> &notes);
