// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Folders.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/Notes.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/Rewriting.h>
#include <tool/Saving.h>
#include <tool/System.h>
#include <tool/commands/Commands.h>
#include <tool/formats/Formats.h>
#include <tool/formats/HtmlLists.h>
#include <tool/formats/markdown/MarkdownFormat.h>

#include <core/MVRFormat.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextXhtmlExporter.h>
#include <core/document/EditBlock_p.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/SafeHtml_p.h>
#include <core/document/TextFragments_p.h>
#include <text/InlineMarkup_p.h>
#include <text/MVRTextDoc.h>

#include <QDir>
#include <QFileInfo>
#include <QTextDocumentFragment>

#include <limits>

namespace {

const char examples[] = R"(  mvrtext endnotes paper.rtf -o paper.html
  mvrtext endnotes --style mmd paper.rtf -o paper.md
  mvrtext endnotes --style ebook --first 12 chapter2.rtf -o chapter2.html
  mvrtext endnotes paper.rtf -o paper.pdf --notes-out notes.txt
)";

constexpr int maxFirst = std::numeric_limits<int>::max();

// Of characters. Qt compares formats that differ in a list alone with each other, one by one.
constexpr int noteNumberProperty = QTextFormat::UserProperty + 0xf02;

/*! What the user asked for, checked. */
struct EndNotes
{
    MVRFormat style;
    int first = 1;
    QString notesFile; // empty: behind the text
    const Format *notesFormat = nullptr; // of the file; null for a book's
    const Format *textFormat = nullptr;

    bool isMmd() const { return MVRFormat::isMmdVariant(style.format()); }
};

MVRFormat styleOf(const CommandLine &commandLine)
{
    const QString word = commandLine.value("style");
    if (word == QLatin1String("mmd"))
        return MVRFormat(MVRFormat::MultiMarkdown);
    return MVRFormat(word == QLatin1String("ebook") ? MVRFormat::EPub3 : MVRFormat::NoFormat);
}

/*! The marks of a book lead into a file, which is written beside the text by default. */
bool readNotesFile(const CommandLine &commandLine, const QString &output, EndNotes *endNotes,
                   QString *error)
{
    endNotes->notesFile = commandLine.value("notes-out");
    if (!MVRFormat::isEBook(endNotes->style.format())) {
        if (!endNotes->notesFile.isEmpty())
            endNotes->notesFormat = findFormat(endNotes->notesFile, QString(), error);
        return endNotes->notesFile.isEmpty() || endNotes->notesFormat;
    }
    if (endNotes->notesFile.isEmpty() && output != QLatin1String("-"))
        endNotes->notesFile = QFileInfo(output).dir().filePath(QStringLiteral("footnotes.xhtml"));
    if (endNotes->notesFile.isEmpty())
        *error = Tool::tr("say where the notes of the book go: --notes-out FILE");
    return !endNotes->notesFile.isEmpty();
}

/*! Makes ordinary text of the marks, which are no footnotes that a writer is to place. */
void releaseMarks(QTextDocument &text, bool isMarkdown)
{
    changeAllFormats(&text, [isMarkdown](QTextCharFormat &format) {
        if (!format.hasProperty(MVRTextFormat::InlineFootnoteProperty))
            return;
        if (isMarkdown && format.boolProperty(MVRTextFormat::InlineFootnoteProperty))
            format.setProperty(MarkdownFormat::literalProperty, true);
        format.clearProperty(MVRTextFormat::InlineFootnoteProperty);
    });
}

QString label(const EndNotes &endNotes, qint64 number)
{
    return endNotes.isMmd() ? QStringLiteral("[^fn%1]: ").arg(number)
                            : QStringLiteral("%1. ").arg(number);
}

// A paragraph of its own would no longer belong to the note that "[^fn1]:" begins.
void joinParagraphs(QTextCursor &cursor, int start)
{
    for (int position = cursor.block().position(); position > start;) {
        cursor.setPosition(position);
        if (followsParagraph(cursor.block())) { // a table's cells stay apart
            cursor.deletePreviousChar();
            cursor.insertText(QString(QChar::LineSeparator));
        }
        cursor.setPosition(position - 1);
        position = cursor.block().position();
    }
    cursor.movePosition(QTextCursor::End);
}

