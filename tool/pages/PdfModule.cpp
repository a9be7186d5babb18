// SPDX-License-Identifier: MIT
// A library of its own, which the tool loads when it has a PDF file to complete; what it is made of
// takes a third of the time in which the program starts.
#include <tool/pages/PdfModule.h>

bool mvrtextCompletePdf(QByteArray *pdf, const PdfExtras *extras)
{
    return completePdf(pdf, *extras);
}
