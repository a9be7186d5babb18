// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplayPages.h>
#include <tool/pages/PdfCompletion.h>

/*! The scenes of a screenplay, each where its first line stands; those without a line are not. */
QVector<PdfHeading> sceneOutline(const MVRScreenplayPages &pages);
