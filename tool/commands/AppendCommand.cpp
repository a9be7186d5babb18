// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Progress.h>
#include <tool/Rewriting.h>
#include <tool/commands/Commands.h>

#include <core/MVRTextFormat.h>
#include <core/document/EditBlock_p.h>
#include <core/document/FormatEdits_p.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <text/MVRTextDoc.h>

#include <QHash>
#include <QTextBlock>
#include <QTextCursor>

namespace {

const char examples[] = R"(  mvrtext append chapter1.rtf chapter2.rtf chapter3.rtf -o book.rtf
  mvrtext append --page-break act1.fdx act2.fdx -o play.fdx
)";

constexpr int indents[] = {MVRTextFormat::BlockLeftIndentProperty,
                           MVRTextFormat::BlockRightIndentProperty, QTextFormat::TextIndent};
constexpr int shapes[] = {MVRTextFormat::BlockLeftIndentProperty,
                          MVRTextFormat::BlockRightIndentProperty,
                          QTextFormat::TextIndent,
                          QTextFormat::BlockAlignment,
                          QTextFormat::BlockTopMargin,
                          MVRTextFormat::LineSpacingProperty};

QHash<QString, QTextBlockFormat> formatsByName(const QList<MVRScriptElement> &elements)
{
    QHash<QString, QTextBlockFormat> formats;
    for (const MVRScriptElement &element : elements) {
        if (!formats.contains(element.name()))
            formats.insert(element.name(), element.blockFormat());
    }
    return formats;
}

/*! Indents count from the margin of their document. */
void moveIndents(QTextBlockFormat *format, double distance)
{
    for (const int indent : indents) {
        if (format->hasProperty(indent))
            format->setProperty(indent, format->doubleProperty(indent) + distance);
    }
}

bool isAlike(const QVariant &one, const QVariant &other)
{
    constexpr double tolerance = 0.4; // points; files give two decimals of an inch
    return qAbs(one.toDouble() - other.toDouble()) < tolerance;
}

/*!
    A paragraph's format in the first document: what it has from its element is that of the first
    document's element, what is its own stays.
*/
QTextBlockFormat adapted(QTextBlockFormat format, const QTextBlockFormat &oldElement,
                         const QTextBlockFormat &newElement)
{
    for (const int property : shapes) {
        if (isAlike(format.property(property), oldElement.property(property)))
            format.setProperty(property, newElement.property(property));
    }
    return format;
}

/*! Gives a screenplay the elements of the first one, and that one the elements it has not. */
void shareElements(Document &document, Document &more)
{
    const double distance = more.text.documentMargin() - document.text.documentMargin();
    for (MVRScriptElement &element : more.elements) {
        QTextBlockFormat format = element.blockFormat();
        moveIndents(&format, distance);
        element.setBlockFormat(format);
    }
    const QHash<QString, QTextBlockFormat> first = formatsByName(document.elements);
    const QHash<QString, QTextBlockFormat> second = formatsByName(more.elements);
    QTextCursor cursor(&more.text);
    const EditBlock editBlock(cursor);
    for (QTextBlock block = more.text.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        moveIndents(&format, distance);
        const QString name = format.stringProperty(MVRScriptElement::NameProperty);
        if (first.contains(name) && second.contains(name))
            format = adapted(format, second.value(name), first.value(name));
        cursor.setPosition(block.position());
        cursor.setBlockFormat(format);
    }
    for (const MVRScriptElement &element : qAsConst(more.elements)) {
        if (!first.contains(element.name()))
            document.elements.append(element);
    }
    if (!more.script)
        return;
    const QHash<QString, QByteArray> settings = more.script->settingsXml();
    for (auto entry = settings.cbegin(); entry != settings.cend(); ++entry) {
        if (!document.settings.contains(entry.key()))
            document.settings.insert(entry.key(), entry.value());
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
    if (more.isScreenplay)
        shareElements(document, more);
    QTextCursor cursor(&document.text);
    cursor.movePosition(QTextCursor::End);
    if (!document.text.isEmpty()) {
        QTextBlockFormat format;
        if (onNewPage)
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        cursor.insertBlock(format, QTextCharFormat());
    }
    MVRTextDoc::appendDocumentPreservePageBreak(cursor, &more.text);
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
            progress.say(rewriting.inputName(i), Tool::tr("title page left out"));
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
