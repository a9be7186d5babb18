// SPDX-License-Identifier: MIT
#include "Manuscript.h"

#include <core/STextDoc.h>
#include <pages/MVRScreenplayPages.h>
#include <text/MVRNoteEdits.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>
#include <tool/Document.h>
#include <tool/Output.h>
#include <tool/formats/Formats.h>
#include <tool/formats/Media.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/TableDepth.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Manuscript", text);
}

std::shared_ptr<Document> emptyDocument()
{
    auto document = std::make_shared<Document>();
    document->text.setDefaultFont(QFont(QStringLiteral("Times New Roman"), 12));
    giveStandards(*document);
    return document;
}

QByteArray scriptBytes(const Document &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return document.script->write(&buffer, &document.text) ? buffer.data() : QByteArray();
}

/*! A copy that a writer may change; of a screenplay what its file says, headers and all. */
std::unique_ptr<Document> copyOf(const Document &document)
{
    auto copy = std::make_unique<Document>();
    ReadOptions options;
    options.goesToPages = true;
    QString error;
    if (document.isScreenplay) {
        fdxFormat.read(scriptBytes(document), options, *copy, &error);
        return copy;
    }
    STextDoc::copyDocument(&document.text, &copy->text);
    copy->text.setUndoRedoEnabled(false);
    copy->title = document.title;
    copy->elements = document.elements;
    return copy;
}

/*! Where a format has no notes they become text: a copy loses them only as BBCode. */
void placeNotesIn(QTextDocument *text, const Format &format)
{
    if (format.notes != NoteSupport::None) {
        placeNotes(*text, NotesChoice::ByFormat, format.notes);
    } else if (format.read) {
        MVRNoteEdits::moveToText(text, QTextCursor());
        MVRTextDoc::toInlineMarkup(text);
    } else if (&format == &odtFormat) {
        MVRNoteEdits::footnotesToEndNotes(text);
        placeNotes(*text, NotesChoice::Inline, format.notes);
    } else {
        placeNotes(*text, NotesChoice::Drop, format.notes);
    }
}

QString patternsOf(const QString &name)
{
    const QString others = QLatin1String(formatByName(name)->otherSuffixes);
    return (QLatin1String("*.") + name + QLatin1Char(' ') + others)
        .trimmed()
        .replace(QLatin1Char(' '), QLatin1String(" *."));
}

} // namespace

QString Manuscript::openFilter()
{
    QStringList patterns;
    for (const QString &name : readableFormats())
        patterns += patternsOf(name);
    return tr("Texts and screenplays (%1)").arg(patterns.join(QLatin1Char(' ')));
}

QString Manuscript::saveFilter()
{
    QStringList rows;
    for (const QString &name : readableFormats())
        rows += QLatin1String(formatByName(name)->title) + QLatin1String(" (") + patternsOf(name)
            + QLatin1Char(')');
    return rows.join(QLatin1String(";;"));
}

bool Manuscript::isScreenplay() const
{
    return m_document->isScreenplay;
}

std::shared_ptr<QTextDocument> Manuscript::text() const
{
    return {m_document, &m_document->text};
}

MVRScreenplayElements Manuscript::elements() const
{
    return isScreenplay() ? MVRScreenplayElements(m_document->script->elementSettings())
                          : MVRScreenplayElements();
}

void Manuscript::startNew(bool isScreenplay)
{
    m_path.clear();
    m_document = emptyDocument();
    m_document->isScreenplay = isScreenplay;
    if (isScreenplay)
        m_document->script = std::make_shared<MVRFinalDraftFile>();
}

bool Manuscript::open(const QString &path, QString *error)
{
    const Format *format = formatOfFile(path);
    *error = tr("The kind of the file is not known.");
    ReadOptions options;
    options.capitals = false;
    options.goesBack = true;
    QByteArray bytes;
    auto document = emptyDocument();
    if (!format || !format->read || !readInput(path, &bytes, error)
        || !format->read(bytes, options, *document, error))
        return false;
    if (hasDeepTables(document->text)) {
        *error = tr("Its tables are nested too deep.");
        return false;
    }
    const QString folder = QFileInfo(path).absolutePath();
    openPictures(*document, folder, folder);
    if (format->notes == NoteSupport::None)
        MVRTextDoc::fromInlineMarkup(&document->text, MVRPicturePolicy::below(folder));
    document->text.setUndoRedoEnabled(true);
    document->text.setModified(false);
    m_document = std::move(document);
    m_path = path;
    return true;
}

bool Manuscript::write(const Format &format, QByteArray *bytes, QString *error) const
{
    if (isScreenplay() && &format == &fdxFormat) {
        *bytes = scriptBytes(*m_document);
        return !bytes->isEmpty();
    }
    const auto copy = copyOf(*m_document);
    placeNotesIn(&copy->text, format);
    WriteOptions options;
    options.hasCommentsInMargin = true;
    return format.write(*copy, options, bytes, error);
}

bool Manuscript::save(const QString &path, QString *error) const
{
    const Format *format = formatOfFile(path);
    QByteArray bytes;
    *error = tr("The kind of the file is not known.");
    return format && format->write && write(*format, &bytes, error)
        && writeOutput(path, bytes, error);
}

QString Manuscript::fateOfNotes(const QString &path) const
{
    const Format *format = formatOfFile(path);
    if (!format || format->notes != NoteSupport::None
        || MVRTextDoc::notes(&m_document->text).isEmpty())
        return QString();
    return format->read ? tr("Its notes stand in the text, between codes.")
                        : tr("Footnotes stand at its end, other notes in brackets.");
}

QByteArray Manuscript::inFormat(const QString &format) const
{
    QByteArray bytes;
    QString error;
    write(*formatByName(format), &bytes, &error);
    return bytes;
}

QString Manuscript::markup() const
{
    const auto copy = copyOf(*m_document);
    MVRNoteEdits::moveToText(&copy->text, QTextCursor()); // there are no codes for those beside it
    MVRTextDoc::toInlineMarkup(&copy->text);
    return copy->text.toPlainText();
}

int Manuscript::pageCount() const
{
    QByteArray bytes = scriptBytes(*m_document);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    MVRScreenplay screenplay;
    MVRScreenplay::fromFinalDraft(&buffer, &screenplay, nullptr);
    return MVRScreenplayPages(screenplay).pages().size();
}

QString Manuscript::copySuffix() const
{
    return isScreenplay() ? QStringLiteral("fdx") : QStringLiteral("rtf");
}

MVRRecovery::Writer Manuscript::copyWriter() const
{
    if (isScreenplay())
        return [bytes = scriptBytes(*m_document)] { return bytes; }; // its file is of this thread
    return [copy = MVRRecovery::detachedCopy(m_document->text)] {
        return MVRTextDoc::toRtf(copy.get());
    };
}