// The Markdown writer indents those behind the first.
void markParagraphs(QTextCursor &cursor, int start)
{
    QTextBlockFormat body;
    body.setProperty(MarkdownFormat::noteBodyProperty, true);
    const QTextBlock first = cursor.document()->findBlock(start);
    for (QTextBlock block = first.next(); block.isValid(); block = block.next()) {
        cursor.setPosition(block.position());
        cursor.mergeBlockFormat(body);
    }
    cursor.movePosition(QTextCursor::End);
}

/*! Puts \a note behind those before it, in a paragraph that can be linked to. */
void appendNote(QTextCursor &cursor, const QTextDocumentFragment &note, qint64 number,
                const EndNotes &endNotes)
{
    const Format *format = endNotes.notesFormat ? endNotes.notesFormat : endNotes.textFormat;
    const bool isMarkdown = endNotes.isMmd() && format == &markdownFormat;
    if (number > endNotes.first)
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    QTextCharFormat place;
    if (MVRFormat::isEBook(endNotes.style.format())) {
        place.setAnchor(true);
        place.setAnchorNames({QStringLiteral("fn%1").arg(number)});
        place.setProperty(noteNumberProperty, int(number - endNotes.first));
    }
    if (isMarkdown)
        place.setProperty(MarkdownFormat::literalProperty, true);
    const int start = cursor.position();
    cursor.insertText(label(endNotes, number), place);
    cursor.insertFragment(note);
    if (isMarkdown)
        markParagraphs(cursor, start);
    else if (endNotes.isMmd())
        joinParagraphs(cursor, start);
}

/*! Takes all footnotes out of \a text, to the end of \a list. */
void takeFootnotes(QTextDocument &text, const EndNotes &endNotes, QTextDocument *list)
{
    InlineMarkup::readNoteCodes(&text);
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(&text, QTextCursor());
    MVRTextDoc::trimInlineNotes(&text, MVRTextFormat::InlineFootnoteProperty, false, 0, 0,
                                QTextCursor());
    QTextCharFormat ordinary;
    ordinary.setProperty(MVRTextFormat::InlineFootnoteProperty, false);
    const EditBlock editBlock(list);
    QTextCursor cursor(list);
    qint64 number = endNotes.first;
    MVRTextDoc::inlineFootnotesToEndNotes(
        &text, endNotes.first, ordinary, endNotes.style,
        [&](const QTextDocumentFragment &note) { appendNote(cursor, note, number++, endNotes); });
    releaseMarks(text, endNotes.isMmd() && endNotes.textFormat == &markdownFormat);
}

/*! Puts the notes at the end of \a text. */
void appendNotes(QTextDocument &text, const QTextDocument &notes)
{
    if (notes.isEmpty())
        return;
    const EditBlock editBlock(&text);
    QTextCursor cursor(&text);
    cursor.movePosition(QTextCursor::End);
    // An empty line sets them off.
    if (!cursor.atBlockStart())
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    if (!text.isEmpty())
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    cursor.insertFragment(QTextDocumentFragment(&notes));
}

/*! The notes as the file that the marks of a book lead into. */
QByteArray footnotesPage(QTextDocument &notes, const QString &title)
{
    notes.setMetaInformation(QTextDocument::DocumentTitle, title);
    makeSafeForHtml(&notes);
    QString page = MVRTextXhtmlExporter::htmlToXhtml(htmlWithWholeLists(&notes));
    page.replace(QLatin1String("<html>"),
                 QLatin1String("<html xmlns=\"http://www.w3.org/1999/xhtml\">"));
    // Qt writes an anchor's name as HTML did it; text cannot hold an angle bracket.
    page.replace(QLatin1String("<a name=\""), QLatin1String("<a id=\""));
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n" + page.trimmed().toUtf8() + '\n';
}

