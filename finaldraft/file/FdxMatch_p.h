// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxRunEdit_p.h>
#include <finaldraft/file/FdxScript_p.h>

#include <QHash>
#include <QTextBlock>
#include <QVector>

/*! A note of the document. Places count the document's text without its inline notes. */
struct FdxDocumentNote
{
    int start = 0;
    int end = 0;
    int entry = 0; // that it begins in
    int lastEntry = 0; // that it ends in
    bool isInline = false;
    QTextCharFormat format; // of an inspector note
    QString href;
    QStringList paragraphs; // of an inline note
};

/*! A block of the document and where it goes in the file. */
struct FdxEntry
{
    QTextBlock block;
    int source = -1; // index of the paragraph that it is; -1: a new one
    int origin = -1; // of the paragraph that it was split off or copied from
    int textOf = -1; // paragraph that is known to have its text
    int container = -1;
    bool isInPlace = false; // its element stays where it is
    bool isPlain = true; // all of its text is text of the script
    int newDual = -1; // entry that begins the dual dialogue it is in, if that is a new one
    int position = 0; // of its text, without inline notes
    int length = 0;

    QVector<FdxNewRun> runs() const;
    QString text() const;
};

/*!
    Finds out which block of a document is which paragraph of a file.

    A block is the paragraph that it was read from (see FdxIdentity), wherever it stands now; of
    copies, the first is. Blocks that lost their mark are known by their text and their neighbours.
*/
class FdxMatch
{
public:
    FdxMatch(const FdxScript &script, int fileId, const QTextDocument *document);

    QVector<FdxEntry> entries;
    QVector<FdxDocumentNote> notes;
    /*! For each paragraph of the file: its entry; -1: it is gone. */
    QVector<int> entryOf;

private:
    void collect(const QTextDocument *document);
    void readBlock(const QTextBlock &block);
    void readFragment(const QTextFragment &fragment, QString text, bool continues);
    int markOf(const QTextBlock &block);
    void expectText(FdxEntry *entry, const QString &text);
    void addInlineNote(const QString &text, bool continues);
    void addNote(const QTextCharFormat &format, int start, int end);
    void resolveMarks();
    void resolveByText();
    void assignContainers();
    int ownContainer(const FdxEntry &entry) const;
    void separateTitlePage();
    QVector<int> dualContainers() const;
    void gatherDualDialogue();
    void findInPlace();

    const FdxScript &m_script;
    int m_fileId;
    int m_position = 0;
    int m_expected = 0; // paragraph that comes next in the file
    int m_plainFormat = -1; // of text without notes, as the document counts formats
    QHash<int, int> m_marks; // by the block format that has them
};
