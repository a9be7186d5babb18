// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraftFile.h>

#include <QSizeF>
#include <QString>

#include <memory>

class MVRScreenplayPages;
class QTextDocument;

/*!
    The file that is open: reads it into a document, writes the document back into it.

    Screenplays are edited in place: what the document does not show stays in the file. RTF keeps
    notes as they are; in Markdown and HTML they stand in the text, between codes.
*/
class Manuscript
{
public:
    Manuscript();
    ~Manuscript();

    QString path() const { return m_path; }
    /*! Calls the file something else, as after reading a recovered copy. */
    void setPath(const QString &path) { m_path = path; }
    bool isScreenplay() const { return m_script != nullptr; }
    const MVRFinalDraftFile *script() const { return m_script.get(); }

    /*! An empty document for a file that has no name yet. */
    std::unique_ptr<QTextDocument> startNew(bool isScreenplay);
    /*!
        \param error  why there is none
        \return null, with the file before still open, when this one cannot be read
    */
    std::unique_ptr<QTextDocument> open(const QString &path, QString *error);

    /*! Replaces the file at \a path in one step, which is then the open one. */
    bool save(const QTextDocument &document, const QString &path, QString *error);
    /*! Writes a copy that loses nothing: what a recovery file is. */
    bool saveCopy(const QTextDocument &document, const QString &path) const;
    /*! The suffix that saveCopy() is for. */
    QString copySuffix() const;

    /*! For the dialogs: the formats with their patterns. */
    static QString openFilter();
    static QString saveFilter();
    static bool canOpen(const QString &path);

    /*! The pages of the screenplay as it stands. */
    MVRScreenplayPages pages(const QTextDocument &document) const;

private:
    QString m_path;
    std::unique_ptr<MVRFinalDraftFile> m_script; // of screenplays only
};
