// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

#include <QColor>
#include <QFlags>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>

class MVRDomDoc;
class QDomElement;

/*!
    The vocabulary of Final Draft XML (FDX) and the records that carry one element's settings
    between a file and Qt's formats.

    FDX gives indents in inches from the paper's left edge, vertical space in points. The records
    keep inches too, but from the document's left text margin; operations that cross the border
    take that margin as leftMargin, in points.
*/
namespace MVRFinalDraft {

/*! Paragraph types. */
enum ElementType : int {
    NoElement = 0,
    General,
    SceneHeading,
    Action,
    Character,
    Parenthetical,
    Dialogue,
    Transition,
    Shot,
    CastList
};

/*! Line leading of a paragraph. */
enum LeadingParStyle : int { NoLeading = 0, VeryTight, Tight, Regular, Loose, Normal };

/*! Style of a font. */
enum FontStyleFlag : int {
    Bold = 0x01,
    Italic = 0x02,
    Underline = 0x04,
    WordUnderline = 0x08,
    DottedUnderline = 0x10,
    AllCaps = 0x20,
    Strikeout = 0x40
};
Q_DECLARE_FLAGS(FontStyleFlags, FontStyleFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(FontStyleFlags)

/*! The type of a keyword, NoElement for an unknown one; case counts, "Cast List" has a blank. */
MVRTEXT_EXPORT ElementType toElementType(const QString &keyword);
/*! The keyword of a type, null for NoElement and unknown values; CastList gives "CastList". */
MVRTEXT_EXPORT QString toString(ElementType type);

/*! The leading of a keyword, NoLeading for an unknown one. */
MVRTEXT_EXPORT LeadingParStyle toLeadingParStyle(const QString &keyword);
/*! The keyword of a leading, "Regular" for Normal, null for NoLeading and unknown values. */
MVRTEXT_EXPORT QString toString(LeadingParStyle leading);

/*! The flags of keywords joined by "+"; unknown ones are ignored. */
MVRTEXT_EXPORT QFlags<FontStyleFlag> toFontFlags(const QString &keywords);
/*! The keywords of the set bits, lowest bit first, joined by "+". */
MVRTEXT_EXPORT QString toString(QFlags<FontStyleFlag> style);
/*! \overload */
inline QString toString(FontStyleFlag style)
{
    return toString(QFlags<FontStyleFlag>(style));
}

/*! "Left", "Right", "Center" or "Full" as alignment; \a fallback for anything else. */
MVRTEXT_EXPORT QFlags<Qt::AlignmentFlag> toAlignment(const QString &keyword,
                                                     QFlags<Qt::AlignmentFlag> fallback);
/*! The keyword of an alignment, compared whole; "Left" for every other value. */
MVRTEXT_EXPORT QString toString(QFlags<Qt::AlignmentFlag> alignment);
/*! \overload */
inline QString toString(Qt::AlignmentFlag alignment)
{
    return toString(QFlags<Qt::AlignmentFlag>(alignment));
}

/*!
    Reads "#" and three channels of four hexadecimal digits, of which the low byte counts.

    \return the opaque colour; \a fallback when \a text is empty or a channel is not a number
*/
MVRTEXT_EXPORT QColor toColor(const QString &text, const QColor &fallback);
/*! A colour as "#" and three channels of four upper-case hexadecimal digits, the byte doubled. */
MVRTEXT_EXPORT QString toString(const QColor &color);

/*! The font settings of a run of text or of an element (Text, FontSpec). */
struct MVRTEXT_EXPORT TextAttr
{
    bool adornmentStyle = false; /*!< whether the file marks it (AdornmentStyle -1) */
    QColor color = Qt::black; /*!< of the letters */
    QColor background = Qt::white; /*!< behind them; white for none */
    QString font = QStringLiteral("Courier Final Draft"); /*!< family */
    int revisionId = 0; /*!< the set of revisions that it belongs to; 0 for none */
    double size = 12.0; /*!< points */
    QFlags<FontStyleFlag> style; /*!< bold, italic, capitals and so on */

    TextAttr();

    /*! The settings as a character format; capitals are not carried, white is no background. */
    QTextCharFormat toCharFormat() const;
    /*!
        Takes the settings from a character format; bits of style are added, never cleared.

        \param format             the format; a brush that is missing counts as black
        \param defaultBackground  the background of text that has none; an invalid colour
                                  changes nothing
    */
    void fromCharFormat(const QTextCharFormat &format, const QColor &defaultBackground);
    /*! Takes the attributes that \a element has; what is absent or unreadable stays. */
    bool fromDomElement(const QDomElement &element);
    /*!
        Appends a child element called \a tagName that holds \a text to the current element.

        \return false when \a dom is null or the element cannot be created
    */
    bool toDomDoc(MVRDomDoc *dom, const QString &text, const QString &tagName);
};

/*! The paragraph settings of an element or of a script note (ParagraphSpec, Paragraph). */
struct MVRTEXT_EXPORT ParagraphAttr
{
    QFlags<Qt::AlignmentFlag> alignment = Qt::AlignLeft; /*!< of the lines */
    LeadingParStyle leading = Regular; /*!< how close lines stand */
    double firstIndent = 0.0; /*!< inches, from leftIndent */
    double leftIndent = 0.5; /*!< inches, from the left text margin */
    double rightIndent = 6.5; /*!< inches, from the left text margin to the text's right edge */
    int spaceBefore = 0; /*!< points */
    double spacing = 1.0; /*!< multiple of single spacing */
    bool startsNewPage = false; /*!< whether a page begins with it */
    QFlags<FontStyleFlag> style; /*!< what its text adds to the element's; not read */

    ParagraphAttr();

    /*! The settings as a paragraph format; leading and style are not carried. */
    QTextBlockFormat toBlockFormat() const;
    /*! Takes all but leading and style from \a format; \a leftMargin in points is added. */
    void fromBlockFormat(const QTextBlockFormat &format, double leftMargin);
    /*! Takes the attributes that \a element has, less \a leftMargin points; not "Style". */
    bool fromDomElement(const QDomElement &element, double leftMargin);
    /*! Appends a child element called \a tagName; false when it cannot be created. */
    bool toDomDoc(MVRDomDoc *dom, const QString &tagName);
    /*! Sets all but startsNewPage to Final Draft's own defaults for \a type, if it is known. */
    void applyFdxAppDefaults(ElementType type);
};

/*! Everything that a file says about one paragraph type (ElementSettings). */
struct MVRTEXT_EXPORT ElementSettings
{
    QString type = QStringLiteral("Action"); /*!< its name */
    TextAttr fontSpec; /*!< how its text looks */
    ParagraphAttr paragraphSpec; /*!< how its paragraphs look */
    ElementType paginateAs = Action; /*!< the standard type that page breaks follow */
    ElementType returnKey = Action; /*!< the type that the Return key starts */
    QString shortcut; /*!< the digit of its key, may be empty */

    ElementSettings();

    /*! fontSpec as a character format. */
    QTextCharFormat textCharFormat() const { return fontSpec.toCharFormat(); }
    /*! paragraphSpec as a paragraph format. */
    QTextBlockFormat parBlockFormat() const { return paragraphSpec.toBlockFormat(); }
    /*! Takes fontSpec from \a format; see TextAttr::fromCharFormat(). */
    void fromCharFormat(const QTextCharFormat &format, const QColor &defaultBackground);
    /*! Takes paragraphSpec from \a format; see ParagraphAttr::fromBlockFormat(). */
    void fromBlockFormat(const QTextBlockFormat &format, double leftMargin);

    /*!
        Reads the ElementSettings element under the cursor; the cursor comes back to it.

        \return false, with nothing changed, when it has no Type
    */
    bool fromDomDoc(MVRDomDoc *dom, double leftMargin);
    /*! Appends an ElementSettings element to the current one; false when that fails. */
    bool toDomDoc(MVRDomDoc *dom);
    /*! Sets name, paragraph settings and behaviour to Final Draft's own defaults for \a type. */
    void applyFdxAppDefaults(ElementType type);
};

/*! Text of the writer that a file holds beside title page and script. */
struct LeftOut
{
    int detachedNotes = 0; /*!< notes kept beside the script, with or without a range */
    int alternates = 0; /*!< alternate versions of dialogue */
    int omittedParagraphs = 0; /*!< paragraphs of omitted scenes */
    int summaries = 0; /*!< summaries of scenes */
    // Only MVRFinalDraftFile counts these.
    int sceneTitles = 0; /*!< titles of scenes beside their headings */
    int headers = 0; /*!< headers and footers with words */
    int beats = 0; /*!< cards of the beat board */
    int characterBeats = 0; /*!< what scenes say of the arcs of characters */
    int hiddenTexts = 0; /*!< runs that are hidden text: they are shown, but not as hidden */
};

}
