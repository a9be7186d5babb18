// SPDX-License-Identifier: MIT
#include <finaldraft/LeftOut_p.h>

#include <QDomElement>
#include <QStringList>

using MVRFinalDraft::LeftOut;

namespace {

/*! An element whose text counts as one piece that is left out. */
struct Kind
{
    const char *ancestor; // enclosing element, at any distance
    const char *element;
    int LeftOut::*counter;
};

constexpr Kind kinds[] = {
    {"ScriptNotes", "ScriptNote", &LeftOut::detachedNotes},
    {"UnanchoredScriptNotes", "ScriptNote", &LeftOut::detachedNotes},
    {"AltCollection", "Alt", &LeftOut::alternates},
    {"OmittedScene", "Paragraph", &LeftOut::omittedParagraphs},
    {"SceneProperties", "Summary", &LeftOut::summaries},
};

const Kind *kindOf(const QStringList &path)
{
    for (const Kind &kind : kinds) {
        if (path.last() == QLatin1String(kind.element)
            && path.contains(QLatin1String(kind.ancestor)))
            return &kind;
    }
    return nullptr;
}

bool hasText(const QDomElement &element)
{
    return !element.text().trimmed().isEmpty();
}

/*! The element behind \a element that is not inside it; \a path leads to its parent then. */
QDomElement behind(QDomElement element, QStringList *path)
{
    while (!path->isEmpty()) {
        path->removeLast();
        const QDomElement next = element.nextSiblingElement();
        if (!next.isNull())
            return next;
        element = element.parentNode().toElement();
    }
    return QDomElement();
}

}

LeftOut leftOutOf(const QDomElement &root)
{
    LeftOut leftOut;
    QStringList path;
    for (QDomElement element = root; !element.isNull();) {
        path.append(element.tagName());
        const Kind *kind = kindOf(path);
        if (kind && hasText(element))
            ++(leftOut.*(kind->counter));
        const QDomElement child = kind ? QDomElement() : element.firstChildElement();
        element = child.isNull() ? behind(element, &path) : child;
    }
    return leftOut;
}
