// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfProps.h>

#include <QHash>

/*!
    The style sheet (RTF 1.9.1, "Style Sheet"): paragraph and character styles.

    Word and its kin repeat a style's settings in the text, so a style matters where the text
    leaves them out. Styles may be based on others, in any order and, in broken files, on
    themselves.
*/
class RtfStyles
{
public:
    /*! In a style, a setting that is switched off although the style it is based on has it. */
    static constexpr int switchedOff = -0x7fffffff;

    /*! Starts the definition of style \a number. */
    void begin(int number) { m_number = number; }
    void setBase(int number) { m_base = number; }
    /*! Ends the definition, which the group's \a chars and \a para have collected. */
    void finish(const RtfCharProps &chars, const RtfParaProps &para);

    /*! Gives \a chars and \a para what paragraph style \a number sets and they do not. */
    void applyToParagraph(int number, RtfCharProps *chars, RtfParaProps *para);

    /*! Gives \a chars what character style \a number sets, over what the paragraph has. */
    void applyToChars(int number, RtfCharProps *chars);

private:
    struct Style
    {
        RtfCharProps chars;
        RtfParaProps para;
        int base = -1;
        bool resolved = false; // holds the settings of its base too
    };

    const Style *find(int number);
    void resolve(Style *style);

    QHash<int, Style> m_styles;
    int m_number = 0; // the first style needs no number
    int m_base = -1;
};
