// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/Capitals.h>
#include <tool/formats/ElementMapping.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/ScreenplayPages.h>

#include <core/MVRTextFormat.h>
#include <core/document/EditBlock_p.h>
#include <core/document/Pictures_p.h>
#include <core/document/TextFragments_p.h>
#include <finaldraft/MVRFinalDraftFile.h>

#include <QBuffer>
#include <QFont>
#include <QTextBlock>
#include <QTextCursor>

namespace {

// Settings count indents from a margin of 72 points, the document from its own.
void moveToMargin(ElementSettingsMap &settings, double margin)
{
    const double inches = (defaultMargin - margin) / 72.0;
    for (MVRFinalDraft::ElementSettings &entry : settings) {
        entry.paragraphSpec.leftIndent += inches;
        entry.paragraphSpec.rightIndent += inches;
    }
}

QString firstWords(const QTextDocument &document, int blocks)
{
    QTextBlock block = document.begin();
    for (int i = 0; i < blocks && block.isValid(); ++i, block = block.next()) {
        const QString text = block.text().simplified();
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

/*! A kind of what has no place in a document. */
struct Loss
{
    int MVRFinalDraft::LeftOut::*count;
    const char *one;
    const char *many;
    bool isOnPages = false;
};

using Left = MVRFinalDraft::LeftOut;
constexpr Loss lossKinds[] = {
    {&Left::detachedNotes, QT_TRANSLATE_NOOP("Tool", "note without a place"),
     QT_TRANSLATE_NOOP("Tool", "notes without a place")},
    {&Left::alternates, QT_TRANSLATE_NOOP("Tool", "alternate"),
     QT_TRANSLATE_NOOP("Tool", "alternates")},
    {&Left::omittedParagraphs, QT_TRANSLATE_NOOP("Tool", "paragraph of omitted scenes"),
     QT_TRANSLATE_NOOP("Tool", "paragraphs of omitted scenes")},
    {&Left::summaries, QT_TRANSLATE_NOOP("Tool", "scene summary"),
     QT_TRANSLATE_NOOP("Tool", "scene summaries")},
    {&Left::sceneTitles, QT_TRANSLATE_NOOP("Tool", "scene title"),
     QT_TRANSLATE_NOOP("Tool", "scene titles")},
    {&Left::headers, QT_TRANSLATE_NOOP("Tool", "header or footer"),
     QT_TRANSLATE_NOOP("Tool", "headers and footers"), true},
    {&Left::beats, QT_TRANSLATE_NOOP("Tool", "card of the beat board"),
     QT_TRANSLATE_NOOP("Tool", "cards of the beat board")},
    {&Left::characterBeats, QT_TRANSLATE_NOOP("Tool", "beat of a character's arc"),
     QT_TRANSLATE_NOOP("Tool", "beats of characters' arcs")},
    {&Left::hiddenTexts, QT_TRANSLATE_NOOP("Tool", "mark of hidden text, which is shown"),
     QT_TRANSLATE_NOOP("Tool", "marks of hidden text, which is shown"), true},
};

QStringList lossWords(const MVRFinalDraft::LeftOut &leftOut, bool goesToPages)
{
    QStringList words;
    for (const Loss &loss : lossKinds) {
        if (!loss.isOnPages || !goesToPages)
            addCounted(&words, leftOut.*loss.count, loss.one, loss.many);
    }
    return words;
}

bool readFdx(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const auto file = std::make_shared<MVRFinalDraftFile>();
    if (!file->load(&buffer)) {
        *error = file->errorString();
        return false;
    }
    if (file->elementXml(QStringLiteral("Content")).isEmpty()) {
        *error = Tool::tr("no Content in the Final Draft file");
        return false;
    }
    file->read(&document.text);
    if (options.capitals)
        putInCapitals(document.text);
    document.text.setDefaultFont(QFont(QStringLiteral("Courier Final Draft"), 12));
    ElementSettingsMap settings = standardSettings();
    const ElementSettingsMap ownSettings = file->elementSettings();
    for (auto own = ownSettings.cbegin(); own != ownSettings.cend(); ++own)
        settings.insert(own.key(), own.value());
    moveToMargin(settings, document.text.documentMargin());
    document.elements = elementsForWriting(settings);
    document.isScreenplay = true;
    document.titlePageBlocks = file->titlePageBlockCount();
    document.title = firstWords(document.text, document.titlePageBlocks);
    document.scaling = file->scaling();
    document.showInvisibles = file->showInvisibles();
    document.losses = lossWords(file->leftOut(), options.goesToPages);
    document.script = file;
    noteSource(document, bytes);
    return true;
}

// A type that a mapping names and Final Draft may not know looks like a general paragraph.
void addMappedElements(Document &document, const ElementMapping &mapping)
{
    MVRScriptElement general;
    QStringList known;
    for (const MVRScriptElement &element : qAsConst(document.elements)) {
        known.append(element.name());
        if (element.name() == ElementMapping::general())
            general = element;
    }
    const QStringList names = mapping.names();
    for (const QString &name : names) {
        general.setName(name);
        if (!known.contains(name))
            document.elements.append(general);
    }
}

void markTitlePage(Document &document)
{
    QTextCursor cursor(&document.text);
    const EditBlock editBlock(cursor);
    QTextBlockFormat mark;
    mark.setProperty(MVRFinalDraftFile::TitlePageProperty, true);
    QTextBlock block = document.text.begin();
    for (int i = 0; i < document.titlePageBlocks && block.isValid(); ++i, block = block.next()) {
        cursor.setPosition(block.position());
        cursor.mergeBlockFormat(mark);
    }
}

// A note on a picture would go with it.
void nameNotedPictures(QTextDocument &text)
{
    QVector<QPair<int, QTextCharFormat>> pictures;
    for (FragmentWalker walker(&text, 0); walker.isValid(); walker.next()) {
        const QTextCharFormat format = walker.format();
        if (!format.isImageFormat() || !format.hasProperty(MVRTextFormat::CommentLinkProperty))
            continue;
        for (int place = walker.start(); place < walker.end(); ++place)
            pictures.append({place, format});
    }
    QTextCursor cursor(&text);
    const EditBlock edit(cursor);
    for (auto picture = pictures.rbegin(); picture != pictures.rend(); ++picture) {
        clearPicture(picture->second);
        cursor.setPosition(picture->first);
        cursor.deleteChar();
        cursor.insertText(Tool::tr("[picture]"), picture->second);
    }
}

bool writeFdx(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!document.script) {
        document.script = std::make_shared<MVRFinalDraftFile>();
        markTitlePage(document);
        nameNotedPictures(document.text);
        nameElements(document.text, options.elements);
        addMappedElements(document, options.elements);
    }
    document.script->setElements(document.elements);
    document.script->setSettingsXml(document.settings);
    if (document.script->write(&buffer, &document.text))
        return true;
    *error = Tool::tr("cannot be written as a Final Draft file");
    return false;
}

}

const Format fdxFormat
    = {"fdx", "Final Draft", "fdxt", readFdx, writeFdx, NoteSupport::InText, PictureSupport::None,
       true};
