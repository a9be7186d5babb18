// SPDX-License-Identifier: MIT
#include <pages/FdxScreenplay_p.h>

#include <core/MVRDomDoc.h>
#include <finaldraft/MVRFinalDraftFile.h>

#include <QBuffer>

using namespace MVRFinalDraft;

namespace {

const QLatin1String hiddenStyle("HiddenText");

QString attribute(const QDomElement &element, const char *name)
{
    return element.attribute(QString::fromLatin1(name));
}

bool isHidden(const QDomElement &look)
{
    return attribute(look, "Style").split(QLatin1Char('+')).contains(hiddenStyle);
}

/*! Whether a paragraph has text of its own, beside the dual dialogue that it holds. */
bool hasText(const QDomElement &paragraph)
{
    const QString tag = QStringLiteral("Text");
    for (QDomElement run = paragraph.firstChildElement(tag); !run.isNull();
         run = run.nextSiblingElement(tag)) {
        if (!run.text().trimmed().isEmpty())
            return true;
    }
    return false;
}

// Text that is hidden to its last letter leaves no empty line either.
bool isHiddenWhole(const QDomElement &paragraph)
{
    bool hasText = false;
    const QString tag = QStringLiteral("Text");
    for (QDomElement run = paragraph.firstChildElement(tag); !run.isNull();
         run = run.nextSiblingElement(tag)) {
        if (run.text().isEmpty())
            continue;
        if (!isHidden(run))
            return false;
        hasText = true;
    }
    return hasText;
}

void readTabStops(const QDomElement &element, MVRScreenplayParagraph &paragraph)
{
    const QString tag = QStringLiteral("Tabstop");
    QDomElement stop = element.firstChildElement(QStringLiteral("Tabstops")).firstChildElement(tag);
    for (; !stop.isNull(); stop = stop.nextSiblingElement(tag)) {
        MVRScreenplayTabStop read;
        MVRDomDoc::getAttr(QStringLiteral("Position"), &read.position, stop);
        const QString kind = attribute(stop, "Type");
        if (kind == QLatin1String("Center"))
            read.kind = MVRScreenplayTabStop::Center;
        else if (kind == QLatin1String("Right"))
            read.kind = MVRScreenplayTabStop::Right;
        paragraph.tabStops.append(read);
    }
}

void readRun(const QDomElement &element, const FdxElement &model, MVRScreenplayParagraph &paragraph)
{
    if (isHidden(element))
        return;
    MVRScreenplayRun run;
    run.text = element.text();
    run.attr = model.settings.fontSpec;
    readFdxLook(element, &run.attr);
    if (element.tagName() == QLatin1String("DynamicLabel")) {
        run.text.clear();
        run.label = attribute(element, "Type");
    }
    paragraph.runs.append(run);
}

/*! Reads the paragraphs of a script or of a title page. */
class ParagraphReader
{
public:
    ParagraphReader(const FdxElements &elements, QVector<MVRScreenplayParagraph> *paragraphs)
        : m_elements(elements)
        , m_paragraphs(paragraphs)
    {
    }

    void read(const QDomElement &content, int dual = 0);

private:
    void readParagraph(const QDomElement &element, int dual);

