// SPDX-License-Identifier: MIT
#include "Manuscript.h"

#include <core/MVRCoreUtil.h>
#include <core/MVRToolkit.h>
#include <core/STextDoc.h>
#include <pages/MVRScreenplayPages.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextDocument>
#include <QUrl>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Manuscript", text);
}

/*! A document whose text may name pictures, of which it gets those beside its file. */
class TextWithPictures : public QTextDocument
{
public:
    explicit TextWithPictures(const QString &file = QString())
        : m_folder(QFileInfo(file).absolutePath())
        , m_policy(file.isEmpty() ? MVRPicturePolicy::nowhere() : MVRPicturePolicy::below(m_folder))
    {
    }
    const MVRPicturePolicy &policy() const { return m_policy; }

protected:
    QVariant loadResource(int type, const QUrl &name) override
    {
        const QString path = m_folder + QLatin1Char('/') + name.path();
        if (type != ImageResource || !name.isRelative() || !m_policy.allows(path))
            return QVariant();
        return MVRCoreUtil::ReadBinaryFile(path, nullptr);
    }

private:
    QString m_folder;
    MVRPicturePolicy m_policy;
};

bool readRtf(const QByteArray &bytes, TextWithPictures *document)
{
    return MVRTextDoc::fromRtf(bytes, document);
}

bool readMarkdown(const QByteArray &bytes, TextWithPictures *document)
{
    // Lists in lists in lists cost more than they are worth.
    static const QRegularExpression deepLine(
        QStringLiteral("^(?:[ \\t]*+(?:>|[*+-][ \\t]|[0-9]{1,9}[.)][ \\t])){100}"),
        QRegularExpression::MultilineOption);
    const QString text = QString::fromUtf8(bytes);
    if (deepLine.match(text).hasMatch())
        return false;
    document->setMarkdown(text,
                          QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub
                                                          | QTextDocument::MarkdownNoHTML));
    MVRTextDoc::fromInlineMarkup(document, document->policy());
    return true;
}

bool readHtml(const QByteArray &bytes, TextWithPictures *document)
{
    document->setHtml(QString::fromUtf8(bytes));
    MVRTextDoc::fromInlineMarkup(document, document->policy());
    return true;
}

QByteArray writeRtf(const QTextDocument &document)
{
    return MVRTextDoc::toRtf(&document);
}

/*! A copy as other programs are to see it, all notes in the text between codes. */
std::unique_ptr<QTextDocument> withCodes(const QTextDocument &document)
{
    std::unique_ptr<QTextDocument> copy(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    copy->setUndoRedoEnabled(false);
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(copy.get(), QTextCursor());
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(copy.get(), QTextCursor());
    MVRTextDoc::toInlineMarkup(copy.get());
    MVRToolkit::toStockParagraphs(copy.get(), 468.0);
    return copy;
}

QByteArray writeMarkdown(const QTextDocument &document)
{
    return withCodes(document)->toMarkdown().toUtf8();
}

QByteArray writeHtml(const QTextDocument &document)
{
    return MVRToolkit::toHtml(*withCodes(document)).toUtf8();
}

/*! A way to keep text in a file; screenplays are another. */
struct TextFormat
{
    const char *name;
    const char *patterns;
    bool (*read)(const QByteArray &bytes, TextWithPictures *document);
    QByteArray (*write)(const QTextDocument &document);
};

constexpr TextFormat formats[] = {
    {"RTF", "*.rtf", readRtf, writeRtf},
    {"Markdown", "*.md *.markdown", readMarkdown, writeMarkdown},
    {"HTML", "*.html *.htm", readHtml, writeHtml},
};
constexpr const char *screenplays = "Final Draft (*.fdx *.fdxt)";

const TextFormat *formatOf(const QString &path)
{
    const QString pattern = QLatin1String("*.") + QFileInfo(path).suffix().toLower();
    for (const TextFormat &format : formats) {
        if (QString::fromLatin1(format.patterns).split(QLatin1Char(' ')).contains(pattern))
            return &format;
    }
    return nullptr;
}

bool isScript(const QString &path)
{
    return QFileInfo(path).suffix().startsWith(QLatin1String("fdx"), Qt::CaseInsensitive);
}

QString nameOfType(const TextFormat &format)
{
    return QStringLiteral("%1 (%2)").arg(QLatin1String(format.name),
                                         QLatin1String(format.patterns));
}

bool writeFile(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile file(path);
    const bool isWritten
        = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    if (!isWritten)
        *error = file.errorString();
    return isWritten;
}

QByteArray scriptBytes(MVRFinalDraftFile *script, const QTextDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return script->write(&buffer, &document) ? buffer.data() : QByteArray();
}

} // namespace

