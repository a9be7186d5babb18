// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QHash>
#include <QList>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>

/*! One entry that an editor offers while text of a screenplay element is typed. */
struct MVRCompletion
{
    QString text; /*!< what is inserted */
    bool atStart = true; /*!< offered at the start of a paragraph only */
};

/*!
    One screenplay element of the application ("Action", "Dialogue", …): the formats that it
    imposes on its paragraphs, and what an editor needs to know to type it.

    A plain value. The public members are the editor's; the library copies them and reads none.
*/
class MVRCORE_EXPORT MVRScriptElement
{
public:
    /*! Bits of flags(). */
    enum Flag {
        AllCapsFlag = 0x10 /*!< the element's text is shown in capitals */
    };

    /*! What the writer can do in a paragraph of an element. */
    enum Action { ReturnAction, TabAction, ReturnOnEmptyAction, TabOnEmptyAction };

    /*!
        Id of the block format property (a string) that names the element of a paragraph.

        Formats alone cannot tell elements of equal look apart, nor name the element of a
        paragraph that was formatted by hand. The Final Draft reader notes the name here,
        MVRFinalDraftFile reads it, MVRFinalDraftWriter when it is asked to. An editor may drop it.
    */
    static constexpr int NameProperty = 0x100070;

    MVRScriptElement() = default;
    /*! Makes an element called \a name, without formats or flags. */
    explicit MVRScriptElement(const QString &name)
        : m_name(name)
    {
    }

    /*! The element's name as files spell it ("Scene Heading"); empty for no element. */
    QString name() const { return m_name; }
    /*! Sets the name. */
    void setName(const QString &name) { m_name = name; }

    /*! The paragraph format; it wins over a file's wherever it sets a property. */
    QTextBlockFormat blockFormat() const { return m_blockFormat; }
    /*! Sets the paragraph format. */
    void setBlockFormat(const QTextBlockFormat &format) { m_blockFormat = format; }

    /*! The character format; it wins over a file's wherever it sets a property. */
    QTextCharFormat charFormat() const { return m_charFormat; }
    /*! Sets the character format. */
    void setCharFormat(const QTextCharFormat &format) { m_charFormat = format; }

    /*! An or of Flag values. */
    int flags() const { return m_flags; }
    /*! Sets the flags, an or of Flag values. */
    void setFlags(int flags) { m_flags = flags; }

    /*!
        Tells whether a paragraph looks like one of an element.

        What counts is the paragraph's shape: alignment, first-line and left and right indents,
        margins, block indent and line spacing. A property that is not set counts as its default.
        Lengths within 0.4 points are equal, because files round them to hundredths of an inch, and
        so are spacings within a hundredth of a line. Page breaks, colours and the element name do
        not count.
    */
    static bool equal(const QTextBlockFormat &elementFormat, const QTextBlockFormat &blockFormat);

    QList<MVRCompletion> completions; /*!< what the editor offers to complete */
    QString nextElement; /*!< name of the element that the Return key starts */
    QString shortcut; /*!< key that makes a paragraph one of this element */
    QString description; /*!< what the element is for, shown to the user */
    QHash<Action, QString> actionElements; /*!< element that an action changes to */
    QHash<QString, QString> properties; /*!< the editor's own settings */

private:
    QString m_name;
    QTextBlockFormat m_blockFormat;
    QTextCharFormat m_charFormat;
    int m_flags = 0;
};
