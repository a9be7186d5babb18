// SPDX-License-Identifier: MIT
#include <tool/formats/ScreenplayPages.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/Formats.h>
#include <tool/pages/PageSlices.h>

#include <pages/MVRScreenplayFace.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QFontInfo>

#include <mutex>

namespace {

QByteArray markOf(const QTextDocument &text)
{
    return QCryptographicHash::hash(text.toPlainText().toUtf8(), QCryptographicHash::Sha256);
}

bool readFile(QByteArray bytes, MVRScreenplay *screenplay)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return !bytes.isEmpty() && MVRScreenplay::fromFinalDraft(&buffer, screenplay, nullptr);
}

// What is printed is what would be saved: with scene numbers, revisions and all.
bool readEdited(const Document &document, MVRScreenplay *screenplay)
{
    return document.script
        && MVRScreenplay::fromFinalDraft(document.script.get(), &document.text, screenplay,
                                         nullptr);
}

MVRScreenplay screenplayOf(const Document &document)
{
    MVRScreenplay screenplay;
    const bool isEdited = markOf(document.text) != document.sourceMark;
    if (!(isEdited ? readEdited(document, &screenplay) : readFile(document.source, &screenplay)))
        screenplay = MVRScreenplay::fromDocument(document.text, document.titlePageBlocks);
    screenplay.title = document.title;
    return screenplay;
}

// Pages are to break alike on every machine. A batch says it once.
void sayWhatFaceIsMissing()
{
    static std::once_flag said;
    std::call_once(said, [] {
        const QString taken = QFontInfo(QFont(MVRScreenplayFace::family())).family();
        if (taken != MVRScreenplayFace::family())
            printMessage(QString(),
                         Tool::tr("Courier Prime is not installed: the pages are set in %1, and"
                                  " break elsewhere")
                             .arg(taken));
    });
}

}

std::optional<MVRScreenplayPages> screenplayPages(const Document &document,
                                                  const WriteOptions &options, QString *error)
{
    sayWhatFaceIsMissing();
    MVRScreenplay screenplay = screenplayOf(document);
    if (options.paper)
        screenplay.settings.pageSize = options.paper->size(QPageSize::Point);
    MVRScreenplayPages pages(screenplay);
    if (!options.hasRevisionMarks)
        pages.removeRevisionMarks();
    if (!options.firstScene.isEmpty() && !pages.keepScenes(options.firstScene, options.lastScene)) {
        *error = Tool::tr("has no scenes %1-%2").arg(options.firstScene, options.lastScene);
        return std::nullopt;
    }
    if (options.firstPage > 0 && !pages.keepPages(options.firstPage, options.lastPage)) {
        *error = Tool::tr("has no pages %1-%2").arg(options.firstPage).arg(options.lastPage);
        return std::nullopt;
    }
    if (pages.pages().size() > mostPages) {
        *error = Tool::tr("is too long for pages");
        return std::nullopt;
    }
    return pages;
}

void noteSource(Document &document, const QByteArray &bytes)
{
    document.source = bytes;
    document.sourceMark = markOf(document.text);
}
