#pragma once

#include <finaldraft/MVRFinalDraft.h>

#include <QTextCursor>
#include <QVector>

/*!
    Writes paragraphs and runs at the end of a document.

    A script uses few formats: those made are kept, since a document takes one it knows without
    comparing it property by property. A paragraph's closing break is made when more text comes,
    so that the next paragraph gets its format at once; finish() makes the last one.
*/
class RunInserter
{
public:
    explicit RunInserter(QTextDocument *document)
        : m_cursor(document)
    {
    }

    /*! Gives the paragraph at the end its format. */
    void startParagraph(const QTextBlockFormat &format);
    /*! Appends a run; \a elementFormat wins over the run's settings. */
    void insertRun(const QString &text, const MVRFinalDraft::TextAttr &attr,
                   const QTextCharFormat &elementFormat);
    /*! Appends text in the format of the text before it. */
    void insertText(const QString &text);
    /*! Closes the paragraph. */
    void endParagraph();
    /*! Makes the break that is due; the document ends with an empty paragraph then. */
    void finish();

    QTextCursor cursor() const { return m_cursor; }

private:
    /*! What a character format was made of, and the format. */
    struct MadeFormat
    {
        MVRFinalDraft::TextAttr attr;
        QTextCharFormat elementFormat;
        QTextCharFormat charFormat;
    };

    QTextCharFormat charFormat(const MVRFinalDraft::TextAttr &attr,
                               const QTextCharFormat &elementFormat);

    QTextCursor m_cursor;
    bool m_isBreakDue = false;
    QVector<MadeFormat> m_formats;
};
