// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/BoundedNames_p.h>
#include <finaldraft/MVRFinalDraft.h>

#include <QTextCursor>
#include <QVector>

/*!
    Writes paragraphs and runs at the end of a document; all that one object writes is one change.

    Text is kept back until its format ends, because files cut runs where the format goes on. A
    paragraph's closing break is kept back until more text comes, so that the next paragraph gets
    its format at once. The formats made are kept, since a document takes one that it knows
    without comparing it property by property.
*/
class RunInserter
{
public:
    explicit RunInserter(QTextDocument *document)
        : m_cursor(document)
    {
        m_cursor.beginEditBlock();
    }
    ~RunInserter() { m_cursor.endEditBlock(); }
    Q_DISABLE_COPY_MOVE(RunInserter)

    /*! Gives the paragraph at the end its format. */
    void startParagraph(const QTextBlockFormat &format);
    /*! Appends a run; \a elementFormat wins over the run's settings. */
    void insertRun(const QString &text, const MVRFinalDraft::TextAttr &attr,
                   const QTextCharFormat &elementFormat);
    /*! Appends text in the format of the text before it. */
    void insertText(const QString &text);
    /*! Closes the paragraph. */
    void endParagraph();
    /*! Inserts what is still kept back: text, or the closing break of the last paragraph. */
    void finish();

    /*! A cursor behind the text that is inserted; see finish(). */
    QTextCursor cursor() const { return m_cursor; }

private:
    /*! What a character format was made of, and the format. */
    struct MadeFormat
    {
        MVRFinalDraft::TextAttr attr;
        QTextCharFormat elementFormat;
        QTextCharFormat charFormat;
    };

    void insertPendingText();
    QTextCharFormat charFormat(const MVRFinalDraft::TextAttr &attr,
                               const QTextCharFormat &elementFormat);

    QTextCursor m_cursor;
    bool m_isBreakDue = false;
    QString m_pendingText;
    QTextCharFormat m_charFormat; // of the pending text, or that inserted last
    QVector<MadeFormat> m_formats;
    BoundedNames m_fonts;
};