bool renderNotes(Document &list, const EndNotes &endNotes, Progress &progress, OutputFile *file)
{
    file->path = endNotes.notesFile;
    if (endNotes.notesFormat)
        return renderDocument(*endNotes.notesFormat, NotesChoice::ByFormat, WriteOptions(), list,
                              progress, file);
    file->data = footnotesPage(list.text, list.title);
    return true;
}

bool isSafe(const CommandLine &commandLine, const Rewriting &rewriting, const EndNotes &endNotes)
{
    if (!rewriting.isSafe())
        return false;
    const QString &file = endNotes.notesFile;
    if (file.isEmpty()
        || (!System::isSameFile(file, commandLine.file(0))
            && !System::isSameFile(file, rewriting.output())
            && Folders::absolutePath(file) != Folders::absolutePath(rewriting.output())))
        return true;
    printMessage(file, Tool::tr("is the input or output itself; nothing was written"));
    return false;
}

bool makeEndNotes(const Rewriting &rewriting, const EndNotes &endNotes)
{
    Progress progress;
    Document document;
    if (!rewriting.load(document, progress))
        return false;
    Document notes;
    notes.text.setUndoRedoEnabled(false);
    notes.text.setDefaultFont(document.text.defaultFont());
    notes.text.setDocumentMargin(document.text.documentMargin());
    notes.title = document.title;
    notes.elements = document.elements;
    takeFootnotes(document.text, endNotes, &notes.text);
    QVector<OutputFile> files;
    if (endNotes.notesFile.isEmpty()) {
        appendNotes(document.text, notes.text);
    } else {
        files.append(OutputFile());
        if (!renderNotes(notes, endNotes, progress, &files.last()))
            return false;
    }
    files.append(OutputFile());
    return rewriting.renderWithNotes(document, progress, &files.last())
        && saveFiles(files, progress);
}

int runEndNotes(const CommandLine &commandLine)
{
    Rewriting rewriting(commandLine);
    EndNotes endNotes;
    endNotes.style = styleOf(commandLine);
    QString error;
    if (!rewriting.readArguments(true, &error)
        || !commandLine.readNumber("first", 0, maxFirst, &endNotes.first, &error)
        || !readNotesFile(commandLine, rewriting.output(), &endNotes, &error))
        return commandLine.usageError(error);
    endNotes.textFormat = rewriting.outputFormat();
    if (!isSafe(commandLine, rewriting, endNotes))
        return Failure;
    return makeEndNotes(rewriting, endNotes) ? Success : Failure;
}

} // namespace

Command endNotesCommand()
{
    Command command {
        "endnotes",
        QT_TRANSLATE_NOOP("Tool", "Take footnotes out of the text and list them by number."),
        "[OPTIONS] -o OUT IN",
        QT_TRANSLATE_NOOP("Tool",
                          "Takes the footnotes out of a document, leaves numbers in their places "
                          "and lists the notes behind the text or in a file of their own. "
                          "Footnotes are those of RTF files and those that are written as codes "
                          "(see mvrtext markup)."),
        examples,
        {Rewriting::input()},
        {{"style",
          "STYLE",
          QT_TRANSLATE_NOOP("Tool",
                            "Numbers alone (plain), \"[^fn1]\" for MultiMarkdown (mmd), or links "
                            "into a file footnotes.xhtml (ebook)."),
          {QStringLiteral("plain"), QStringLiteral("mmd"), QStringLiteral("ebook")},
          "plain"},
         {"first", "NUMBER", QT_TRANSLATE_NOOP("Tool", "Number of the first note."), {}, "1"},
         {"notes-out",
          "FILE",
          QT_TRANSLATE_NOOP("Tool",
                            "The file to write the notes to, instead of behind the text; for ebook "
                            "footnotes.xhtml beside OUT without this option."),
          {}}},
        {oldFormatWord()},
        runEndNotes};
    command.options += Rewriting::options(true);
    return command;
}
