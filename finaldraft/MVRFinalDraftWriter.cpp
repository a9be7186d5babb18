// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraftWriter.h>

#include <core/MVRDomDoc.h>
#include <core/MVRParagraphView.h>
#include <core/MVRTextFormat.h>

#include <QFile>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

#include <utility>

using MVRFinalDraft::ElementSettings;
using MVRFinalDraft::ParagraphAttr;
using MVRFinalDraft::TextAttr;

namespace {

// Every file is built on this text.
const char fileTemplate[] =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="no" ?>
<FinalDraft DocumentType="Script" Template="No" Version="1">
<Content></Content><ScriptNoteDefinitions>
    <ScriptNoteDefinition Color="#000000000000" ID="1" Marker="!" Name="Important"></ScriptNoteDefinition>
    <ScriptNoteDefinition Color="#000000000000" ID="2" Marker="?" Name="Information"></ScriptNoteDefinition>
    <ScriptNoteDefinition Color="#000000000000" ID="3" Marker="*" Name="Suggestion"></ScriptNoteDefinition>
</ScriptNoteDefinitions>
</FinalDraft>)";

constexpr double defaultPageMargin = 72.0; // points

bool isInlineNote(const MVRFinalDraftWriter::FragmentState &state)
{
    return state.kind == MVRFinalDraftWriter::FragmentState::InlineAnnotation
        || state.kind == MVRFinalDraftWriter::FragmentState::InlineFootnote;
}

QString pageMargin(const QTextDocument &document, const char *property)
{
    const double points = document.dynamicPropertyNames().contains(property)
        ? document.property(property).toDouble()
        : defaultPageMargin;
    return QString::number(qRound(points));
}

}

MVRFinalDraftWriter::MVRFinalDraftWriter() = default;

MVRFinalDraftWriter::~MVRFinalDraftWriter()
{
    clear();
}

void MVRFinalDraftWriter::clear()
{
    m_dom.reset();
}

bool MVRFinalDraftWriter::write(const QString &fileName, const QTextDocument *document,
                                const QList<MVRScriptElement> &elements)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && write(&file, document, elements) && file.flush();
}

bool MVRFinalDraftWriter::write(QIODevice *device, const QTextDocument *document,
                                const QList<MVRScriptElement> &elements)
{
    if (!document || !device || !document->rootFrame())
        return false;
    m_textDocument = document;
    m_elements = elements;
    m_typeNames.clear();
    m_runs.clear();
    m_dom = std::make_unique<MVRDomDoc>();
    m_dom->setContent(QString::fromLatin1(fileTemplate));
    m_dom->cd(QStringLiteral("/FinalDraft/Content"));

    processFrame(*document->rootFrame());
    finalizeFragmentState(m_state, FragmentState());
    writeHeaderFooter();
    writeElementSettings();
    writeTitlePage();
    const bool isSaved = m_dom->save(*device);
    clear();
    return isSaved;
}

bool MVRFinalDraftWriter::processFrame(const QTextFrame &frame)
{
    for (QTextFrame::iterator it = frame.begin(); !it.atEnd(); ++it)
        processFrameIterator(it);
    return true;
}

// Calls itself for frames in frames, as Qt's own walks over a document do.
bool MVRFinalDraftWriter::processFrameIterator(QTextFrame::iterator it)
{
    if (const QTextFrame *frame = it.currentFrame()) {
        if (const auto *table = qobject_cast<const QTextTable *>(frame))
            processTable(*table);
        else
            processFrame(*frame);
    } else if (it.currentBlock().isValid()
               && it.currentBlock().blockNumber() >= m_titlePageBlockCount) {
        processBlock(it.currentBlock());
    }
    return true;
}

bool MVRFinalDraftWriter::processTable(const QTextTable &table)
{
    for (int column = 0; column < table.columns(); ++column) {
        for (int row = 0; row < table.rows(); ++row) {
            const QTextTableCell cell = table.cellAt(row, column);
            for (QTextFrame::iterator it = cell.begin(); !it.atEnd(); ++it)
                processFrameIterator(it);
        }
    }
    return true;
}

bool MVRFinalDraftWriter::processBlock(const QTextBlock &block)
{
    if (!block.isValid() || !m_dom)
        return false;
    const QTextBlockFormat format = MVRParagraphView::ownFormat(block.blockFormat());
    // A note that begins or ends with the paragraph does so around it.
    if (!block.begin().atEnd())
        enterState(toFragmentState(block.begin().fragment().charFormat()), format);

    m_dom->create(QStringLiteral("Paragraph"));
    m_dom->setAttr(QStringLiteral("Type"), typeName(block), QString(), true);
    if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
        m_dom->setAttr(QStringLiteral("StartsNewPage"), "Yes", QString(), true);
    writeRuns(block);
    m_dom->cdUp(1);
    return true;
}