Manuscript::Manuscript() = default;
Manuscript::~Manuscript() = default;

QString Manuscript::openFilter()
{
    QStringList patterns = {QStringLiteral("*.fdx *.fdxt")};
    for (const TextFormat &format : formats)
        patterns += QLatin1String(format.patterns);
    return tr("Texts and screenplays (%1)").arg(patterns.join(QLatin1Char(' ')));
}

QString Manuscript::saveFilter()
{
    QStringList names;
    for (const TextFormat &format : formats)
        names += nameOfType(format);
    names.insert(1, QLatin1String(screenplays));
    return names.join(QLatin1String(";;"));
}

bool Manuscript::canOpen(const QString &path)
{
    return isScript(path) || formatOf(path);
}

std::unique_ptr<QTextDocument> Manuscript::startNew(bool isScreenplay)
{
    m_path.clear();
    m_script = isScreenplay ? std::make_unique<MVRFinalDraftFile>() : nullptr;
    auto document = std::make_unique<TextWithPictures>();
    if (isScreenplay)
        document->setDocumentMargin(72.0);
    return document;
}

std::unique_ptr<QTextDocument> Manuscript::open(const QString &path, QString *error)
{
    auto document = std::make_unique<TextWithPictures>(path);
    std::unique_ptr<MVRFinalDraftFile> script;
    const TextFormat *format = formatOf(path);
    if (isScript(path)) {
        script = std::make_unique<MVRFinalDraftFile>();
        if (!script->load(path) || !script->read(document.get())) {
            *error = script->errorString();
            return nullptr;
        }
    } else {
        const QByteArray bytes = MVRCoreUtil::ReadBinaryFile(path, error);
        if (bytes.isNull())
            return nullptr;
        if (!format || !format->read(bytes, document.get())) {
            *error = tr("The file is damaged, or of a kind that is not known.");
            return nullptr;
        }
    }
    m_path = path;
    m_script = std::move(script);
    document->setModified(false);
    return document;
}

bool Manuscript::save(const QTextDocument &document, const QString &path, QString *error)
{
    const bool becomesScript = isScript(path);
    const TextFormat *format = formatOf(path);
    if (!becomesScript && !format) {
        *error = tr("Texts are saved as RTF, Final Draft, Markdown or HTML.");
        return false;
    }
    std::unique_ptr<MVRFinalDraftFile> newScript;
    if (becomesScript && !m_script)
        newScript = std::make_unique<MVRFinalDraftFile>();
    const QByteArray bytes = becomesScript
        ? scriptBytes(m_script ? m_script.get() : newScript.get(), document)
        : format->write(document);
    if (bytes.isEmpty() || !writeFile(path, bytes, error))
        return false;
    if (newScript)
        m_script = std::move(newScript);
    else if (!becomesScript)
        m_script.reset();
    m_path = path;
    return true;
}

QString Manuscript::copySuffix() const
{
    return m_script ? QStringLiteral("fdx") : QStringLiteral("rtf");
}

bool Manuscript::saveCopy(const QTextDocument &document, const QString &path) const
{
    QString error;
    const QByteArray bytes
        = m_script ? scriptBytes(m_script.get(), document) : MVRTextDoc::toRtf(&document);
    return !bytes.isEmpty() && writeFile(path, bytes, &error);
}

MVRScreenplayPages Manuscript::pages(const QTextDocument &document) const
{
    QByteArray bytes = m_script ? scriptBytes(m_script.get(), document) : QByteArray();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    MVRScreenplay screenplay;
    MVRScreenplay::fromFinalDraft(&buffer, &screenplay, nullptr);
    return MVRScreenplayPages(screenplay);
}
