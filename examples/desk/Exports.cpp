// SPDX-License-Identifier: MIT
#include "Exports.h"

#include "Manuscript.h"
#include "NoteEdits.h"

#include <bbcode/MVRBbCodeConverter.h>
#include <core/MVRToolkit.h>
#include <core/STextDoc.h>
#include <pages/MVRPagePainter.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextDocument>
#include <QTextDocumentWriter>

namespace {

constexpr double paperMargin = 72.0;

std::unique_ptr<QTextDocument> copyOf(const QTextDocument &document)
{
    std::unique_ptr<QTextDocument> copy(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    copy->setUndoRedoEnabled(false);
    return copy;
}

std::unique_ptr<QTextDocument> forReaders(const QTextDocument &document)
{
    auto copy = copyOf(document);
    NoteEdits::footnotesToEndNotes(copy.get());
    NoteEdits::moveToText(copy.get(), QTextCursor());
    NoteEdits::enclose(copy.get(), QStringLiteral("["), QStringLiteral("]"));
    MVRToolkit::toStockParagraphs(copy.get(), 468.0);
    return copy;
}

} // namespace

bool Exports::writeOdt(const QTextDocument &document, const QString &path)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly)
        && QTextDocumentWriter(&file, "ODF").write(forReaders(document).get()) && file.commit();
}

bool Exports::writePdf(const QTextDocument &document, const Manuscript &manuscript,
                       const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QString title = QFileInfo(path).completeBaseName();
    if (manuscript.isScreenplay())
        return MVRPagePainter::writePdf(&file, manuscript.pages(document), title) && file.commit();
    const auto text = forReaders(document);
    text->setDocumentMargin(paperMargin);
    QPdfWriter writer(&file);
    writer.setTitle(title);
    writer.setResolution(72); // a point of the text is a point of the page
    writer.setPageSize(QPageSize(QPageSize::Letter));
    writer.setPageMargins(QMarginsF());
    text->documentLayout()->setPaintDevice(&writer);
    text->setPageSize(QSizeF(612, 792));
    text->print(&writer);
    return file.commit();
}

QString Exports::bbCode(const QTextDocument &document)
{
    const auto copy = copyOf(document);
    STextDoc::removeInspectorCommentsAndFootnotes(copy.get());
    for (const int kind :
         {MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty})
        MVRTextDoc::removeInlineNotes(copy.get(), kind, QTextCursor());
    return MVRBbCodeConverter().fromHtml(copy->toHtml(), nullptr).trimmed();
}

QString Exports::markup(const QTextDocument &document)
{
    const auto copy = copyOf(document);
    NoteEdits::moveToText(copy.get(), QTextCursor()); // there are no codes for notes beside it
    MVRTextDoc::toInlineMarkup(copy.get());
    return copy->toPlainText();
}