void MVRFinalDraftWriter::writeRuns(const QTextBlock &block)
{
    QString splitPair;
    for (QTextBlock::iterator it = block.begin(); !it.atEnd();) {
        const QTextFragment fragment = it.fragment();
        ++it;
        QString text = splitPair + fragment.text();
        // A format can begin in the middle of a surrogate pair; XML holds only whole ones.
        const bool endsInPair = !it.atEnd() && text.at(text.size() - 1).isHighSurrogate();
        splitPair = endsInPair ? text.right(1) : QString();
        text.chop(splitPair.size());
        if (text.isEmpty())
            continue;
        enterState(toFragmentState(fragment.charFormat()), block.blockFormat());
        run(fragment).toDomDoc(m_dom.get(), text, QStringLiteral("Text"));
    }
}

void MVRFinalDraftWriter::writeTitlePage()
{
    if (m_titlePageBlockCount <= 0 || !m_dom->cd(QStringLiteral("/FinalDraft")))
        return;
    m_dom->create(QStringLiteral("TitlePage"));
    m_dom->create(QStringLiteral("Content"));
    const FragmentState stateOfScript = std::exchange(m_state, FragmentState());
    QTextBlock block = m_textDocument->begin();
    for (int i = 0; i < m_titlePageBlockCount && block.isValid(); ++i, block = block.next())
        writeTitleParagraph(block);
    m_state = stateOfScript;
}

/*! Writes a paragraph that says by itself what it looks like; notes stay inside it. */
void MVRFinalDraftWriter::writeTitleParagraph(const QTextBlock &block)
{
    const QString tag = QStringLiteral("Paragraph");
    const QTextBlockFormat format = MVRParagraphView::ownFormat(block.blockFormat());
    // A paragraph without text was read without a format; it has none to write either.
    if (format.hasProperty(MVRTextFormat::BlockRightIndentProperty)) {
        ParagraphAttr attr;
        attr.fromBlockFormat(format, m_textDocument->documentMargin());
        attr.toDomDoc(m_dom.get(), tag);
        m_dom->setWorkElement(m_dom->currentElement().lastChildElement(tag));
    } else {
        m_dom->create(tag);
    }
    writeRuns(block);
    enterState(FragmentState(), format);
    m_dom->cdUp(1);
}

/*! The record of a run; runs of one format share it. */
TextAttr MVRFinalDraftWriter::run(const QTextFragment &fragment)
{
    auto known = m_runs.find(fragment.charFormatIndex());
    if (known == m_runs.end()) {
        TextAttr attr;
        attr.fromCharFormat(fragment.charFormat(), docDefaultBackground());
        known = m_runs.insert(fragment.charFormatIndex(), attr);
    }
    return *known;
}

/*! The type of a paragraph; paragraphs of one format share it. */
QString MVRFinalDraftWriter::typeName(const QTextBlock &block)
{
    auto known = m_typeNames.find(block.blockFormatIndex());
    if (known == m_typeNames.end()) {
        known = m_typeNames.insert(
            block.blockFormatIndex(),
            findScriptElementName(MVRParagraphView::ownFormat(block.blockFormat())));
    }
    return *known;
}

/*! The element of that name that has the shape of the format, else the first of that name. */
const MVRScriptElement *MVRFinalDraftWriter::elementOfName(const QString &name,
                                                           const QTextBlockFormat &format) const
{
    const MVRScriptElement *first = nullptr;
    for (const MVRScriptElement &element : m_elements) {
        if (element.name() != name)
            continue;
        if (MVRScriptElement::equal(element.blockFormat(), format))
            return &element;
        if (!first)
            first = &element;
    }
    return first;
}

MVRScriptElement MVRFinalDraftWriter::findScriptElement(const QTextBlockFormat &format) const
{
    const QString name = m_elementChoice == ChooseByName
        ? format.stringProperty(MVRScriptElement::NameProperty)
        : QString();
    const MVRScriptElement *named = name.isEmpty() ? nullptr : elementOfName(name, format);
    if (named && MVRScriptElement::equal(named->blockFormat(), format))
        return *named;
    for (const MVRScriptElement &element : m_elements) {
        if (MVRScriptElement::equal(element.blockFormat(), format))
            return element;
    }
    return named ? *named : MVRScriptElement();
}

