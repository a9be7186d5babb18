#include <finaldraft/MVRFinalDraftReader.h>

#include <finaldraft/NoteAnchor_p.h>

#include <core/EditBlock_p.h>
#include <core/MVRDomDoc.h>
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <core/UndoRecordingOff_p.h>
#include <text/MVRTextDoc.h>

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QTextCursor>
#include <QTextDocument>

using MVRFinalDraft::ElementSettings;
using MVRFinalDraft::TextAttr;

namespace {

// Points; the text margin of a file that names none.
constexpr double defaultMargin = 72.0;
constexpr double maxMargin = 7200.0; // beyond any paper

const QLatin1String scriptNoteTag("ScriptNote");

QString translated(const char *text)
{
    return QCoreApplication::translate("QObject", text);
}

bool isSameRunFormat(const TextAttr &a, const TextAttr &b)
{
    return a.style == b.style && a.size == b.size && a.font == b.font && a.color == b.color
        && a.background == b.background;
}

/*! The last character format that was made: neighbouring runs mostly share it. */
class CharFormatMemo
{
public:
    QTextCharFormat format(const TextAttr &attr, const QTextCharFormat &elementFormat)
    {
        if (!m_isFilled || m_elementFormat != elementFormat || !isSameRunFormat(m_attr, attr)) {
            m_attr = attr;
            m_elementFormat = elementFormat;
            m_format = attr.toCharFormat();
            m_format.merge(elementFormat);
            m_isFilled = true;
        }
        return m_format;
    }

private:
    bool m_isFilled = false;
    TextAttr m_attr;
    QTextCharFormat m_elementFormat;
    QTextCharFormat m_format;
};

}

/*! What one run of read() works on. */
struct MVRFinalDraftReader::Walk
{
    explicit Walk(QTextDocument *target)
        : document(target)
        , cursor(target)
    {
    }

    QTextDocument *document;
    QTextCursor cursor; // after the text read so far
    NoteAnchor noteAnchor;
    CharFormatMemo charFormats;
};

/*! One paragraph of the file, on its way into a document. */
struct MVRFinalDraftReader::Paragraph
{
    QTextCursor *target;
    bool isNote;
    QString type;
    ElementSettings settings;
    QTextBlockFormat blockFormat;
    QTextCharFormat elementFormat;
    bool allCaps;
};

MVRFinalDraftReader::MVRFinalDraftReader() = default;

MVRFinalDraftReader::~MVRFinalDraftReader()
{
    clear();
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
        const EditBlock oneChange(walk.cursor);
        isRead = parseFile();
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
    return true;
}

