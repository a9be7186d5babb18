// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraftFile.h>

#include <finaldraft/file/FdxDocument_p.h>
#include <finaldraft/file/FdxLeftOut_p.h>
#include <finaldraft/file/FdxNotes_p.h>
#include <finaldraft/file/FdxScript_p.h>
#include <finaldraft/file/FdxSkeleton_p.h>
#include <finaldraft/file/FdxTree_p.h>
#include <finaldraft/file/FdxWriter_p.h>

#include <core/STextDoc.h>
#include <core/document/Devices_p.h>
#include <core/document/EditBlock_p.h>
#include <core/document/UndoRecordingOff_p.h>
#include <text/MVRTextDoc.h>

#include <QFile>
#include <QObject>
#include <QPointer>
#include <QRandomGenerator>
#include <QTextDocument>

#include <optional>

namespace {

// Points; the text margin of a file that names none.
constexpr double defaultMargin = 72.0;
constexpr double maxMargin = 7200.0; // beyond any paper

double number(const FdxElement &element, const char *name, double fallback)
{
    bool isNumber = false;
    const double value = fdxAttribute(element, name).toDouble(&isNumber);
    return isNumber ? value : fallback;
}

// The first child that a path of names leads to.
FdxElement childAt(FdxElement node, const QString &path)
{
    const QStringList names = path.split(QLatin1Char('/'));
    for (const QString &name : names)
        node = node.child(name.toUtf8().constData());
    return node;
}

}

struct Q_DECL_HIDDEN MVRFinalDraftFile::Private
{
    FdxTree tree;
    std::optional<FdxScript> script; // empty: nothing is loaded
    std::optional<FdxPlaces> places; // made when they are asked for
    QVector<FdxNote> notes;
    QHash<QString, int> anchors; // of notes in documents that were read: index
    int fileId = 0;
    QList<MVRScriptElement> elements; // for write()
    QHash<QString, QByteArray> settings; // for write(), by type
    QString errorString;
    // The document that read() filled, as it was then.
    QPointer<const QTextDocument> readDocument;
    int readRevision = -1;

    bool parse(const QByteArray &bytes);
    void findNotes(const QVector<int> &lengths = {});
    void applyPageLayout(QTextDocument *document);
    void rememberDocument(QTextDocument *document);
    bool write(QIODevice *device, const QTextDocument *document);
    bool writeWhole(QIODevice *device, const QTextDocument *document) const;
};

bool MVRFinalDraftFile::Private::parse(const QByteArray &bytes)
{
    places.reset();
    script.reset();
    notes.clear();
    readDocument.clear();
    if (!tree.load(bytes)) {
        errorString = tree.errorString();
        return false;
    }
    if (!tree.root().isNamed("FinalDraft")) {
        errorString = QObject::tr("Not a Final Draft file.");
        return false;
    }
    script.emplace(tree);
    // Never 0, which formats say that do not know.
    fileId = int(QRandomGenerator::global()->bounded(1u, 0x7fffffffu));
    errorString.clear();
    return true;
}

void MVRFinalDraftFile::Private::findNotes(const QVector<int> &lengths)
{
    if (places)
        return;
    places.emplace(*script, lengths);
    notes = fdxNotes(*script, *places);
}

void MVRFinalDraftFile::Private::applyPageLayout(QTextDocument *document)
{
    const FdxElement layout = tree.root().child("PageLayout");
    const double margin = number(layout, "TopMargin", defaultMargin);
    document->setDocumentMargin(margin >= 0 && margin <= maxMargin ? margin : defaultMargin);
    MVRTextDoc::setDefaultCharFormatColors(
        document, fdxColor(layout.attribute("ForegroundColor").value(), Qt::black),
        fdxColor(layout.attribute("BackgroundColor").value(), Qt::white));
}

bool MVRFinalDraftFile::Private::write(QIODevice *device, const QTextDocument *document)
{
    if (readDocument == document && readRevision == document->revision())
        return device->write(tree.file()) == tree.file().size();
    findNotes();
    FdxWriter writer(*script, *places, notes, anchors, fileId, elements, document);
    writer.setSettings(settings);
    return tree.write(device, writer.splices());
}

bool MVRFinalDraftFile::Private::writeWhole(QIODevice *device, const QTextDocument *document) const
{
    MVRFinalDraftFile whole;
    whole.m_d->parse(fdxSkeleton());
    whole.m_d->script->setView({}, document->documentMargin());
    whole.m_d->elements = elements;
    whole.m_d->settings = settings;
    return whole.m_d->write(device, document);
}

// An edit block that is still open would hide changes: its revision was counted at its start.
void MVRFinalDraftFile::Private::rememberDocument(QTextDocument *document)
{
    const int before = document->revision();
    {
        const EditBlock editBlock(document);
    }
    readDocument = document->revision() != before ? document : nullptr;
    readRevision = document->revision();
}

MVRFinalDraftFile::MVRFinalDraftFile()
    : m_d(std::make_unique<Private>())
{
}

MVRFinalDraftFile::~MVRFinalDraftFile() = default;

void MVRFinalDraftFile::clear()
{
    m_d = std::make_unique<Private>();
}

bool MVRFinalDraftFile::load(QIODevice *device)
{
    clear();
    if (!device || !device->isReadable()) {
        m_d->errorString = QObject::tr("The file cannot be read.");
        return false;
    }
    return m_d->parse(device->readAll());
}

bool MVRFinalDraftFile::load(const QString &fileName)
{
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly))
        return load(&file);
    clear();
    m_d->errorString = file.errorString();
    return false;
}