QString MVRFinalDraftWriter::findScriptElementName(const QTextBlockFormat &format) const
{
    const QString name = findScriptElement(format).name();
    return name.isEmpty() ? QStringLiteral("Action") : name;
}

MVRFinalDraftWriter::FragmentState
MVRFinalDraftWriter::toFragmentState(const QTextCharFormat &format)
{
    const auto noteData
        = [&] { return format.property(MVRTextFormat::CommentCDataProperty).toByteArray(); };
    if (format.boolProperty(MVRTextFormat::InlineAnnotationProperty))
        return {FragmentState::InlineAnnotation, QByteArray()};
    if (format.boolProperty(MVRTextFormat::InlineFootnoteProperty))
        return {FragmentState::InlineFootnote, QByteArray()};
    if (format.boolProperty(MVRTextFormat::InspectorFootnoteProperty))
        return {FragmentState::InspectorFootnote, noteData()};
    if (format.boolProperty(MVRTextFormat::InspectorCommentProperty))
        return {FragmentState::InspectorComment, noteData()};
    return FragmentState();
}

void MVRFinalDraftWriter::enterState(const FragmentState &state,
                                     const QTextBlockFormat &blockFormat)
{
    if (state == m_state)
        return;
    finalizeFragmentState(m_state, state);
    startFragmentState(state, blockFormat);
    m_state = state;
}

void MVRFinalDraftWriter::startFragmentState(FragmentState state,
                                             const QTextBlockFormat &blockFormat)
{
    if (!m_dom || !isInlineNote(state))
        return;
    const QString paragraphTag = QStringLiteral("Paragraph");
    m_dom->create(QStringLiteral("ScriptNote"));
    m_dom->setAttr(QStringLiteral("ID"), "1", QString(), true);
    ParagraphAttr attr;
    attr.fromBlockFormat(blockFormat, 0.0);
    attr.toDomDoc(m_dom.get(), paragraphTag);
    m_dom->cd(paragraphTag);
}

void MVRFinalDraftWriter::finalizeFragmentState(FragmentState previous, FragmentState)
{
    if (m_dom && isInlineNote(previous))
        m_dom->cdUp(2);
}

bool MVRFinalDraftWriter::writeElementSettings()
{
    if (!m_dom || !m_dom->cd(QStringLiteral("/FinalDraft")))
        return false;
    for (int i = 0; i < m_elements.size(); ++i) {
        const MVRScriptElement &element = m_elements.at(i);
        if (element.name().isEmpty())
            continue;
        ElementSettings settings;
        const MVRFinalDraft::ElementType type = MVRFinalDraft::toElementType(element.name());
        if (type != MVRFinalDraft::NoElement)
            settings.applyFdxAppDefaults(type);
        settings.type = element.name();
        settings.fromBlockFormat(element.blockFormat(), m_textDocument->documentMargin());
        settings.fromCharFormat(element.charFormat(), docDefaultBackground());
        settings.shortcut = QString::number(i);
        settings.toDomDoc(m_dom.get());
    }
    return true;
}

void MVRFinalDraftWriter::writePageLayout()
{
    if (!m_dom || !m_textDocument || !m_dom->cd(QStringLiteral("/FinalDraft")))
        return;
    QColor background = docDefaultBackground();
    QColor foreground = docDefaultForeground();
    if (!background.isValid() || !foreground.isValid() || background == foreground) {
        background = Qt::white;
        foreground = Qt::black;
    }
    const std::pair<const char *, QString> attributes[] = {
        {"BackgroundColor", MVRFinalDraft::toString(background)},
        {"ForegroundColor", MVRFinalDraft::toString(foreground)},
        {"InvisiblesColor", QStringLiteral("#808080808080")},
        {"TopMargin", pageMargin(*m_textDocument, "topMargin")},
        {"BottomMargin", pageMargin(*m_textDocument, "bottomMargin")},
        {"HeaderMargin", QStringLiteral("36")},
        {"FooterMargin", QStringLiteral("36")},
        {"BreakDialogueAndActionAtSentences", QStringLiteral("Yes")},
        {"DocumentLeading", QStringLiteral("Normal")},
        {"UsesSmartQuotes", QStringLiteral("Yes")},
    };
    m_dom->create(QStringLiteral("PageLayout"));
    for (const auto &attribute : attributes)
        m_dom->setAttr(QLatin1String(attribute.first), attribute.second, QString(), true);
    m_dom->cdUp(1);
}

void MVRFinalDraftWriter::writeHeaderFooter() { }

QColor MVRFinalDraftWriter::docDefaultBackground() const
{
    return Qt::white;
}

QColor MVRFinalDraftWriter::docDefaultForeground() const
{
    return Qt::black;
}
