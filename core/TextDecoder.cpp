// SPDX-License-Identifier: MIT
#include <core/TextDecoder_p.h>

#include <unicode/ucnv.h>

#include <iterator>

namespace {

// Longer marks come before those that they begin with.
constexpr TextDecoder::Mark marks[] = {
    {"UTF-8", 3}, {"UTF-32LE", 4}, {"UTF-32BE", 4}, {"UTF-16LE", 2}, {"UTF-16BE", 2},
};
constexpr char markBytes[][5]
    = {"\xef\xbb\xbf", "\xff\xfe\0\0", "\0\0\xfe\xff", "\xff\xfe", "\xfe\xff"};
static_assert(std::size(marks) == std::size(markBytes));

void substitute(const void *hasErrors, UConverterToUnicodeArgs *arguments, const char *bytes,
                int32_t length, UConverterCallbackReason reason, UErrorCode *error)
{
    if (hasErrors && reason <= UCNV_IRREGULAR)
        *static_cast<bool *>(const_cast<void *>(hasErrors)) = true;
    UCNV_TO_U_CALLBACK_SUBSTITUTE(nullptr, arguments, bytes, length, reason, error);
}

}

void TextDecoder::Closer::operator()(UConverter *converter) const
{
    ucnv_close(converter);
}

TextDecoder::TextDecoder(const char *name)
{
    UErrorCode error = U_ZERO_ERROR;
    if (name && *name) // ICU takes an empty name for that of the system's encoding
        m_converter.reset(ucnv_open(name, &error));
}

QString TextDecoder::decode(const QByteArray &bytes, bool *hasErrors)
{
    if (hasErrors)
        *hasErrors = false;
    QString text;
    if (!m_converter)
        return text;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_reset(m_converter.get());
    ucnv_setToUCallBack(m_converter.get(), substitute, hasErrors, nullptr, nullptr, &error);
    const char *source = bytes.constData();
    const char *const end = source + bytes.size();
    char16_t characters[4096];
    do {
        char16_t *target = characters;
        error = U_ZERO_ERROR;
        ucnv_toUnicode(m_converter.get(), &target, std::end(characters), &source, end, nullptr,
                       true, &error);
        text.append(reinterpret_cast<const QChar *>(characters), int(target - characters));
    } while (error == U_BUFFER_OVERFLOW_ERROR);
    return text;
}

TextDecoder::Mark TextDecoder::mark(const QByteArray &bytes)
{
    for (size_t i = 0; i < std::size(marks); ++i) {
        if (bytes.startsWith(QByteArray::fromRawData(markBytes[i], marks[i].size)))
            return marks[i];
    }
    return {nullptr, 0};
}

QString TextDecoder::decodeUnicode(const QByteArray &bytes, bool *hasErrors)
{
    const Mark found = mark(bytes);
    return TextDecoder(found.encoding ? found.encoding : "UTF-8")
        .decode(bytes.mid(found.size), hasErrors);
}
