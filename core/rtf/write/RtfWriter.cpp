// SPDX-License-Identifier: MIT
#include <core/rtf/write/RtfWriter.h>

#include <core/MVRParagraphView.h>
#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>
#include <core/document/PointSize_p.h>
#include <core/rtf/model/RtfFontNames.h>
#include <core/rtf/model/RtfFormats.h>
#include <core/rtf/model/RtfLists.h>
#include <core/rtf/model/RtfPicture.h>
#include <core/rtf/write/RtfWriterWords.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QUrl>

#include <limits>

namespace {

void appendTabs(const QList<QTextOption::Tab> &stops, QByteArray *words)
{
    for (const QTextOption::Tab &stop : stops) {
        if (stop.type == QTextOption::RightTab)
            *words += "\\tqr";
        else if (stop.type == QTextOption::CenterTab)
            *words += "\\tqc";
        else if (stop.type == QTextOption::DelimiterTab)
            *words += "\\tqdec";
        *words += "\\tx" + QByteArray::number(qRound(stop.position * 20));
    }
}

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

// The field instruction, not yet as RTF, that links to \a target.
QString linkInstruction(const QString &target)
{
    if (target.startsWith(QLatin1Char('#')) && target.size() > 1)
        return QLatin1String("HYPERLINK \\l ") + quoted(target.mid(1));
    return QLatin1String("HYPERLINK ") + quoted(target);
}

} // namespace

QByteArray RtfWriter::write(const QTextDocument &document, bool withDefaults)
{
    m_page = RtfPage::of(document);
    if (withDefaults) {
        m_saysPage = true;
        if (document.defaultFont().pointSizeF() > 0)
            m_resources.baseSize = document.defaultFont().pointSizeF();
        m_info.title = document.metaInformation(QTextDocument::DocumentTitle);
        m_info.author = document.property(MVRTextRtf::authorProperty).toString();
        writeDefaults(document);
        m_pageTexts = document.property(MVRTextRtf::pageTextsProperty).toMap();
    }
    writeBody(document);
    writeNotesUntil(std::numeric_limits<int>::max());
    return finished();
}

void RtfWriter::writeBody(const QTextDocument &document)
{
    m_document = &document;
    if (document.rootFrame()->childFrames().isEmpty()) {
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            writeBlock(block, 0, ParagraphEnd);
    } else {
        writeFrame(*document.rootFrame(), 0);
    }
}

QByteArray RtfWriter::write(const QString &text, const QTextCharFormat &format)
{
    const QByteArray words = makeRun(format).words;
    m_body.words(rtfPlainParagraph); // ends the header, so that leading blanks count
    if (!words.isEmpty())
        m_body.beginGroup();
    m_body.words(words);
    const int length = text.size();
    for (int start = 0; start <= length;) {
        int end = start;
        while (end < length && text.at(end) != QLatin1Char('\n')
               && text.at(end) != QLatin1Char('\r') && text.at(end) != QChar::ParagraphSeparator)
            ++end;
        m_body.text(QStringView(text).mid(start, end - start));
        m_body.words(QByteArrayLiteral("\\par"));
        const bool pair = end + 1 < length && text.at(end) == QLatin1Char('\r')
            && text.at(end + 1) == QLatin1Char('\n');
        start = end + (pair ? 2 : 1);
        if (start <= length)
            m_body.lineEnd();
    }
    if (!words.isEmpty())
        m_body.endGroup();
    return finished();
}

void RtfWriter::writeBlock(const QTextBlock &block, int tableLevel, BlockEnd end)
{
    writeBlockFormat(block, tableLevel);
    const int markFormat = block.charFormatIndex();
    writeRuns(block, markFormat);
    const QByteArray mark = markWords(markFormat, block);
    if (endsNote(block)) {
        m_body.words(mark);
        return;
    }
    const bool ownGroup = !m_openRun && !mark.isEmpty();
    if (ownGroup) {
        m_body.beginGroup();
        m_body.words(mark);
    }
    m_body.words(end == ParagraphEnd  ? QByteArrayLiteral("\\par")
                     : tableLevel > 1 ? QByteArrayLiteral("\\nestcell")
                                      : QByteArrayLiteral("\\cell"));
    if (ownGroup || m_openRun)
        m_body.endGroup();
    m_openRun = false;
    m_body.lineEnd();
}

// A note's group ends its last paragraph, but for an empty one: that would not be seen.
bool RtfWriter::endsNote(const QTextBlock &block) const
{
    return m_isNote && !block.next().isValid()
        && (block.length() > 1 || !block.previous().isValid());
}

