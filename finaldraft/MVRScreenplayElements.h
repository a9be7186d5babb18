// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraft.h>

#include <QHash>
#include <QStringList>

class QTextBlock;
class QTextCursor;

/*!
    The elements of a screenplay (Action, Dialogue, …) as its file sets them up, for an editor: what
    a menu lists, and what the keys Tab and Return do.

    A value. Documents are those of MVRFinalDraftFile::read(), or such as become screenplays by it.
*/
class MVRTEXT_EXPORT MVRScreenplayElements
{
public:
    /*! None: for a text that is no screenplay. */
    MVRScreenplayElements() = default;
    /*!
        The elements of a file.

        \param settings  as MVRFinalDraftFile::elementSettings() gives them; Final Draft's own nine
                         elements where there are none
    */
    explicit MVRScreenplayElements(QHash<QString, MVRFinalDraft::ElementSettings> settings);

    /*! The names, in the order of their shortcuts, those without one behind. */
    QStringList names() const { return m_names; }
    /*! The key that goes with Ctrl for an element, "1"; empty where it has none. */
    QString shortcut(const QString &name) const { return m_settings.value(name).shortcut; }
    /*! Whether these elements have that of a paragraph: not on a title page, nor in another text.
     */
    bool has(const QTextBlock &block) const { return m_settings.contains(elementOf(block)); }

    /*! The element of a paragraph; empty for none. */
    static QString elementOf(const QTextBlock &block);
    /*! Whether a paragraph is a scene heading. */
    static bool isScene(const QTextBlock &block);

    /*! Makes the cursor's paragraph one of an element; its text, notes and emphasis stay. One undo
        step; nothing happens for an unknown name. */
    void apply(QTextCursor cursor, const QString &name) const;
    /*! What the Tab key does: the paragraph becomes the element \a steps behind its own, around the
        end; backwards with negative \a steps. Nothing happens to other paragraphs. */
    void cycle(const QTextCursor &cursor, int steps) const;
    /*!
        What the Return key does at a paragraph's end: begins the element that the file has follow.
        One undo step.

        \param cursor  stands in the new paragraph afterwards
        \return false, with nothing done, for null, within a paragraph and outside elements, where
                Return does what it does everywhere
    */
    bool startNext(QTextCursor *cursor) const;

private:
    QTextCharFormat charFormat(const QString &name) const;
    QTextBlockFormat blockFormat(const QString &name) const;

    QHash<QString, MVRFinalDraft::ElementSettings> m_settings;
    QStringList m_names;
};
