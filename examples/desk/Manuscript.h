// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRScreenplayElements.h>
#include <text/MVRRecovery.h>

#include <QTextDocument>

struct Document;
struct Format;

/*!
    The file that is open, as a document; read and written by the formats of mvrtext.

    Screenplays are edited in place: what the document does not show stays in the file.
*/
class Manuscript
{
public:
    Manuscript() { startNew(false); }

    QString path() const { return m_path; }
    /*! Calls the file something else, as after reading a recovered copy. */
    void setPath(const QString &path) { m_path = path; }
    bool isScreenplay() const;
    /*! What is edited; who holds it keeps all of the file. */
    std::shared_ptr<QTextDocument> text() const;
    MVRScreenplayElements elements() const;

    /*! Begins a file that has no name yet. */
    void startNew(bool isScreenplay);
    /*! False, with the file before still open and \a error saying why, when it cannot be read. */
    bool open(const QString &path, QString *error);
    /*! Replaces the file at \a path in one step; its suffix says the format. */
    bool save(const QString &path, QString *error) const;
    /*! What becomes of notes in a file of that name, in words; empty where they stay. */
    QString fateOfNotes(const QString &path) const;

    /*! The text in a format that is called so: "bbcode". */
    QByteArray inFormat(const QString &format) const;
    /*! The text with the codes of its notes, preserved formatting and linked pictures. */
    QString markup() const;
    /*! How many pages the screenplay has as it stands. */
    int pageCount() const;

    /*! The format of copies that lose nothing, and what writes one. */
    QString copySuffix() const;
    MVRRecovery::Writer copyWriter() const;

    /*! For dialogs: what can be opened, and what can be saved as. */
    static QString openFilter();
    static QString saveFilter();

private:
    bool write(const Format &format, QByteArray *bytes, QString *error) const;

    QString m_path;
    std::shared_ptr<Document> m_document;
};
