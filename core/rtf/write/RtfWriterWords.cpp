// SPDX-License-Identifier: MIT
#include <core/rtf/write/RtfWriterWords.h>

#include <core/rtf/model/RtfPropertyWords.h>

namespace {

template <typename Props>
void appendWords(const Props &from, const Props &to, int Props::*RtfPropertyWord::*propOf,
                 QByteArray *rtf)
{
    for (const RtfPropertyWord &word : RtfPropertyWords::table) {
        int Props::*const prop = word.*propOf;
        if (!word.isWritten || !prop || from.*prop == to.*prop)
            continue;
        if (word.isConstant && to.*prop != word.value)
            continue;
        *rtf += '\\';
        rtf->append(word.name.data(), static_cast<int>(word.name.size()));
        if (!word.isConstant)
            *rtf += QByteArray::number(to.*prop);
    }
}

} // namespace

void appendRtfWords(const RtfCharProps &from, const RtfCharProps &to, QByteArray *rtf)
{
    appendWords(from, to, &RtfPropertyWord::charProp, rtf);
}

void appendRtfWords(const RtfParaProps &from, const RtfParaProps &to, QByteArray *rtf)
{
    appendWords(from, to, &RtfPropertyWord::paraProp, rtf);
}
