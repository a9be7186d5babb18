// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfProps.h>

#include <vector>

class QString;
class RtfReader;

/*!
    Where the text of a group goes (RTF 1.9.1, "Destinations").

    The destinations that a file can open stand with their words in RtfControlWords.cpp.
*/
struct RtfDestination
{
    enum Kind {
        Body, /*!< the document's own text */
        Note, /*!< \footnote, \annotation: body text of its own */
        PageText, /*!< \header, \footer and their kin: body text of its own */
        TextBox, /*!< \shptxt: body text too */
        Ignored, /*!< dropped, but looked through: the old half of \upr */
        FontTable,
        ColorTable,
        StyleSheet,
        FieldInstruction,
        ListTable,
        List,
        ListLevel,
        LevelText,
        OldList, /*!< \pn */
        NestedRow, /*!< \nesttableprops */
        Picture,
        Info,
        InfoTime,
        Shape,
        ShapeValue, /*!< \sv */
        NoteTime,
        Value /*!< a text that is used as a whole when its group ends */
    };

    Kind kind = Body;
    /*! Receives decoded text; null drops it, or for body text puts it into the document. */
    void (*text)(RtfReader &reader, const QString &text) = nullptr;
    /*! Runs at the end of the group that opened the destination. */
    void (*close)(RtfReader &reader) = nullptr;

    bool isBody() const { return kind <= TextBox; }
};

/*! What \af and its kin say behind \dbch: how East Asian letters differ; -1: not said. */
struct RtfAssociated
{
    int font = -1;
    int size = -1;
    int bold = -1;
    int italic = -1;

    bool isEmpty() const { return qMax(font, size) < 0 && qMax(bold, italic) < 0; }
};

/*! What a `{` saves and a `}` brings back (RTF 1.9.1, "Groups"). */
struct RtfGroup
{
    RtfCharProps chars;
    RtfParaProps para;
    const RtfDestination *destination = &body;
    const RtfDestination *uprOuter = nullptr; /*!< destination around an \upr */
    bool opensDestination = false;
    int unicodeSkip = 1; /*!< \uc: characters of fallback behind each \u */
    int field = -1; /*!< number of the field that the group is part of */
    int charFormat = -1; /*!< number of the format for chars, -1: to be looked up */
    int codePage = -1; /*!< of the font in chars, -1: to be looked up */
    RtfAssociated eastAsian;
    int eastAsianFormat = -1; /*!< number of the format for chars with eastAsian */
    bool isAssociating = false; /*!< the last word for a kind of text was \dbch */

    static constexpr RtfDestination body {};

    bool isIn(RtfDestination::Kind kind) const { return destination->kind == kind; }
    /*! Text of the document, of a note or of a text box. */
    bool isBody() const { return destination->isBody(); }
    /*! Began a text of its own, which ends with the group, whatever else its words say. */
    bool beginsText() const { return opensDestination && isBody() && !isIn(RtfDestination::Body); }
    /*! Body text that a reader of the file would see: neither hidden nor a deleted revision. */
    bool isVisible() const { return isBody() && !chars.hidden && !chars.deleted; }

    /*! To be called when chars has changed in other than its font. */
    void charsChanged() { charFormat = eastAsianFormat = -1; }
    void fontChanged() { charFormat = eastAsianFormat = codePage = -1; }
    void setAssociated(int RtfAssociated::*property, int value)
    {
        if (isAssociating)
            eastAsian.*property = value;
        eastAsianFormat = -1;
    }
};

/*! The stack of groups. It has a bottom: what lies deeper is read, without settings of its own. */
class RtfGroups
{
public:
    RtfGroups() { m_outer.reserve(8); } // deep enough for most files

    RtfGroup &current() { return m_current; }
    const RtfGroup &current() const { return m_current; }
    /*! The group around the current one, where isNested(). */
    RtfGroup &outer() { return m_outer.back(); }

    /*! Tells whether the last `{` began a group of its own inside the document's. */
    bool isNested() const { return !isTooDeep() && m_outer.size() > 1; }
    bool isTooDeep() const { return m_uncounted > 0; }
    /*! Tells whether no group is open at all. */
    bool isEmpty() const { return m_outer.empty(); }

    void push();
    /*! \return false when that was the end of the document's group */
    bool pop();

private:
    std::vector<RtfGroup> m_outer; // the groups around the current one
    RtfGroup m_current;
    long long m_uncounted = 0; // groups nested deeper than the stack goes
};
