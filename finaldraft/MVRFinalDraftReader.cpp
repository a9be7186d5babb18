// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraftReader.h>

#include <finaldraft/LeftOut_p.h>
#include <finaldraft/NoteAnchor_p.h>
#include <finaldraft/RunInserter_p.h>

#include <core/MVRDomDoc.h>
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <core/document/UndoRecordingOff_p.h>
#include <text/MVRTextDoc.h>

#include <QDebug>
#include <QFile>
#include <QLoggingCategory>
#include <QObject>
#include <QTextDocument>

#include <algorithm>

using MVRFinalDraft::ElementSettings;
using MVRFinalDraft::ParagraphAttr;
using MVRFinalDraft::TextAttr;

// A category, so that an application can be quiet about files of others.
Q_LOGGING_CATEGORY(missedTags, "mvrtext.finaldraft.missedtags")

namespace {

// Points; the text margin of a file that names none.
constexpr double defaultMargin = 72.0;
constexpr double maxMargin = 7200.0; // beyond any paper
constexpr double pointsPerInch = 72.0;

const QLatin1String scriptNoteTag("ScriptNote");
const QLatin1String textTag("Text");

bool isSameFormat(const ParagraphAttr &a, const ParagraphAttr &b)
{
    return a.alignment == b.alignment && a.firstIndent == b.firstIndent
        && a.leftIndent == b.leftIndent && a.rightIndent == b.rightIndent
        && a.spaceBefore == b.spaceBefore && a.spacing == b.spacing
        && a.startsNewPage == b.startsNewPage;
}

QString runText(const QDomElement &run, bool allCaps)
{
    const QDomNode content = run.firstChild();
    // Nearly every run is one stretch of text, which need not be put together.
    const bool isOneText = content.isText() && content.nextSibling().isNull();
    QString text = isOneText ? content.nodeValue() : run.text();
    if (text.isEmpty())
        return QStringLiteral(" ");
    // A document makes a paragraph of each of these, and one of the pair.
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return allCaps ? text.toUpper() : text;
}

TextAttr runAttr(const QDomElement &run, TextAttr attr)
{
    if (run.hasAttributes())
        attr.fromDomElement(run);
    return attr;
}

}

/*! How paragraphs of one type are read. */
struct MVRFinalDraftReader::Look
{
    bool isDropped = false;
    ElementSettings settings; // its type is the one that the paragraphs are read as
    QTextBlockFormat elementBlockFormat; // the application's formats
    QTextCharFormat elementCharFormat;
    bool allCaps = false;
    QTextBlockFormat blockFormat; // of a paragraph without settings of its own
};

/*! What one read() works on. */
struct MVRFinalDraftReader::Walk
{
    explicit Walk(QTextDocument *target)
        : document(target)
        , script(target)
    {
    }

    QTextDocument *document;
    RunInserter script;
    NoteAnchor noteAnchor;
    QHash<QString, std::shared_ptr<const Look>> looks; // by the type that the file names
};

MVRFinalDraftReader::MVRFinalDraftReader() = default;

MVRFinalDraftReader::~MVRFinalDraftReader()
{
    clear();
}

void MVRFinalDraftReader::setFallbackSettings(const QHash<QString, ElementSettings> &settings)
{
    m_fallbackSettings = settings;
}

MVRFinalDraft::LeftOut MVRFinalDraftReader::leftOut() const
{
    return m_domDoc ? leftOutOf(m_domDoc->find(QStringLiteral("/FinalDraft")))
                    : MVRFinalDraft::LeftOut();
}

void MVRFinalDraftReader::clear()
{
    m_domDoc.reset();
}

bool MVRFinalDraftReader::load(QIODevice *device)
{
    clear();
    m_domDoc = std::make_unique<MVRDomDoc>();
    const bool isLoaded = m_domDoc->setContent(device);
    m_errorString = m_domDoc->errorString();
    return isLoaded;
}

bool MVRFinalDraftReader::load(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) && load(&file);
}

