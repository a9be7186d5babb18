// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxLeftOut_p.h>

using MVRFinalDraft::LeftOut;

namespace {

/*! An element whose text counts as one piece that is left out. */
struct Kind
{
    const char *parent;
    const char *element;
    int LeftOut::*counter;
};

constexpr Kind kinds[] = {
    {"AltCollection", "Alt", &LeftOut::alternates},
    {"OmittedScene", "Paragraph", &LeftOut::omittedParagraphs},
    {"SceneProperties", "Summary", &LeftOut::summaries},
    {"SceneArcBeats", "CharacterArcBeat", &LeftOut::characterBeats},
    {"HeaderAndFooter", "Header", &LeftOut::headers},
    {"HeaderAndFooter", "Footer", &LeftOut::headers},
    {"ListItems", "ListItem", &LeftOut::beats},
};

bool hasText(const FdxTree &tree, const FdxElement &element)
{
    return !fdxParagraphsText(tree, element).trimmed().isEmpty();
}

// Nested calls go down the tree, which is shallow.
void count(const FdxTree &tree, const FdxElement &parent, LeftOut *leftOut)
{
    for (const FdxElement &child : parent.children()) {
        if (child.isNamed("SceneProperties") && !child.attribute("Title").value().isEmpty())
            ++leftOut->sceneTitles;
        const Kind *found = nullptr;
        for (const Kind &kind : kinds) {
            if (child.isNamed(kind.element) && parent.isNamed(kind.parent))
                found = &kind;
        }
        if (!found)
            count(tree, child, leftOut);
        else if (hasText(tree, child))
            ++(leftOut->*(found->counter));
    }
}

}

LeftOut fdxLeftOut(const FdxScript &script, const QVector<FdxNote> &notes)
{
    const FdxTree &tree = script.tree();
    LeftOut leftOut;
    for (const FdxParagraph &paragraph : script.paragraphs()) {
        for (const FdxElement &run : paragraph.node.children("Text")) {
            if (!run.attribute("Style").value().contains("HiddenText"))
                continue;
            const FdxTree::Span span = tree.span(run);
            leftOut.hiddenTexts += span.innerStart < span.innerEnd ? 1 : 0;
        }
    }
    count(tree, tree.root(), &leftOut);
    for (const FdxNote &note : notes)
        leftOut.detachedNotes
            += !note.isAttached() && !note.isRemoved && hasText(tree, note.node) ? 1 : 0;
    return leftOut;
}
