// SPDX-License-Identifier: MIT
// Reads any bytes as the tool reads HTML; what it writes of it, it must read again.
#include <fuzz/Formats.h>
#include <fuzz/Targets.h>

void fuzz_html_reader(const QByteArray &input)
{
    checkFormat(htmlFormat, input);
}