bool MVRFinalDraftReader::read(QTextDocument *document, const QList<MVRScriptElement> &elements)
{
    if (!document)
        return false;
    document->clear();
    const UndoRecordingOff noUndo(document);
    m_scriptElements = elements;
    m_scaling = 100.0;
    m_showInvisibles = false;
    m_titlePageBlockCount = 0;
    m_errorString.clear();

    bool isRead = false;
    {
        Walk walk(document);
        m_walk = &walk;
        isRead = parseFile();
        walk.script.finish();
        m_walk = nullptr;
    }
    if (!m_scriptNotes.isEmpty())
        MVRTextDoc::setComments(document, m_scriptNotes);
    STextDoc::clearDefaultTextOptionFlags(document);
    STextDoc::normalizePageBreaks(document);
    return isRead;
}

bool MVRFinalDraftReader::readElements(QHash<QString, ElementSettings> *settings)
{
    if (!settings || !parseElementSettings())
        return false;
    *settings = m_elementSettings;
    for (auto it = m_fallbackSettings.cbegin(); it != m_fallbackSettings.cend(); ++it) {
        if (!m_elementSettings.contains(it.key()))
            settings->insert(it.key(), it.value());
    }
    return true;
}

bool MVRFinalDraftReader::parseFile()
{
    parsePageLayout();
    if (!parseElementSettings()) {
        m_errorString = QObject::tr("'ElementSettings' not found in Final Draft file.");
        return false;
    }
    if (m_domDoc->cd(QStringLiteral("/FinalDraft/TitlePage/Content"))) {
        parseParagraphTags(QString());
        m_walk->script.finish();
        m_titlePageBlockCount = m_walk->document->blockCount() - 1;
    }
    if (!m_domDoc->cd(QStringLiteral("/FinalDraft/Content"))) {
        m_errorString = QObject::tr("'/FinalDraft/Content' not found in Final Draft file.");
        return false;
    }
    parseParagraphTags(QString());

    const QDomElement textState = m_domDoc->find(QStringLiteral("/FinalDraft/TextState"));
    m_domDoc->getAttr(QStringLiteral("Scaling"), &m_scaling, textState);
    m_domDoc->getAttr(QStringLiteral("ShowInvisibles"), &m_showInvisibles, textState);
    return true;
}

void MVRFinalDraftReader::parsePageLayout()
{
    QTextDocument *document = m_walk->document;
    if (!m_domDoc || !m_domDoc->cd(QStringLiteral("/FinalDraft/PageLayout"))) {
        document->setDocumentMargin(defaultMargin);
        MVRTextDoc::setDefaultCharFormatColors(document, Qt::black, Qt::white);
        return;
    }
    const QDomElement layout = m_domDoc->currentElement();
    QString foreground;
    QString background;
    if (m_domDoc->getAttr(QStringLiteral("ForegroundColor"), &foreground, layout)
        && m_domDoc->getAttr(QStringLiteral("BackgroundColor"), &background, layout)) {
        MVRTextDoc::setDefaultCharFormatColors(document,
                                               MVRFinalDraft::toColor(foreground, Qt::black),
                                               MVRFinalDraft::toColor(background, Qt::white));
    }
    double margin = 0.0;
    if (m_domDoc->getAttr(QStringLiteral("TopMargin"), &margin, layout) && margin >= 0.0
        && margin <= maxMargin)
        document->setDocumentMargin(margin);
}

bool MVRFinalDraftReader::parseElementSettings()
{
    if (!m_domDoc || !m_domDoc->cd(QStringLiteral("/FinalDraft")))
        return false;
    const double margin = m_walk ? m_walk->document->documentMargin() : defaultMargin;
    const QString tag = QStringLiteral("ElementSettings");
    if (!m_domDoc->cd(tag))
        return true;
    do {
        ElementSettings settings;
        if (settings.fromDomDoc(m_domDoc.get(), margin))
            m_elementSettings.insert(settings.type, settings);
    } while (m_domDoc->cdNext(tag));
    return true;
}

// Nested calls go down the tree, which MVRDomDoc keeps shallow.
void MVRFinalDraftReader::parseParagraphTags(const QString &parentTag)
{
    const QString paragraphTag = QStringLiteral("Paragraph");
    const QString dualDialogueTag = QStringLiteral("DualDialogue");
    if (!m_domDoc->cd(paragraphTag))
        return;
    QDomElement element;
    do {
        element = m_domDoc->currentElement();
        if (m_domDoc->cd(dualDialogueTag)) {
            QDomElement column;
            do {
                column = m_domDoc->currentElement();
                parseParagraphTags(dualDialogueTag);
                m_domDoc->setWorkElement(column);
            } while (m_domDoc->cdNext(dualDialogueTag));
        } else if (parentTag == scriptNoteTag) {
            parseNoteParagraph(element);
        } else {
            parseParagraph(element, parentTag);
        }
        m_domDoc->setWorkElement(element);
    } while (m_domDoc->cdNext(paragraphTag));
}

