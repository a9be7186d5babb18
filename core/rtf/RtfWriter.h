#pragma once

#include <core/rtf/RtfOutput.h>
#include <core/rtf/RtfProps.h>
#include <core/rtf/RtfTables.h>

#include <QHash>

class QTextBlock;
class QTextBlockFormat;
class QTextCharFormat;
class QTextDocument;
class QTextFormat;

/*!
    Writes a document as RTF.

    The body is written first, so that the header names only the fonts and colours that are used.
    Each format is turned into words once. Runs stand in groups of their own and say only what
    they have; paragraphs say their formatting when it differs from the paragraph before.
*/
class RtfWriter
{
public:
    /*! \param withDefaults  the default font goes out too, see MVRTextRtf::toRtfCData() */
    QByteArray write(const QTextDocument &document, bool withDefaults);
    QByteArray write(const QString &text, const QTextCharFormat &format);

private:
    struct Run
    {
        QByteArray words;
        int link = 0;
    };

    void writeBlock(const QTextBlock &block);
    void writeBlockFormat(const QTextBlock &block);
    void writeRuns(const QTextBlock &block);
    void writeDefaults(const QTextDocument &document);
    void openLink(int link);
    void closeLink();
    const Run &run(int formatNumber, const QTextCharFormat &format);
    const QByteArray &markWords(int formatNumber, const QTextCharFormat &format);
    QByteArray header() const;
    QByteArray finished() const;

    RtfOutput m_body;
    RtfTables m_tables;
    QHash<int, Run> m_runs;
    QHash<int, QByteArray> m_marks;
    QHash<int, QByteArray> m_paragraphs;
    QByteArray m_paragraph; // words of the paragraph formatting in force
    QByteArray m_defaults;
    bool m_breakBefore = false; // the block before ended its page
    int m_link = 0; // the field that is open
    bool m_openRun = false; // the last run's group waits for the paragraph's end
};
