// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QString>

/*!
    \a text of the same length with U+FFFD in place of each half of a surrogate pair that stands
    alone. A QRegularExpression finds nothing in a text that has one.
*/
inline QString wellFormed(QString text)
{
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!c.isSurrogate())
            continue;
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

/*!
    The first match from \a offset on.

    \param text    well-formed, which is not checked: that would cost the whole text for each match
    \param offset  not within a surrogate pair
*/
inline QRegularExpressionMatch findMatch(const QRegularExpression &expression, const QString &text,
                                         int offset)
{
    return expression.match(text, offset, QRegularExpression::NormalMatch,
                            QRegularExpression::DontCheckSubjectStringMatchOption);
}
