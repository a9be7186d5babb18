// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxDocument_p.h>
#include <finaldraft/file/FdxText_p.h>
#include <finaldraft/file/FdxWriter_p.h>

#include <core/MVRParagraphView.h>

using MVRFinalDraft::ParagraphAttr;
using File = MVRFinalDraftFile;

namespace {

template <int Count>
QByteArray attributesOf(const QTextBlockFormat &format,
                        const FdxBlockAttribute (&attributes)[Count])
{
    QByteArray text;
    for (const FdxBlockAttribute &row : attributes) {
        const QString value = format.stringProperty(row.property);
        if (!value.isEmpty())
            text += QByteArray(" ") + row.name + "=\"" + fdxEscapedValue(value) + '"';
    }
    return text;
}

/*! What a paragraph that is new to the file says of its scene. */
QByteArray sceneProperties(const QTextBlockFormat &format, const QByteArray &newLine)
{
    const QByteArray attributes = attributesOf(format, fdxSceneAttributes);
    const QString summary = format.stringProperty(File::SceneSummaryProperty);
    if (attributes.isEmpty() && summary.isEmpty())
        return QByteArray();
    QByteArray paragraphs;
    const QStringList lines = summary.isEmpty() ? QStringList() : summary.split(QLatin1Char('\n'));
    for (const QString &line : lines)
        paragraphs += "<Paragraph><Text>" + fdxEscaped(line, newLine) + "</Text></Paragraph>";
    if (!paragraphs.isEmpty())
        paragraphs = "<Summary>" + paragraphs + "</Summary>";
    return "<SceneProperties" + attributes + '>' + paragraphs + "</SceneProperties>";
}

}

QByteArray FdxWriter::newDualDialogue(int first)
{
    QByteArray paragraphs;
    for (int i = first; i < m_match.entries.size() && m_match.entries[i].newDual == first; ++i)
        paragraphs += element(i);
    return "<Paragraph><DualDialogue>" + paragraphs + "</DualDialogue></Paragraph>";
}

QByteArray FdxWriter::newParagraph(int index)
{
    const FdxEntry &entry = m_match.entries[index];
    const QByteArray &name = shown(entry).typeName;
    FdxType &type = *shown(entry).type;
    QByteArray element = "<Paragraph";
    const QTextBlockFormat format = MVRParagraphView::ownFormat(entry.block.blockFormat());
    const ParagraphAttr &inType = type.plainParagraph.shape;
    ParagraphAttr shape = fdxShape(format, inType);
    // Spaces and indents of other documents are not those of a script.
    if (!format.hasProperty(MVRScriptElement::NameProperty)
        && !format.hasProperty(File::TitlePageProperty)) {
        const ParagraphAttr whole = shape;
        shape = inType;
        shape.alignment = whole.alignment;
        shape.startsNewPage = whole.startsNewPage;
    }
    const QVector<FdxAttribute> attributes = fdxShapeAttributes(shape, inType, m_script.margin());
    for (const FdxAttribute &attribute : attributes)
        element += QByteArray(" ") + attribute.name + "=\"" + attribute.value + '"';
    // Of a copy and of what was split off, the paragraph itself has number and scene already.
    const bool isOwn = entry.origin < 0;
    if (isOwn)
        element += attributesOf(format, fdxParagraphAttributes);
    if (!name.isEmpty())
        element += " Type=\"" + fdxEscapedValue(QString::fromUtf8(name)) + '"';
    return element + '>' + (isOwn ? sceneProperties(format, fdxNewLine(m_tree)) : QByteArray())
        + newRuns(index, type) + "</Paragraph>";
}

QByteArray FdxWriter::newRuns(int index, FdxType &type) const
{
    QByteArray elements;
    FdxLook last;
    QString text;
    const auto flush = [&] {
        if (!text.isEmpty())
            elements += "<Text" + fdxRunAttributes(last, type) + '>'
                + fdxEscaped(text, fdxNewLine(m_tree)) + "</Text>";
        text.clear();
    };
    const QVector<NewNote> notes = m_newIn.value(index);
    int next = 0; // of them
    int offset = 0;
    const QVector<FdxNewRun> runs = m_match.entries[index].runs();
    for (const FdxNewRun &run : runs) {
        const FdxLook look = type.look.with(run.format);
        if (look != last)
            flush();
        last = look;
        for (const QChar character : run.text) {
            for (; next < notes.size() && notes[next].offset <= offset; ++next) {
                flush();
                elements += notes[next].element;
            }
            text += character;
            ++offset;
        }
    }
    flush();
    for (; next < notes.size(); ++next)
        elements += notes[next].element;
    return elements;
}
