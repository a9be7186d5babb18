// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxDocument_p.h>
#include <finaldraft/file/FdxText_p.h>
#include <finaldraft/file/FdxWriter_p.h>

#include <core/MVRParagraphView.h>

using MVRFinalDraft::ParagraphAttr;
using File = MVRFinalDraftFile;

// What of a paragraph is as the file has it, in attributes, text and looks.

namespace {

const char actionType[] = "Action";

}

/*! The name of the type that a block without a name has the shape of. */
QByteArray FdxWriter::shapeName(const FdxEntry &entry) const
{
    for (const MVRScriptElement &element : m_elements) {
        if (!element.name().isEmpty()
            && MVRScriptElement::equal(element.blockFormat(),
                                       MVRParagraphView::ownFormat(entry.block.blockFormat())))
            return element.name().toUtf8();
    }
    return actionType;
}

QByteArray FdxWriter::newTypeName(const FdxEntry &entry) const
{
    const bool isTitlePage
        = entry.container >= 0 && m_script.containers().value(entry.container).isTitlePage;
    const QTextBlockFormat format = MVRParagraphView::ownFormat(entry.block.blockFormat());
    const QByteArray oldName = entry.source >= 0 ? m_script.typeName(entry.source) : QByteArray();
    if (!format.hasProperty(MVRScriptElement::NameProperty)) {
        if (entry.source >= 0)
            return oldName;
        return isTitlePage ? QByteArray() : shapeName(entry);
    }
    const QByteArray name = format.stringProperty(MVRScriptElement::NameProperty).toUtf8();
    // A paragraph without a type is shown as a general one and stays without.
    return name == "General" && entry.source >= 0 && oldName.isEmpty() ? oldName : name;
}

/*! What the format of an entry's block says; the same for all with that format and start tag. */
const FdxWriter::Shown &FdxWriter::shown(const FdxEntry &entry)
{
    const bool isTitlePage = m_script.containers().value(entry.container).isTitlePage;
    ShownKey key {entry.block.blockFormatIndex(), isTitlePage, false, {}};
    if (entry.source >= 0) {
        const FdxElement &node = m_script.paragraphs()[entry.source].node;
        const int start = m_tree.start(node);
        key.wasTitlePage = m_script.isTitlePage(entry.source);
        key.tag = {m_tree.source().constData() + start, size_t(m_tree.tagEnd(node) - start)};
    }
    const auto known = m_shown.find(key);
    if (known != m_shown.end())
        return known->second;
    Shown &shown = m_shown[key];
    shown.typeName = newTypeName(entry);
    shown.type = &m_script.type(shown.typeName, isTitlePage);
    if (entry.source >= 0) {
        shown.oldType = &m_script.typeOf(entry.source);
        shown.isAsInFile = attributeSplices(entry).isEmpty();
    }
    return shown;
}

/*! The attributes of an element that its block has otherwise. */
FdxSplices FdxWriter::attributeSplices(const FdxEntry &entry)
{
    const FdxElement &node = m_script.paragraphs()[entry.source].node;
    FdxSplices splices;
    const QByteArray &name = shown(entry).typeName;
    if (name != m_script.typeName(entry.source))
        addAttribute(node, "Type", name, &splices);
    addShape(entry, *shown(entry).type, &splices);
    const QTextBlockFormat format = MVRParagraphView::ownFormat(entry.block.blockFormat());
    for (const FdxBlockAttribute &row : fdxParagraphAttributes) {
        const bool isWritten = row.property != File::BookmarkProperty;
        const QByteArray value = format.stringProperty(row.property).toUtf8();
        if (isWritten && format.hasProperty(row.property)
            && value != node.attribute(row.name).value())
            addAttribute(node, row.name, value, &splices);
    }
    return splices;
}

