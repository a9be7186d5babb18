// SPDX-License-Identifier: MIT
#pragma once

class QByteArray;

/*!
    Each takes any bytes and must come back; it aborts when what it was promised does not hold.
    A new one is a row here, a file in fuzz/targets and a folder of seeds in fuzz/corpus.
*/
// clang-format off
#define MVR_FUZZ_TARGETS(row) \
    row(end_notes) \
    row(fdx_file) \
    row(fdx_reader) \
    row(html_bbcode) \
    row(html_reader) \
    row(inline_markup) \
    row(markdown) \
    row(mime_data) \
    row(note_record) \
    row(operations) \
    row(picture) \
    row(replace) \
    row(rtf_reader) \
    row(xml_tree)
// clang-format on

#define MVR_DECLARE_FUZZ_TARGET(name) void fuzz_##name(const QByteArray &input);
MVR_FUZZ_TARGETS(MVR_DECLARE_FUZZ_TARGET)
#undef MVR_DECLARE_FUZZ_TARGET
