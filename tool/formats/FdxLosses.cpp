// SPDX-License-Identifier: MIT
#include <tool/formats/FdxLosses.h>

#include <tool/Messages.h>

#include <QVector>
#include <QXmlStreamReader>

namespace {

/*! An element whose text counts as one loss. */
struct LossKind
{
    const char *parent; // enclosing element, at any distance
    const char *element;
    int FdxLosses::*counter;
};

constexpr LossKind lossKinds[] = {
    {"ScriptNotes", "ScriptNote", &FdxLosses::detachedNotes},
    {"UnanchoredScriptNotes", "ScriptNote", &FdxLosses::detachedNotes},
    {"AltCollection", "Alt", &FdxLosses::alternates},
    {"OmittedScene", "Paragraph", &FdxLosses::omittedParagraphs},
    {"SceneProperties", "Summary", &FdxLosses::summaries},
};

const LossKind *lossKind(const QVector<QString> &path)
{
    for (const LossKind &kind : lossKinds) {
        if (path.last() == QLatin1String(kind.element) && path.contains(QLatin1String(kind.parent)))
            return &kind;
    }
    return nullptr;
}

}

QStringList FdxLosses::toWords() const
{
    QStringList words;
    if (detachedNotes > 0)
        words << counted(detachedNotes, "note kept beside the script",
                         "notes kept beside the script");
    if (alternates > 0)
        words << counted(alternates, "alternate", "alternates");
    if (omittedParagraphs > 0)
        words << counted(omittedParagraphs, "paragraph of omitted scenes",
                         "paragraphs of omitted scenes");
    if (summaries > 0)
        words << counted(summaries, "scene summary", "scene summaries");
    return words;
}

FdxLosses countFdxLosses(const QByteArray &fdx)
{
    FdxLosses losses;
    QXmlStreamReader xml(fdx);
    QVector<QString> path;
    const LossKind *open = nullptr; // the outermost loss around the current place
    int openDepth = 0;
    bool hasText = false;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            path.append(xml.name().toString());
            if (!open && (open = lossKind(path))) {
                openDepth = path.size();
                hasText = false;
            }
            break;
        case QXmlStreamReader::Characters:
            hasText = hasText || !xml.isWhitespace();
            break;
        case QXmlStreamReader::EndElement:
            if (open && path.size() == openDepth) {
                losses.*(open->counter) += hasText ? 1 : 0;
                open = nullptr;
            }
            path.removeLast();
            break;
        default:
            break;
        }
    }
    return losses;
}
