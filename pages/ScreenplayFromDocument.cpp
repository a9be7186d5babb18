// SPDX-License-Identifier: MIT
#include <pages/MVRScreenplay.h>

#include <core/MVRParagraphView.h>
#include <core/MVRScriptElement.h>
#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <pages/FdxScreenplay_p.h>

#include <QTextBlock>
#include <QTextDocument>

using MVRFinalDraft::ElementSettings;

namespace {

MVRFinalDraft::TextAttr attrOf(const QTextCharFormat &format)
{
    MVRFinalDraft::TextAttr attr;
    const QString family = MVRToolkit::fontFamily(format);
    if (format.hasProperty(QTextFormat::ForegroundBrush)
        || format.hasProperty(QTextFormat::BackgroundBrush))
        attr.fromCharFormat(format, Qt::white);
    attr.font = family;
    attr.style = MVRFinalDraft::FontStyleFlags();
    attr.style.setFlag(MVRFinalDraft::Bold, format.fontWeight() >= QFont::Bold);
    attr.style.setFlag(MVRFinalDraft::Italic, format.fontItalic());
    attr.style.setFlag(MVRFinalDraft::Underline, format.fontUnderline());
    attr.style.setFlag(MVRFinalDraft::Strikeout, format.fontStrikeOut());
    attr.style.setFlag(MVRFinalDraft::AllCaps, format.fontCapitalization() == QFont::AllUppercase);
    attr.size = format.fontPointSize() > 0.0 ? format.fontPointSize() : 12.0;
    return attr;
}

MVRScreenplayParagraph paragraphOf(const QTextBlock &block, double margin)
{
    MVRScreenplayParagraph paragraph;
    const QTextBlockFormat format = MVRParagraphView::ownFormat(block.blockFormat());
    paragraph.type = format.stringProperty(MVRScriptElement::NameProperty);
    if (paragraph.type.isEmpty())
        paragraph.type = MVRFinalDraft::toString(MVRFinalDraft::Action);
    const ElementSettings element = MVRScreenplay::standardElement(paragraph.type);
    paragraph.paginateAs = element.paginateAs;
    paragraph.attr = element.paragraphSpec;
    // A paragraph that nobody gave a shape has that of its element.
    if (format.hasProperty(MVRTextFormat::BlockRightIndentProperty))
        paragraph.attr.fromBlockFormat(format, margin);
    else if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
        paragraph.attr.startsNewPage = true;
    paragraph.source = block.blockNumber();
    paragraph.dualDialogue = format.intProperty(MVRFinalDraftFile::DualDialogueProperty);
    if (paragraph.paginateAs == MVRFinalDraft::SceneHeading)
        paragraph.sceneNumber
            = format.stringProperty(MVRFinalDraftFile::SceneNumberProperty).trimmed();
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        if (it.fragment().charFormat().boolProperty(MVRFinalDraftFile::HiddenTextProperty))
            continue;
        MVRScreenplayRun run;
        run.text = it.fragment().text();
        run.attr = attrOf(it.fragment().charFormat());
        paragraph.runs.append(run);
    }
    // The reader gives an empty paragraph one blank.
    if (block.text().trimmed().isEmpty())
        paragraph.runs.clear();
    return paragraph;
}

bool isHiddenWhole(const QTextBlock &block, const MVRScreenplayParagraph &paragraph)
{
    return paragraph.runs.isEmpty() && !block.text().trimmed().isEmpty();
}

}

MVRScreenplay MVRScreenplay::fromDocument(const QTextDocument &document, int titlePageBlocks)
{
    MVRScreenplay screenplay;
    const double margin = document.documentMargin();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const MVRScreenplayParagraph paragraph = paragraphOf(block, margin);
        if (block.blockNumber() < titlePageBlocks)
            screenplay.titlePage.append(paragraph);
        else if (!isFdxOutline(paragraph.type) && !isHiddenWhole(block, paragraph))
            screenplay.body.append(paragraph);
    }
    screenplay.title = document.metaInformation(QTextDocument::DocumentTitle);
    return screenplay;
}
