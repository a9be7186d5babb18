// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxScript_p.h>

#include <finaldraft/file/FdxStandards_p.h>
#include <finaldraft/file/FdxText_p.h>

#include <algorithm>

using MVRFinalDraft::ElementSettings;
using MVRFinalDraft::ParagraphAttr;

namespace {

constexpr double standardMargin = 72.0; // points
const char generalType[] = "General"; // of a paragraph that names none

// Types of its own look like General in a file that has no settings for them.
ElementSettings standardSettings(const QByteArray &type, double margin)
{
    ElementSettings settings = fdxStandardSettings(QString::fromUtf8(type), MVRFinalDraft::General);
    fdxCountFromMargin(&settings, margin);
    return settings;
}

QByteArray shapeKey(const FdxElement &paragraph)
{
    QByteArray key;
    for (const FdxSourceAttribute &attribute : paragraph.attributes()) {
        if (fdxIsShapeAttribute(attribute))
            key += attribute.name() + '=' + attribute.value() + '\n';
    }
    return key;
}

// Nested calls go down the tree, which is shallow.
void appendParagraphTexts(const FdxTree &tree, const FdxElement &element, QStringList *texts)
{
    for (const FdxElement &child : element.children()) {
        if (child.isNamed("Paragraph"))
            texts->append(QString());
        if (child.isNamed("Text")) {
            const FdxTree::Span span = tree.span(child);
            if (texts->isEmpty())
                texts->append(QString());
            texts->last() += fdxPlainText(tree.source(), span.innerStart, span.innerEnd);
        } else {
            appendParagraphTexts(tree, child, texts);
        }
    }
}

bool isBlank(const QString &text)
{
    return text.trimmed().isEmpty();
}

}

FdxScript::FdxScript(const FdxTree &tree)
    : m_tree(tree)
{
    const FdxElement root = tree.root();
    for (const FdxElement &titlePage : root.children("TitlePage")) {
        for (const FdxElement &content : titlePage.children("Content"))
            addContainer(content, -1, true);
    }
    for (const FdxElement &content : root.children("Content"))
        addContainer(content, -1, false);
    for (const FdxElement &settings : root.children("ElementSettings"))
        m_settings.insert(settings.attribute("Type").value(), settings);
    setView({}, standardMargin);
}

// Nested calls go down the tree, which is shallow.
void FdxScript::addContainer(const FdxElement &node, int wrapper, bool isTitlePage)
{
    const int container = m_containers.size();
    FdxContainer added;
    added.node = node;
    added.isTitlePage = isTitlePage;
    added.wrapper = wrapper;
    m_containers.append(added);
    for (const FdxElement &child : node.children("Paragraph")) {
        FdxParagraph paragraph;
        paragraph.node = child;
        paragraph.container = container;
        paragraph.isWrapper = bool(child.child("DualDialogue"));
        const int index = m_paragraphs.size();
        m_paragraphs.append(paragraph);
        if (!paragraph.isWrapper)
            continue;
        m_paragraphs[index].hasBlock = !isBlank(text(index));
        for (const FdxElement &dual : child.children("DualDialogue"))
            addContainer(dual, index, isTitlePage);
    }
}

QVector<FdxRun> FdxScript::runs(int paragraph) const
{
    return runs(m_paragraphs[paragraph].node);
}

QVector<FdxRun> FdxScript::runs(const FdxElement &paragraph) const
{
    QVector<FdxRun> runs;
    for (const FdxElement &child : paragraph.children("Text")) {
        const FdxTree::Span span = m_tree.span(child);
        runs.append({child, span.innerStart, span.innerEnd});
    }
    return runs;
}

QString FdxScript::text(const FdxRun &run) const
{
    return fdxText(m_tree.source(), run.textStart, run.textEnd);
}

QString FdxScript::text(int paragraph) const
{
    QString text;
    const QVector<FdxRun> all = runs(paragraph);
    for (const FdxRun &run : all)
        text += this->text(run);
    return text;
}

bool FdxScript::hasText(int paragraph, QStringView text) const
{
    int place = 0;
    for (const FdxElement &run : m_paragraphs[paragraph].node.children("Text")) {
        const FdxTree::Span span = m_tree.span(run);
        const int length
            = fdxPrefixLength(m_tree.source(), span.innerStart, span.innerEnd, text.mid(place));
        if (length < 0)
            return false;
        place += length;
    }
    return place == text.size();
}

QString FdxScript::plainText(int paragraph) const
{
    QString text;
    const QVector<FdxRun> all = runs(paragraph);
    for (const FdxRun &run : all)
        text += fdxPlainText(m_tree.source(), run.textStart, run.textEnd);
    return text;
}

void FdxScript::setView(const QList<MVRScriptElement> &elements, double margin)
{
    m_elements = elements;
    m_margin = margin;
    m_types.clear();
    m_titleTypes.clear();
    m_charFormats.clear();
}

QByteArray FdxScript::typeName(int paragraph) const
{
    return m_paragraphs[paragraph].node.attribute("Type").value();
}

