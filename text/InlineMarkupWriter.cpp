// SPDX-License-Identifier: MIT
#include <text/InlineMarkup_p.h>
#include <text/MVRTextDoc.h>

#include <core/MVRTextFormat.h>
#include <core/STextDoc.h>
#include <core/document/EditBlock_p.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/TextFragments_p.h>

namespace {

QTextCharFormat switchedOff(int property)
{
    QTextCharFormat format;
    format.setProperty(property, false);
    return format;
}

/*! Puts codes around every run of marked text and takes the mark away. */
void enclose(QTextDocument *document, InlineMarkup::CodeKind kind, UnrecordedEditBlock &unrecorded)
{
    const InlineMarkup::Code &code = InlineMarkup::codes[kind];
    const FormatPattern marked(code.property, true);
    const QVector<MVRTextRange> runs = runsBehind(
        document, 0, [&marked](const QTextFormat &format) { return marked.matches(format); });
    if (runs.isEmpty())
        return;
    unrecorded.begin();
    const QTextCharFormat unmarked = switchedOff(code.property);
    QTextCursor cursor(document);
    // From the last to the first, so that the codes move no run still to be done.
    for (auto run = runs.crbegin(); run != runs.crend(); ++run) {
        const EditBlock undoStep(cursor);
        mergeIntoRange(cursor, run->start, run->end, unmarked);
        cursor.setPosition(run->end);
        cursor.insertText(QString::fromLatin1(code.closing));
        cursor.setPosition(run->start);
        cursor.insertText(QString::fromLatin1(code.opening));
    }
}

/*! A linked image and what is to stand in its place. */
struct ImageCode
{
    int position;
    QString code;
};

QString imageCode(const QTextImageFormat &format, const QString &link)
{
    return QStringLiteral("{$MVRImageLink[w:%1;h:%2]=%3}")
        .arg(format.width())
        .arg(format.height())
        .arg(link);
}

QVector<ImageCode> imageCodes(const QTextDocument *document)
{
    QVector<ImageCode> codes;
    for (FragmentWalker walker(document, 0); walker.isValid(); walker.next()) {
        const QTextCharFormat format = walker.format();
        const QString link = format.stringProperty(MVRTextFormat::ImageLinkProperty);
        if (link.isEmpty() || !format.isImageFormat())
            continue;
        const QString code = imageCode(format.toImageFormat(), link);
        for (int position = walker.start(); position < walker.end(); ++position)
            codes.append({position, code});
    }
    return codes;
}

void writeImageCodes(QTextDocument *document, UnrecordedEditBlock &unrecorded)
{
    const QVector<ImageCode> codes = imageCodes(document);
    if (codes.isEmpty())
        return;
    unrecorded.begin();
    const QTextCharFormat unlinked = switchedOff(MVRTextFormat::ImageLinkProperty);
    QTextCursor cursor(document);
    for (auto code = codes.crbegin(); code != codes.crend(); ++code) {
        const EditBlock undoStep(cursor);
        cursor.setPosition(code->position);
        cursor.setPosition(code->position + 1, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(unlinked);
        cursor.insertText(code->code);
    }
}

void encloseNotes(QTextDocument *document, UnrecordedEditBlock &unrecorded)
{
    // An opening code that stands right behind text of another kind becomes part of that text:
    // which kind comes first decides where the other one's codes stand.
    enclose(document, InlineMarkup::Annotation, unrecorded);
    enclose(document, InlineMarkup::Footnote, unrecorded);
}

} // namespace

void InlineMarkup::writeNoteCodes(QTextDocument *document)
{
    UnrecordedEditBlock unrecorded(document);
    encloseNotes(document, unrecorded);
}

void MVRTextDoc::toInlineMarkup(QTextDocument *document)
{
    if (!document)
        return;
    UnrecordedEditBlock unrecorded(document);
    STextDoc::removeInspectorComments(document);
    STextDoc::removeInspectorFootnotes(document);
    encloseNotes(document, unrecorded);
    enclose(document, InlineMarkup::Preserve, unrecorded);
    writeImageCodes(document, unrecorded);
}
