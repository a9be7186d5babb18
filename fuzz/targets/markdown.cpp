// SPDX-License-Identifier: MIT
// Reads any bytes as Markdown; what the tool writes of it, it must read again.
#include <fuzz/Formats.h>
#include <fuzz/Targets.h>

void fuzz_markdown(const QByteArray &input)
{
    checkFormat(markdownFormat, input);
}