FdxType &FdxScript::type(const QByteArray &name, bool isTitlePage)
{
    std::shared_ptr<FdxType> &known = (isTitlePage ? m_titleTypes : m_types)[name];
    if (known)
        return *known;
    known = std::make_shared<FdxType>();
    FdxType &type = *known;
    // Final Draft shows a paragraph without a type as a general one.
    type.name = QString::fromUtf8(name.isEmpty() && !isTitlePage ? generalType : name.constData());
    const Settings found = settings(type.name.toUtf8(), isTitlePage);
    const auto element = std::find_if(
        m_elements.cbegin(), m_elements.cend(), [&type](const MVRScriptElement &candidate) {
            return !type.name.isEmpty() && candidate.name() == type.name;
        });
    if (element != m_elements.cend())
        type.element = *element;
    FdxRunStyle plain;
    plain.format = charFormat(found.look, found.look, type.element);
    plain.look = found.look.with(plain.format);
    type.look = found.look;
    type.plain = plain;
    type.shape = found.shape;
    type.plainParagraph.format = blockFormat(type, found.shape);
    type.plainParagraph.shape = fdxShape(type.plainParagraph.format, found.shape);
    return type;
}

const FdxRunStyle &FdxScript::runStyle(FdxType &type, const FdxElement &run) const
{
    if (!run.firstAttribute())
        return type.plain;
    const int start = m_tree.start(run);
    const QByteArray key = m_tree.slice(start, m_tree.tagEnd(run));
    if (const std::shared_ptr<FdxRunStyle> known = type.runs.value(key))
        return *known;
    const auto made = std::make_shared<FdxRunStyle>();
    FdxRunStyle &style = *made;
    FdxLook look = type.look.with(run);
    if (!m_fonts.take(look.font))
        look.font = type.look.font;
    style.format = charFormat(look, type.look, type.element);
    style.look = type.look.with(style.format);
    type.runs.insert(QByteArray(key.constData(), key.size()), made);
    return style;
}

// Types mostly look the same. A document compares formats that share their data in no time.
QTextCharFormat FdxScript::charFormat(const FdxLook &look, const FdxLook &base,
                                      const MVRScriptElement &element) const
{
    constexpr int most = 16; // looked through for each new one
    QTextCharFormat format = look.toCharFormat(base);
    format.merge(element.charFormat());
    for (const QTextCharFormat &known : qAsConst(m_charFormats)) {
        if (known == format)
            return known;
    }
    if (m_charFormats.size() < most)
        m_charFormats.append(format);
    return format;
}

const FdxParagraphStyle &FdxScript::paragraphStyle(FdxType &type, const FdxElement &paragraph) const
{
    const QByteArray key = shapeKey(paragraph);
    if (key.isEmpty())
        return type.plainParagraph;
    if (const std::shared_ptr<FdxParagraphStyle> known = type.paragraphs.value(key))
        return *known;
    ParagraphAttr shape = type.shape;
    fdxReadShape(paragraph, m_margin, &shape);
    const auto made = std::make_shared<FdxParagraphStyle>();
    made->format = blockFormat(type, shape);
    made->shape = fdxShape(made->format, shape);
    type.paragraphs.insert(key, made);
    return *made;
}

QTextBlockFormat FdxScript::blockFormat(const FdxType &type, const ParagraphAttr &shape) const
{
    QTextBlockFormat format = shape.toBlockFormat();
    format.merge(type.element.blockFormat());
    if (!type.name.isEmpty())
        format.setProperty(MVRScriptElement::NameProperty, type.name);
    return format;
}

FdxScript::Settings FdxScript::settings(const QByteArray &type, bool isTitlePage) const
{
    const QByteArray name = type.isEmpty() ? QByteArray(generalType) : type;
    const ElementSettings standard = standardSettings(name, m_margin);
    Settings settings;
    settings.shape = standard.paragraphSpec;
    settings.look.style |= int(standard.fontSpec.style);
    const FdxElement element = m_settings.value(name);
    settings.look = settings.look.with(element.child("FontSpec"));
    fdxReadShape(element.child("ParagraphSpec"), m_margin, &settings.shape);
    if (isTitlePage)
        settings.look.style = 0;
    return settings;
}

QHash<QString, ElementSettings> FdxScript::settings() const
{
    QHash<QString, ElementSettings> all;
    for (auto entry = m_settings.cbegin(); entry != m_settings.cend(); ++entry) {
        ElementSettings settings = standardSettings(entry.key(), standardMargin);
        const FdxLook look = FdxLook().with(entry->child("FontSpec"));
        settings.fontSpec.font = look.font;
        settings.fontSpec.size = look.size;
        settings.fontSpec.color = look.color;
        settings.fontSpec.background = look.background;
        settings.fontSpec.style = QFlags<MVRFinalDraft::FontStyleFlag>(QFlag(look.style & 0x7f));
        fdxReadShape(entry->child("ParagraphSpec"), standardMargin, &settings.paragraphSpec);
        const FdxElement behavior = entry->child("Behavior");
        settings.paginateAs = MVRFinalDraft::toElementType(fdxAttribute(behavior, "PaginateAs"));
        settings.returnKey = MVRFinalDraft::toElementType(fdxAttribute(behavior, "ReturnKey"));
        settings.shortcut = fdxAttribute(behavior, "Shortcut");
        all.insert(settings.type, settings);
    }
    return all;
}

QStringList fdxParagraphTexts(const FdxTree &tree, const FdxElement &element)
{
    QStringList texts;
    appendParagraphTexts(tree, element, &texts);
    return texts;
}

QString fdxParagraphsText(const FdxTree &tree, const FdxElement &element)
{
    return fdxParagraphTexts(tree, element).join(QLatin1Char('\n'));
}