/*! Turns a paragraph of the script into a block; one that no settings fit is dropped. */
void MVRFinalDraftReader::parseParagraph(const QDomElement &element, const QString &parentTag)
{
    const QString typeName = QStringLiteral("Type");
    const std::shared_ptr<const Look> look = findLook(element.attribute(typeName));
    if (look->isDropped)
        return;
    QTextBlockFormat format = look->blockFormat;
    if (element.attributes().count() > (element.hasAttribute(typeName) ? 1 : 0)) {
        ParagraphAttr attr = look->settings.paragraphSpec;
        attr.fromDomElement(element, m_walk->document->documentMargin());
        if (!isSameFormat(attr, look->settings.paragraphSpec))
            format = blockFormat(attr, *look);
    }

    RunInserter &script = m_walk->script;
    bool isStarted = false;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == textTag) {
            if (!isStarted)
                script.startParagraph(format);
            isStarted = true;
            const QString text = runText(child, look->allCaps);
            script.insertRun(text, runAttr(child, look->settings.fontSpec),
                             look->elementCharFormat);
            m_walk->noteAnchor.append(text);
        } else {
            parseOtherChild(child, parentTag);
            isStarted = false; // paragraphs inside a note have formats of their own
        }
    }
    script.endParagraph();
    m_walk->noteAnchor.appendBreak();
}

/*! Turns a paragraph of a script note into a note of its own, in Final Draft's default look. */
void MVRFinalDraftReader::parseNoteParagraph(const QDomElement &element)
{
    QTextDocument note;
    note.setUndoRedoEnabled(false);
    RunInserter runs(&note);
    ElementSettings settings;
    settings.paragraphSpec.fromDomElement(element, m_walk->document->documentMargin());
    const QString type = element.attribute(QStringLiteral("Type"));
    const MVRScriptElement scriptElement = findScriptElement(type);
    const bool allCaps = !type.isEmpty() && (scriptElement.flags() & MVRScriptElement::AllCapsFlag);
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == textTag) {
            runs.startParagraph(settings.parBlockFormat());
            runs.insertRun(runText(child, allCaps), runAttr(child, settings.fontSpec),
                           scriptElement.charFormat());
        } else {
            parseOtherChild(child, scriptNoteTag);
        }
    }
    runs.finish();
    if (!note.isEmpty())
        addScriptNote(note, anchorOrInsertStandIn());
}

void MVRFinalDraftReader::parseOtherChild(const QDomElement &child, const QString &parentTag)
{
    if (child.tagName() == scriptNoteTag) {
        m_domDoc->setWorkElement(child);
        parseParagraphTags(scriptNoteTag);
    } else {
        QMessageLogger().debug(missedTags())
            << "Warning: Missed FinalDraft tag:" << child.tagName() << " parentTag:" << parentTag;
    }
}

std::shared_ptr<const MVRFinalDraftReader::Look> MVRFinalDraftReader::findLook(const QString &type)
{
    if (const std::shared_ptr<const Look> known = m_walk->looks.value(type))
        return known;
    const auto look = std::make_shared<Look>();
    look->settings.type = type;
    const bool hadSettings = m_elementSettings.contains(type);
    look->isDropped = !resolveSettings(&look->settings);
    if (!look->isDropped) {
        const MVRScriptElement element = findScriptElement(look->settings.type);
        look->elementBlockFormat = element.blockFormat();
        // Where it was made from a paragraph of a list, that is one of another document.
        look->elementBlockFormat.clearProperty(QTextFormat::ObjectIndex);
        look->elementCharFormat = element.charFormat();
        look->allCaps = (element.flags() & MVRScriptElement::AllCapsFlag)
            || look->settings.paragraphSpec.style.testFlag(MVRFinalDraft::AllCaps);
        look->blockFormat = blockFormat(look->settings.paragraphSpec, *look);
    }
    // Settings that this paragraph has left under its type may lead the next one elsewhere.
    if (hadSettings || !m_elementSettings.contains(type))
        m_walk->looks.insert(type, look);
    return look;
}

