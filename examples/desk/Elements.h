// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraft.h>

#include <QHash>
#include <QStringList>

class QTextBlock;
class QTextCursor;

/*! The elements of a screenplay (Action, Dialogue, …) as its file sets them up, and their keys. */
class Elements
{
public:
    /*! None: for a text that is no screenplay. */
    Elements() = default;
    /*! Those of a file; the standard ones where it names none. */
    explicit Elements(QHash<QString, MVRFinalDraft::ElementSettings> settings);

    /*! In the order of their shortcuts. */
    QStringList names() const { return m_names; }
    QString shortcut(const QString &name) const { return m_settings.value(name).shortcut; }

    /*! The element of a paragraph; empty on a title page. */
    static QString of(const QTextBlock &block);
    static bool isScene(const QTextBlock &block);

    /*! Makes the cursor's paragraph one of an element; one undo step. */
    void apply(QTextCursor cursor, const QString &name) const;
    /*! What the Tab key does: the element that comes \a steps behind the paragraph's own. */
    void cycle(const QTextCursor &cursor, int steps) const;
    /*! What the Return key does: begins the element that the file has follow. One undo step.
        \return false outside elements, where Return does what it does everywhere */
    bool startNext(QTextCursor *cursor) const;

private:
    QTextCharFormat charFormat(const QString &name) const;
    QTextBlockFormat blockFormat(const QString &name) const;

    QHash<QString, MVRFinalDraft::ElementSettings> m_settings;
    QStringList m_names;
};