void RtfWriter::writeBlockFormat(const QTextBlock &block, int tableLevel)
{
    // A format has an entry for each kind of place it stands in; its list is part of the format.
    const qint64 key = (qint64(block.blockFormatIndex()) * 2 + (m_breakBefore ? 1 : 0)) * 16
        + qMin(tableLevel, 15);
    auto known = m_paragraphs.find(key);
    if (known == m_paragraphs.end()) {
        RtfFormats::Surroundings place;
        place.breakBefore = m_breakBefore;
        place.tableLevel = tableLevel;
        place.textWidth = m_page.textWidth();
        if (const QTextList *list = block.textList()) {
            place.list = listNumber(list);
            place.listLevel = qBound(1, list->format().indent(), RtfLists::levels) - 1;
        }
        const RtfParaProps props = RtfFormats::fromBlockFormat(
            MVRParagraphView::ownFormat(block.blockFormat()), place, &m_resources);
        QByteArray words = rtfPlainParagraph;
        if (props.outline >= 0) { // the navigators of other programs go by the style
            m_resources.headings |= 1 << props.outline;
            keepHeadingLook(block, props.outline);
            words += "\\s" + QByteArray::number(props.outline + 1);
        }
        appendRtfWords(RtfParaProps(), props, &words);
        appendTabs(m_resources.tabs.value(props.tabs), &words);
        known = m_paragraphs.insert(key, words);
    }
    if (known.value() != m_paragraph || m_frameBorder != m_border) {
        m_paragraph = known.value();
        m_border = m_frameBorder;
        m_body.words(m_paragraph);
        m_body.words(m_border);
    }
    if (!m_frameStart.isEmpty())
        m_body.raw(std::exchange(m_frameStart, {}));
    m_breakBefore = block.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysAfter;
}

// A document's headings of one level look alike as a rule. Notes only use the styles.
void RtfWriter::keepHeadingLook(const QTextBlock &block, int level)
{
    if (m_isNote || block.begin().atEnd() || m_headingLooks.contains(level))
        return;
    const QTextCharFormat format = block.begin().fragment().charFormat();
    const double size = pointSizeOf(format, m_resources.baseSize);
    RtfCharProps look;
    look.font = m_resources.fontNumber(MVRToolkit::fontFamily(format));
    look.size = qRound(qBound(0.0, size * 2, double(rtfMaxFontSize)));
    look.bold = format.fontWeight() > QFont::Medium ? 1 : 0;
    look.italic = format.fontItalic() ? 1 : 0;
    QByteArray words;
    appendRtfWords(RtfCharProps(), look, &words);
    m_headingLooks.insert(level, words);
}

int RtfWriter::listNumber(const QTextList *list)
{
    auto known = m_listNumbers.find(list);
    if (known == m_listNumbers.end()) {
        m_lists.append(list->format());
        known = m_listNumbers.insert(list, m_lists.size());
    }
    return known.value();
}

void RtfWriter::writeRuns(const QTextBlock &block, int markFormat)
{
    const QString text = block.text();
    int at = block.position();
    const int blockStart = at;
    const int blockEnd = at + text.size();
    const bool isLast = endsNote(block);
    for (auto it = block.begin(); !it.atEnd();) {
        const QTextFragment fragment = it.fragment();
        const int number = fragment.charFormatIndex();
        const int end = at + fragment.length();
        ++it;
        const Run &next = run(number, fragment);
        const bool sameLink = next.link == m_link;
        if (!sameLink)
            closeLink();
        writeNotesUntil(at);
        writeBookmarks(next.bookmarks);
        if (!sameLink)
            openLink(next.link);
        const bool last = it.atEnd() && !isLast && number == markFormat && next.link == 0;
        while (at < end) {
            const int to = qMin(end, nextEdge());
            writeRun(next, QStringView(text).mid(at - blockStart, to - at),
                     last && to == blockEnd && to < nextEdge());
            at = to;
            if (at < end)
                writeNotesUntil(at);
        }
    }
    closeLink();
    writeNotesUntil(blockEnd);
}

void RtfWriter::writeRun(const Run &run, QStringView text, bool stayOpen)
{
    if (!run.words.isEmpty()) {
        m_body.beginGroup();
        m_body.words(run.words);
    }
    m_body.setHasBytes(run.isWestern);
    if (run.image)
        writePictures(static_cast<int>(text.size()), *run.image);
    else
        m_body.text(text);
    m_body.setHasBytes(true);
    m_openRun = stayOpen && !run.words.isEmpty();
    if (!run.words.isEmpty() && !m_openRun)
        m_body.endGroup();
}

// The names are among the exact properties too; other programs need these.
void RtfWriter::writeBookmarks(const QStringList &names)
{
    if (names == m_bookmarks)
        return;
    for (const QString &name : names) {
        for (const char *word : {"\\*\\bkmkstart", "\\*\\bkmkend"}) {
            m_body.beginGroup();
            m_body.words(word);
            m_body.text(name);
            m_body.endGroup();
        }
    }
    m_bookmarks = names;
}

