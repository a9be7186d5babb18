// SPDX-License-Identifier: MIT
#include <tool/formats/TitlePage.h>

#include <tool/Document.h>

#include <core/MVRDomDoc.h>
#include <core/MVRTextFormat.h>
#include <finaldraft/MVRFinalDraft.h>

#include <QBuffer>
#include <QTextBlock>

namespace {

// A paragraph without text was read without a format; it has none to write either.
bool hasShape(const QTextBlock &block)
{
    return block.blockFormat().hasProperty(MVRTextFormat::BlockRightIndentProperty);
}

// The runs of the paragraph go to a new one that says by itself what it looks like.
void moveParagraph(MVRDomDoc &dom, QDomElement paragraph, const QTextBlock &block, double margin)
{
    const QString tag = QStringLiteral("Paragraph");
    if (hasShape(block)) {
        MVRFinalDraft::ParagraphAttr attributes;
        attributes.fromBlockFormat(block.blockFormat(), margin);
        attributes.toDomDoc(&dom, tag);
    } else if (dom.create(tag)) {
        dom.cdUp();
    }
    QDomElement moved = dom.currentElement().lastChildElement(tag);
    while (paragraph.hasChildNodes())
        moved.appendChild(paragraph.firstChild());
    paragraph.parentNode().removeChild(paragraph);
}

bool moveTitlePage(MVRDomDoc &dom, const Document &document)
{
    QDomElement paragraph = dom.find(QStringLiteral("/FinalDraft/Content/Paragraph"));
    if (!dom.cd(QStringLiteral("/FinalDraft")) || !dom.create(QStringLiteral("TitlePage"))
        || !dom.create(QStringLiteral("Content")))
        return false;
    QTextBlock block = document.text.begin();
    for (int i = 0; i < document.titlePageBlocks && block.isValid(); ++i, block = block.next()) {
        const QDomElement next = paragraph.nextSiblingElement();
        // A note that begins a paragraph is written around it; then they no longer correspond.
        if (paragraph.tagName() != QLatin1String("Paragraph"))
            return false;
        moveParagraph(dom, paragraph, block, document.text.documentMargin());
        paragraph = next;
    }
    return true;
}

}

QByteArray withTitlePage(const QByteArray &fdx, const Document &document)
{
    MVRDomDoc dom;
    QBuffer input;
    input.setData(fdx);
    input.open(QIODevice::ReadOnly);
    if (document.titlePageBlocks == 0 || !dom.setContent(&input) || !moveTitlePage(dom, document))
        return fdx;
    QByteArray result;
    QBuffer output(&result);
    output.open(QIODevice::WriteOnly);
    return dom.save(output) ? result : fdx;
}
