// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Progress.h>
#include <tool/Rewriting.h>
#include <tool/commands/Commands.h>

#include <core/document/FormatEdits_p.h>
#include <text/MVRTextDoc.h>

#include <QSet>
#include <QTextCursor>

namespace {

const char examples[] = R"(  mvrtext append chapter1.rtf chapter2.rtf chapter3.rtf -o book.rtf
  mvrtext append --page-break act1.fdx act2.fdx -o play.fdx
)";

/*! Elements that only the appended document has; of others, those of the first one count. */
void addElements(Document &document, const Document &more)
{
    QSet<QString> names;
    for (const MVRScriptElement &element : qAsConst(document.elements))
        names.insert(element.name());
    for (const MVRScriptElement &element : more.elements) {
        if (!names.contains(element.name()))
            document.elements.append(element);
    }
}

void removeTitlePage(Document &document)
{
    if (!removeFirstParagraphs(&document.text, document.titlePageBlocks))
        document.text.clear();
}

void append(Document &document, Document &more, bool onNewPage)
{
    if (more.text.isEmpty())
        return;
    QTextCursor cursor(&document.text);
    cursor.movePosition(QTextCursor::End);
    if (!document.text.isEmpty()) {
        QTextBlockFormat format;
        if (onNewPage)
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        cursor.insertBlock(format, QTextCharFormat());
    }
    MVRTextDoc::appendDocumentPreservePageBreak(cursor, &more.text);
    addElements(document, more);
}

bool appendAll(const Rewriting &rewriting, bool onNewPages)
{
    Progress progress;
    Document document;
    if (!rewriting.load(document, progress))
        return false;
    for (int i = 1; i < rewriting.inputCount(); ++i) {
        Document more;
        if (!rewriting.load(more, progress, i))
            return false;
        if (more.titlePageBlocks > 0) {
            removeTitlePage(more);
            printMessage(rewriting.inputName(i), Tool::tr("title page left out"));
        }
        append(document, more, onNewPages);
    }
    return rewriting.save(document, progress);
}

int runAppend(const CommandLine &commandLine)
{
    Rewriting rewriting(commandLine);
    QString error;
    if (!rewriting.readArguments(true, &error))
        return commandLine.usageError(error);
    return rewriting.isSafe() && appendAll(rewriting, commandLine.isSet("page-break")) ? Success
                                                                                       : Failure;
}

}

Command appendCommand()
{
    Command command {
        "append",
        QT_TRANSLATE_NOOP("Tool", "Put documents one behind the other."),
        "[OPTIONS] -o OUT IN MORE...",
        QT_TRANSLATE_NOOP("Tool",
                          "Puts documents one behind the other, each beginning a paragraph. Title, "
                          "fonts and the settings of screenplay elements are those of the first "
                          "one."),
        examples,
        {Rewriting::input(), {"MORE", QT_TRANSLATE_NOOP("Tool", "Files to read after it."), true}},
        Rewriting::options(true),
        {oldFormatWord()},
        runAppend};
    command.options.append(
        {"page-break",
         nullptr,
         QT_TRANSLATE_NOOP("Tool", "Begin each document behind the first on a new page."),
         {}});
    return command;
}