/*! The fallback settings of a type, moved to the margin of the document. */
bool MVRFinalDraftReader::findFallback(const QString &type, ElementSettings *settings) const
{
    const auto fallback = m_fallbackSettings.constFind(type);
    if (fallback == m_fallbackSettings.constEnd())
        return false;
    *settings = *fallback;
    settings->type = type;
    const double inches = (defaultMargin - m_walk->document->documentMargin()) / pointsPerInch;
    settings->paragraphSpec.leftIndent += inches;
    settings->paragraphSpec.rightIndent += inches;
    return true;
}

/*!
    Finds the settings for the type that \a settings name, and in them the type that paragraphs
    are read as. False when a paragraph of this type has no place in the script.
*/
bool MVRFinalDraftReader::resolveSettings(ElementSettings *settings)
{
    const QString typeInFile = settings->type;
    const auto entry = m_elementSettings.constFind(typeInFile);
    if (entry != m_elementSettings.constEnd()) {
        *settings = *entry;
        // A custom type looks like the standard one that its page breaks follow.
        const QString standardType = MVRFinalDraft::toString(entry->paginateAs);
        const auto standard = m_elementSettings.constFind(standardType);
        if (standardType != entry->type && standard != m_elementSettings.constEnd()) {
            *settings = *standard;
            settings->type = standardType;
        }
        return true;
    }
    // Fallbacks are no settings of the file: no custom type takes after them.
    if (findFallback(typeInFile, settings))
        return true;

    MVRFinalDraft::ElementType type = MVRFinalDraft::toElementType(typeInFile);
    QString typeName = typeInFile;
    if (type == MVRFinalDraft::NoElement) {
        type = MVRFinalDraft::Action;
        typeName = MVRFinalDraft::toString(type);
        const auto action = m_elementSettings.constFind(typeName);
        if (action == m_elementSettings.constEnd())
            return findFallback(typeName, settings);
        *settings = *action;
    }
    settings->type = typeName;
    settings->paginateAs = type;
    settings->returnKey = type;
    if (!typeInFile.isEmpty()) {
        m_elementSettings.insert(typeName, *settings);
        m_walk->looks.clear(); // other types may find these settings now
    }
    return true;
}

QTextBlockFormat MVRFinalDraftReader::blockFormat(const ParagraphAttr &attr, const Look &look)
{
    QTextBlockFormat format = attr.toBlockFormat();
    format.merge(look.elementBlockFormat);
    format.setProperty(MVRScriptElement::NameProperty, look.settings.type);
    return format;
}

MVRScriptElement MVRFinalDraftReader::findScriptElement(const QString &name) const
{
    const auto element
        = std::find_if(m_scriptElements.cbegin(), m_scriptElements.cend(),
                       [&](const MVRScriptElement &candidate) { return candidate.name() == name; });
    return element == m_scriptElements.cend() ? MVRScriptElement() : *element;
}

/*! Finds the text that a note at the cursor annotates; makes some where there is none. */
MVRTextRange MVRFinalDraftReader::anchorOrInsertStandIn()
{
    const MVRTextRange word = m_walk->noteAnchor.lastWord();
    if (word.start != word.end)
        return word;
    // The stand-in word is not the anchor: the characters that follow it are.
    const QString standIn = QStringLiteral("Comment");
    m_walk->script.insertText(standIn);
    m_walk->noteAnchor.append(standIn);
    const int start = m_walk->script.cursor().position();
    return MVRTextRange(start, start + standIn.size());
}

void MVRFinalDraftReader::addScriptNote(const QTextDocument &note, const MVRTextRange &range)
{
    // A note on the same word, which has grown since, would be covered whole by this one.
    const auto covered = m_scriptNotes.lowerBound(MVRTextRange(range.start, range.start));
    if (covered != m_scriptNotes.end() && covered.key().start == range.start
        && covered.key().end <= range.end)
        m_scriptNotes.erase(covered);
    MVRTextCommentLink link;
    link.cdata = MVRTextRtf::toRtfCData(&note, false);
    m_scriptNotes.insert(range, link);
}