void RtfWriter::openLink(int link)
{
    m_link = link;
    if (link == 0)
        return;
    m_body.beginGroup();
    m_body.words(QByteArrayLiteral("\\field"));
    m_body.beginGroup();
    m_body.words(QByteArrayLiteral("\\*\\fldinst"));
    m_body.text(link > 0 ? linkInstruction(m_resources.links.at(link))
                         : m_resources.links.at(-link));
    m_body.endGroup();
    m_body.beginGroup();
    m_body.words(QByteArrayLiteral("\\fldrslt"));
}

void RtfWriter::closeLink()
{
    if (m_link != 0) {
        m_body.endGroup();
        m_body.endGroup();
    }
    m_link = 0;
}

const RtfWriter::Run &RtfWriter::run(int formatNumber, const QTextFragment &fragment)
{
    auto known = m_runs.find(formatNumber);
    if (known == m_runs.end())
        known = m_runs.insert(formatNumber, makeRun(fragment.charFormat()));
    return known.value();
}

RtfWriter::Run RtfWriter::makeRun(const QTextCharFormat &format)
{
    const RtfCharProps props = RtfFormats::fromCharFormat(format, true, &m_resources);
    Run made;
    made.link = props.link > 0 ? props.link : -props.field;
    made.bookmarks = format.anchorNames();
    made.isWestern = RtfFontNames::charset(MVRToolkit::fontFamily(format)) == 0;
    if (format.isImageFormat())
        made.image = format.toImageFormat();
    appendRtfWords(RtfCharProps(), props, &made.words);
    return made;
}

const QByteArray &RtfWriter::markWords(int formatNumber, const QTextBlock &block)
{
    auto known = m_marks.find(formatNumber);
    if (known == m_marks.end()) {
        QByteArray words;
        // At the edges of a table's cells this format is the cell's or the table's.
        const QTextCharFormat format = block.charFormat();
        if (!format.isEmpty() && format.objectIndex() < 0)
            appendRtfWords(RtfCharProps(), RtfFormats::fromCharFormat(format, false, &m_resources),
                           &words);
        known = m_marks.insert(formatNumber, words);
    }
    return known.value();
}

void RtfWriter::writeDefaults(const QTextDocument &document)
{
    QTextCharFormat format;
    MVRToolkit::setFontFamily(&format, document.defaultFont().family());
    if (document.defaultFont().pointSizeF() > 0)
        format.setFontPointSize(document.defaultFont().pointSizeF());
    appendRtfWords(RtfCharProps(), RtfFormats::fromCharFormat(format, true, &m_resources),
                   &m_defaults);
    // Other programs take these as the formatting of all that says nothing else.
    m_defaults += "{\\*\\mvrdefaults}";
}

// RTF has a picture wherever it stands; without a bound some bytes of text that name the same one
// again and again would become a file of any size.
void RtfWriter::writePictures(int count, const QTextImageFormat &image)
{
    const QVariant resource
        = m_document->resource(QTextDocument::ImageResource, QUrl(image.name()));
    // To compress a picture takes longer than all the rest; one that is there twice is not again.
    auto file = m_pictures.find(image.name());
    const int unbounded = file == m_pictures.end() ? 1 : 0;
    if (unbounded > 0)
        file = m_pictures.insert(image.name(), RtfPicture::toFile(resource));
    const QByteArray rtf = RtfPicture::toRtf(resource, file.value(), image);
    // Pictures that are equal share a run.
    const int whole = int(qMin<qint64>(count, unbounded + m_repeatsLeft / rtf.size()));
    m_repeatsLeft -= qint64(whole - unbounded) * rtf.size();
    for (int i = 0; i < whole; ++i)
        m_body.raw(rtf);
    if (whole < count)
        writeReducedPictures(count - whole, file.value(), image);
}

void RtfWriter::writeReducedPictures(int count, const QByteArray &file, QTextImageFormat image)
{
    QByteArray &reduced = m_reducedPictures[image.name()];
    if (reduced.isEmpty())
        reduced = RtfPicture::reduced(file);
    const QSize pixels = RtfPicture::pixelSize(file);
    constexpr double pointsPerPixel = 0.75;
    if (image.width() <= 0)
        image.setWidth(pixels.width() * pointsPerPixel);
    if (image.height() <= 0)
        image.setHeight(pixels.height() * pointsPerPixel);
    const QByteArray rtf = RtfPicture::toRtf(QVariant(), reduced, image);
    for (int i = 0; i < count; ++i)
        m_body.raw(rtf);
}