bool MVRFinalDraftFile::isLoaded() const
{
    return m_d->script.has_value();
}

QString MVRFinalDraftFile::errorString() const
{
    return m_d->errorString;
}

bool MVRFinalDraftFile::read(QTextDocument *document, const QList<MVRScriptElement> &elements)
{
    if (!document || !isLoaded())
        return false;
    document->clear();
    {
        const UndoRecordingOff noUndo(document);
        m_d->applyPageLayout(document);
        m_d->script->setView(elements, document->documentMargin());
        m_d->findNotes(fdxInsertScript(*m_d->script, m_d->fileId, document));
        const QHash<QString, int> anchors = fdxAttachNotes(m_d->notes, m_d->tree, document);
        for (auto it = anchors.cbegin(); it != anchors.cend(); ++it)
            m_d->anchors.insert(it.key(), it.value());
        STextDoc::clearDefaultTextOptionFlags(document);
    }
    m_d->rememberDocument(document);
    return true;
}

bool MVRFinalDraftFile::write(QIODevice *device, const QTextDocument *document)
{
    if (!device || !document)
        return false;
    const bool isWritten
        = isLoaded() ? m_d->write(device, document) : m_d->writeWhole(device, document);
    return isWritten && isFlushed(*device);
}

void MVRFinalDraftFile::setElements(const QList<MVRScriptElement> &elements)
{
    m_d->elements = elements;
}

void MVRFinalDraftFile::setSettingsXml(const QHash<QString, QByteArray> &settings)
{
    m_d->settings = settings;
}

QHash<QString, QByteArray> MVRFinalDraftFile::settingsXml() const
{
    QHash<QString, QByteArray> all;
    if (!isLoaded())
        return all;
    for (const FdxElement &settings : m_d->tree.root().children("ElementSettings")) {
        const FdxTree::Span span = m_d->tree.span(settings);
        all.insert(fdxAttribute(settings, "Type"),
                   m_d->tree.source().mid(span.start, span.end - span.start));
    }
    return all;
}

QVector<MVRFinalDraftFile::Note> MVRFinalDraftFile::notes() const
{
    QVector<Note> records;
    if (!isLoaded())
        return records;
    m_d->findNotes();
    for (const FdxNote &note : qAsConst(m_d->notes)) {
        if (!note.isRemoved)
            records.append(fdxNoteRecord(note, *m_d->script, *m_d->places));
    }
    return records;
}

int MVRFinalDraftFile::removeHiddenNotes()
{
    int count = 0;
    if (!isLoaded())
        return count;
    m_d->findNotes();
    for (FdxNote &note : m_d->notes) {
        if (note.isAttached() || note.isRemoved)
            continue;
        note.isRemoved = true;
        ++count;
    }
    if (count > 0)
        m_d->readDocument.clear(); // its file is another one now
    return count;
}

QVector<MVRFinalDraftFile::Scene> MVRFinalDraftFile::scenes() const
{
    QVector<Scene> scenes;
    int block = 0;
    const int count = isLoaded() ? m_d->script->paragraphs().size() : 0;
    for (int i = 0; i < count; ++i) {
        const FdxParagraph &paragraph = m_d->script->paragraphs()[i];
        if (paragraph.hasBlock && !m_d->script->isTitlePage(i)
            && m_d->script->typeName(i) == "Scene Heading") {
            const FdxElement properties = paragraph.node.child("SceneProperties");
            Scene scene;
            scene.block = block;
            scene.heading = m_d->script->text(i);
            scene.number = fdxAttribute(paragraph.node, "Number");
            scene.title = fdxAttribute(properties, "Title");
            scene.color = fdxAttribute(properties, "Color");
            scene.length = fdxAttribute(properties, "Length");
            scene.page = fdxAttribute(properties, "Page");
            scene.summary = fdxParagraphsText(m_d->tree, properties.child("Summary"));
            scenes.append(scene);
        }
        block += paragraph.hasBlock ? 1 : 0;
    }
    return scenes;
}

MVRFinalDraft::LeftOut MVRFinalDraftFile::leftOut() const
{
    if (!isLoaded())
        return MVRFinalDraft::LeftOut();
    m_d->findNotes();
    return fdxLeftOut(*m_d->script, m_d->notes);
}

QHash<QString, MVRFinalDraft::ElementSettings> MVRFinalDraftFile::elementSettings() const
{
    return isLoaded() ? m_d->script->settings() : QHash<QString, MVRFinalDraft::ElementSettings>();
}

QString MVRFinalDraftFile::version() const
{
    return fdxAttribute(m_d->tree.root(), "Version");
}

int MVRFinalDraftFile::titlePageBlockCount() const
{
    int count = 0;
    const int paragraphs = isLoaded() ? m_d->script->paragraphs().size() : 0;
    for (int i = 0; i < paragraphs && m_d->script->isTitlePage(i); ++i)
        count += m_d->script->paragraphs()[i].hasBlock ? 1 : 0;
    return count;
}

double MVRFinalDraftFile::scaling() const
{
    return number(m_d->tree.root().child("TextState"), "Scaling", 100.0);
}

bool MVRFinalDraftFile::showInvisibles() const
{
    return fdxAttribute(m_d->tree.root().child("TextState"), "ShowInvisibles")
        == QLatin1String("Yes");
}

QByteArray MVRFinalDraftFile::elementXml(const QString &name) const
{
    const FdxElement element = childAt(m_d->tree.root(), name);
    if (!element || name.isEmpty())
        return QByteArray();
    const FdxTree::Span span = m_d->tree.span(element);
    return m_d->tree.source().mid(span.start, span.end - span.start);
}
