// SPDX-License-Identifier: MIT
#pragma once

#include <tool/pages/PdfCompletion.h>

/*! completePdf() of the module "mvrpdf". */
extern "C" Q_DECL_EXPORT bool mvrtextCompletePdf(QByteArray *pdf, const PdfExtras *extras);