bool MVRFinalDraftReader::parseFile()
{
    parsePageLayout();
    if (!parseElementSettings()) {
        m_errorString = translated("'ElementSettings' not found in Final Draft file.");
        return false;
    }
    if (m_domDoc->cd(QStringLiteral("/FinalDraft/TitlePage/Content"))) {
        parseParagraphTags(QString());
        m_titlePageBlockCount = m_walk->document->blockCount() - 1;
    }
    if (!m_domDoc->cd(QStringLiteral("/FinalDraft/Content"))) {
        m_errorString = translated("'/FinalDraft/Content' not found in Final Draft file.");
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
    Paragraph paragraph;
    paragraph.target = &m_walk->cursor;
    paragraph.isNote = false;
    paragraph.type = element.attribute(QStringLiteral("Type"));
    if (!findSettings(&paragraph))
        return;
    const MVRScriptElement scriptElement = findScriptElement(paragraph.type);
    paragraph.settings.paragraphSpec.fromDomElement(element, m_walk->document->documentMargin());
    paragraph.blockFormat = paragraph.settings.parBlockFormat();
    paragraph.blockFormat.merge(scriptElement.blockFormat());
    paragraph.blockFormat.setProperty(MVRScriptElement::NameProperty, paragraph.type);
    paragraph.elementFormat = scriptElement.charFormat();
    paragraph.allCaps = (scriptElement.flags() & MVRScriptElement::AllCapsFlag)
        || paragraph.settings.paragraphSpec.style.testFlag(MVRFinalDraft::AllCaps);
    parseRuns(element, paragraph, parentTag);
    m_walk->cursor.insertBlock();
    m_walk->noteAnchor.appendBreak();
}

/*! Turns a paragraph of a script note into a note of its own. */
void MVRFinalDraftReader::parseNoteParagraph(const QDomElement &element)
{
    QTextDocument note;
    note.setUndoRedoEnabled(false);
    QTextCursor cursor(&note);
    Paragraph paragraph;
    paragraph.target = &cursor;
    paragraph.isNote = true;
    paragraph.type = element.attribute(QStringLiteral("Type"));
    const MVRScriptElement scriptElement = findScriptElement(paragraph.type);
    paragraph.settings.paragraphSpec.fromDomElement(element, m_walk->document->documentMargin());
    paragraph.blockFormat = paragraph.settings.parBlockFormat();
    paragraph.elementFormat = scriptElement.charFormat();
    paragraph.allCaps = scriptElement.flags() & MVRScriptElement::AllCapsFlag;
    parseRuns(element, paragraph, scriptNoteTag);
    if (!note.isEmpty())
        addScriptNote(note, anchorScriptNote());
}

/*! Finds the settings of a paragraph by its type and makes the type the one it is read as. */
bool MVRFinalDraftReader::findSettings(Paragraph *paragraph)
{
    const auto entry = m_elementSettings.constFind(paragraph->type);
    if (entry != m_elementSettings.constEnd()) {
        paragraph->settings = *entry;
        // A custom type looks like the standard one that its page breaks follow.
        const QString standardType = MVRFinalDraft::toString(entry->paginateAs);
        const auto standard = m_elementSettings.constFind(standardType);
        if (standardType != entry->type && standard != m_elementSettings.constEnd()) {
            paragraph->settings = *standard;
            paragraph->type = standardType;
        }
        return true;
    }

    const bool hasType = !paragraph->type.isEmpty();
    MVRFinalDraft::ElementType type = MVRFinalDraft::toElementType(paragraph->type);
    if (type == MVRFinalDraft::NoElement) {
        type = MVRFinalDraft::Action;
        paragraph->type = MVRFinalDraft::toString(type);
        const auto action = m_elementSettings.constFind(paragraph->type);
        if (action == m_elementSettings.constEnd())
            return false;
        paragraph->settings = *action;
    }
    paragraph->settings.type = paragraph->type;
    paragraph->settings.paginateAs = type;
    paragraph->settings.returnKey = type;
    if (hasType)
        m_elementSettings.insert(paragraph->type, paragraph->settings);
    return true;
}

MVRScriptElement MVRFinalDraftReader::findScriptElement(const QString &name) const
{
    if (name.isEmpty())
        return MVRScriptElement();
    const auto element
        = std::find_if(m_scriptElements.cbegin(), m_scriptElements.cend(),
                       [&](const MVRScriptElement &candidate) { return candidate.name() == name; });
    return element == m_scriptElements.cend() ? MVRScriptElement() : *element;
}

void MVRFinalDraftReader::parseRuns(const QDomElement &element, const Paragraph &paragraph,
                                    const QString &parentTag)
{
    bool isFormatted = false;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("Text")) {
            if (!isFormatted)
                paragraph.target->setBlockFormat(paragraph.blockFormat);
            isFormatted = true;
            insertRun(child, paragraph);
        } else if (child.tagName() == scriptNoteTag) {
            m_domDoc->setWorkElement(child);
            parseParagraphTags(scriptNoteTag);
        } else {
            qDebug() << "Warning: Missed FinalDraft tag:" << child.tagName()
                     << " parentTag:" << parentTag;
        }
    }
}

void MVRFinalDraftReader::insertRun(const QDomElement &run, const Paragraph &paragraph)
{
    QString text = run.text();
    if (text.isEmpty())
        text = QStringLiteral(" ");
    if (paragraph.allCaps)
        text = text.toUpper();
    TextAttr attr = paragraph.settings.fontSpec;
    if (run.hasAttributes())
        attr.fromDomElement(run);
    paragraph.target->insertText(text, m_walk->charFormats.format(attr, paragraph.elementFormat));
    if (!paragraph.isNote)
        m_walk->noteAnchor.append(text);
}

/*! Finds the text that a note at the cursor annotates. */
MVRTextRange MVRFinalDraftReader::anchorScriptNote()
{
    const MVRTextRange word = m_walk->noteAnchor.lastWord();
    if (word.start != word.end)
        return word;
    // The stand-in word is not the anchor: the characters that follow it are.
    const QString standIn = QStringLiteral("Comment");
    m_walk->cursor.insertText(standIn);
    m_walk->noteAnchor.append(standIn);
    const int start = m_walk->cursor.position();
    return MVRTextRange(start, start + standIn.size());
}

void MVRFinalDraftReader::addScriptNote(const QTextDocument &note, const MVRTextRange &range)
{
    MVRTextCommentLink link;
    link.cdata = MVRTextRtf::toRtfCData(&note, false);
    m_scriptNotes.insert(range, link);
}