    const FdxElements &m_elements;
    QVector<MVRScreenplayParagraph> *m_paragraphs;
    int m_dual = 0;
    int m_source = 0;
};

// Nested calls go down the tree, which MVRDomDoc keeps shallow.
void ParagraphReader::read(const QDomElement &content, int dual)
{
    const QString tag = QStringLiteral("Paragraph");
    const QString dualTag = QStringLiteral("DualDialogue");
    for (QDomElement element = content.firstChildElement(tag); !element.isNull();
         element = element.nextSiblingElement(tag)) {
        QDomElement part = element.firstChildElement(dualTag);
        if (part.isNull() || hasText(element))
            readParagraph(element, dual);
        if (part.isNull())
            continue;
        const int inner = dual == 0 ? ++m_dual : dual;
        for (; !part.isNull(); part = part.nextSiblingElement(dualTag))
            read(part, inner);
    }
}

void ParagraphReader::readParagraph(const QDomElement &element, int dual)
{
    const FdxElement model = findFdxElement(m_elements, attribute(element, "Type"));
    if (!model.isHidden && !isHiddenWhole(element)) {
        MVRScreenplayParagraph paragraph = readFdxParagraph(element, model);
        paragraph.dualDialogue = dual;
        paragraph.source = m_source;
        // A number on anything else is one that the file keeps for itself.
        if (paragraph.paginateAs == SceneHeading)
            paragraph.sceneNumber = attribute(element, "Number").trimmed();
        m_paragraphs->append(paragraph);
    }
    ++m_source;
}

QString firstText(const QVector<MVRScreenplayParagraph> &paragraphs)
{
    for (const MVRScreenplayParagraph &paragraph : paragraphs) {
        QString text;
        for (const MVRScreenplayRun &run : paragraph.runs)
            text += run.text;
        text = text.simplified();
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

void fail(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
}

}

bool isFdxOutline(const QString &type)
{
    static const QStringList others {QStringLiteral("Summary"), QStringLiteral("Note")};
    return type.startsWith(QLatin1String("Outline")) || others.contains(type);
}

void readFdxLook(const QDomElement &element, TextAttr *look)
{
    look->fromDomElement(element);
    // No style is the one that holds so far, an empty one is none.
    if (element.hasAttribute(QStringLiteral("Style")))
        look->style = toFontFlags(attribute(element, "Style"));
}

FdxElement findFdxElement(const FdxElements &elements, const QString &type)
{
    const auto known = elements.constFind(type);
    if (known != elements.constEnd())
        return *known;
    FdxElement element;
    element.settings = MVRScreenplay::standardElement(type);
    const bool isStandard = toElementType(type) != NoElement;
    const QString model = toString(element.settings.paginateAs);
    if (!isStandard && elements.contains(model))
        element = elements.value(model);
    element.settings.type = type;
    element.isHidden = isFdxOutline(type);
    return element;
}

FdxElements readFdxElements(const QDomElement &root)
{
    FdxElements elements;
    const QString tag = QStringLiteral("ElementSettings");
    for (QDomElement entry = root.firstChildElement(tag); !entry.isNull();
         entry = entry.nextSiblingElement(tag)) {
        FdxElement element;
        const QString type = attribute(entry, "Type");
        element.settings = MVRScreenplay::standardElement(type);
        const QDomElement font = entry.firstChildElement(QStringLiteral("FontSpec"));
        readFdxLook(font, &element.settings.fontSpec);
        element.settings.paragraphSpec.fromDomElement(
            entry.firstChildElement(QStringLiteral("ParagraphSpec")), 0.0);
        const QString paginateAs
            = attribute(entry.firstChildElement(QStringLiteral("Behavior")), "PaginateAs");
        if (toElementType(paginateAs) != NoElement)
            element.settings.paginateAs = toElementType(paginateAs);
        element.isHidden = isHidden(font) || isFdxOutline(type)
            || paginateAs.startsWith(QLatin1String("Outline"));
        elements.insert(type, element);
    }
    return elements;
}

MVRScreenplayParagraph readFdxParagraph(const QDomElement &element, const FdxElement &model)
{
    MVRScreenplayParagraph paragraph;
    paragraph.type = model.settings.type;
    paragraph.paginateAs = model.settings.paginateAs;
    paragraph.attr = model.settings.paragraphSpec;
    paragraph.attr.fromDomElement(element, 0.0);
    readTabStops(element, paragraph);
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("Text")
            || child.tagName() == QLatin1String("DynamicLabel"))
            readRun(child, model, paragraph);
    }
    return paragraph;
}

bool MVRScreenplay::fromFinalDraft(MVRFinalDraftFile *file, const QTextDocument *document,
                                   MVRScreenplay *screenplay, QString *error)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    if (!file || !document || !file->write(&buffer, document)) {
        fail(error, QStringLiteral("No Final Draft file can be written."));
        return false;
    }
    buffer.seek(0);
    return fromFinalDraft(&buffer, screenplay, error);
}

bool MVRScreenplay::fromFinalDraft(QIODevice *device, MVRScreenplay *screenplay, QString *error)
{
    MVRDomDoc dom;
    if (!device || !screenplay || !dom.setContent(device)) {
        fail(error, dom.errorString());
        return false;
    }
    const QDomElement root = dom.document().documentElement();
    const QDomElement content = root.firstChildElement(QStringLiteral("Content"));
    if (root.tagName() != QLatin1String("FinalDraft") || content.isNull()) {
        fail(error, QStringLiteral("'/FinalDraft/Content' not found in Final Draft file."));
        return false;
    }
    const FdxElements elements = readFdxElements(root);
    MVRScreenplay read;
    read.settings = readFdxSettings(root);
    const FdxElement action = findFdxElement(elements, toString(Action));
    read.settings.dualLeft = action.settings.paragraphSpec.leftIndent;
    read.settings.dualRight = action.settings.paragraphSpec.rightIndent;
    ParagraphReader(elements, &read.body).read(content);
    // Title pages name no elements; their text stands as it does in General.
    FdxElements plain;
    FdxElement general;
    general.settings = standardElement(toString(General));
    plain.insert(QString(), general);
    plain.insert(toString(General), general);
    ParagraphReader(plain, &read.titlePage)
        .read(root.firstChildElement(QStringLiteral("TitlePage"))
                  .firstChildElement(QStringLiteral("Content")));
    if (firstText(read.titlePage).isEmpty())
        read.titlePage.clear();
    read.title = firstText(read.titlePage);
    *screenplay = read;
    return true;
}