void FdxWriter::addAttribute(const FdxElement &element, const char *name, const QByteArray &value,
                             FdxSplices *splices) const
{
    const QByteArray text = fdxEscapedValue(QString::fromUtf8(value));
    if (const FdxSourceAttribute attribute = element.attribute(name)) {
        splices->append({attribute.valueStart(), attribute.valueEnd(), text});
        return;
    }
    int place = m_tree.start(element) + 1 + element.name().size();
    for (const FdxSourceAttribute &attribute : element.attributes())
        place = attribute.valueEnd() + 1;
    splices->append({place, place, QByteArray(" ") + name + "=\"" + text + '"'});
}

/*! Formatting that is neither what the file says nor what the new type says goes out. */
void FdxWriter::addShape(const FdxEntry &entry, FdxType &type, FdxSplices *splices)
{
    const FdxElement &node = m_script.paragraphs()[entry.source].node;
    const QTextBlockFormat format = MVRParagraphView::ownFormat(entry.block.blockFormat());
    FdxType &oldType = m_script.typeOf(entry.source);
    const ParagraphAttr &before = m_script.paragraphStyle(oldType, node).shape;
    if (fdxIsSameShape(fdxShape(format, before), before))
        return;
    const ParagraphAttr &inNewType = m_script.paragraphStyle(type, node).shape;
    const QVector<FdxAttribute> attributes
        = fdxShapeAttributes(fdxShape(format, inNewType), inNewType, m_script.margin());
    for (const FdxAttribute &attribute : attributes)
        addAttribute(node, attribute.name, attribute.value, splices);
}

void FdxWriter::compareParagraphs()
{
    for (int i = 0; i < m_match.entries.size(); ++i) {
        const FdxEntry &entry = m_match.entries[i];
        if (entry.source < 0 || isAsInFile(entry))
            continue;
        const FdxTextDiff diff = runEdit(entry).diff();
        if (!diff.isSame())
            m_diffs.insert(i, diff);
    }
}

/*! Whether text and looks are plainly those of the file; false when that takes more to tell. */
bool FdxWriter::isAsInFile(const FdxEntry &entry)
{
    const Shown &shown = this->shown(entry);
    if (!entry.isPlain || shown.type != shown.oldType
        || !(entry.textOf == entry.source || m_script.hasText(entry.source, entry.text())))
        return false;
    QTextBlock::iterator fragment = entry.block.begin();
    int behind = 0; // end of the fragment, counted as the runs are
    int position = 0;
    for (const FdxElement &run : m_script.paragraphs()[entry.source].node.children("Text")) {
        const FdxTree::Span span = m_tree.span(run);
        const int end = position + fdxTextLength(m_tree.source(), span.innerStart, span.innerEnd);
        const FdxRunStyle &style = m_script.runStyle(*shown.type, run);
        while (position < end) {
            if (behind == position)
                behind += fragment.fragment().length();
            if (!isShownAs(fragment.fragment(), *shown.type, style))
                return false;
            position = qMin(end, behind);
            if (position == behind)
                ++fragment;
        }
    }
    return true;
}

bool FdxWriter::isShownAs(const QTextFragment &fragment, const FdxType &type,
                          const FdxRunStyle &style)
{
    const int index = fragment.charFormatIndex();
    if (m_sameStyle == &style && m_sameFormat == index)
        return true;
    const QTextCharFormat format = fragment.charFormat();
    if (format != style.format && type.look.with(format) != style.look)
        return false;
    m_sameStyle = &style;
    m_sameFormat = index;
    return true;
}

FdxTextDiff FdxWriter::diff(int entry) const
{
    const int length = m_match.entries[entry].length;
    return m_diffs.value(entry, {length, 0, length, length});
}

FdxRunEdit FdxWriter::runEdit(const FdxEntry &entry)
{
    const Shown &shown = this->shown(entry);
    // Runs that say nothing of their style keep saying nothing when the type changes. On the title
    // page, though, no type counts.
    const bool keepsPage = m_script.isTitlePage(entry.source)
        == m_script.containers().value(entry.container).isTitlePage;
    return FdxRunEdit(m_script, m_script.paragraphs()[entry.source].node,
                      keepsPage ? *shown.oldType : *shown.type, *shown.type, entry.runs());
}
