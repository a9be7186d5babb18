// SPDX-License-Identifier: MIT
#pragma once

#include <tool/formats/Formats.h>
#include <tool/pages/Pages.h>

/*! The pages that a user wants of a document, else those that its file says. */
PageSetup pageSetupFor(const Document &document, const WriteOptions &options);
