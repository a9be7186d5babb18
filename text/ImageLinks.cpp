// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextFormat.h>
#include <core/document/EditBlock_p.h>
#include <core/document/WellFormed_p.h>
#include <text/LinkedPictures_p.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextBlock>
#include <QTextDocument>

namespace {

/*! A code in the text: where it stands, and what it says. */
struct ImageLink
{
    MVRTextRange range;
    QString path;
    QSize size;
};

/*!
    The number that \a digits say, 1 at least; \a defaultValue when it is longer than an int.
*/
int numberOf(const QString &digits, int defaultValue)
{
    bool isNumber = false;
    const int number = digits.toInt(&isNumber);
    return isNumber ? qMax(1, number) : defaultValue;
}

ImageLink imageLink(const QString &code, const QRegularExpressionMatch &match, int position)
{
    QString path = code.mid(code.indexOf(QLatin1Char('=')) + 1);
    for (const char ending : {'}', '\\'}) {
        if (path.endsWith(QLatin1Char(ending)))
            path.chop(1);
    }
    return {MVRTextRange(position, position + int(code.size())), path,
            QSize(numberOf(match.captured(1), 800), numberOf(match.captured(2), 600))};
}

/*! Collects the codes of a paragraph. */
void collectImageLinks(const QString &text, int position, QVector<ImageLink> *links)
{
    static const QRegularExpression floatingImageExp(
        QStringLiteral("\\A\\{\\$MVRImageLink\\[w:(\\d+);h:(\\d+)\\]=([^}]+)\\}\\z"),
        QRegularExpression::UseUnicodePropertiesOption);
    const QLatin1String opening("{$MVRImageLink[w:");
    // Searching for the expression itself would read up to the end of the text for every opening
    // that nothing closes. No code goes on beyond the first brace that closes.
    int end = -1;
    int start = int(text.indexOf(opening));
    const QString searched = start < 0 ? QString() : wellFormed(text);
    for (; start >= 0; start = int(text.indexOf(opening, start))) {
        if (end < start)
            end = int(text.indexOf(QLatin1Char('}'), start));
        if (end < 0)
            return;
        const int size = end + 1 - start;
        const QString code = QString::fromRawData(searched.constData() + start, size);
        const QRegularExpressionMatch match = findMatch(floatingImageExp, code, 0);
        if (match.hasMatch()) {
            links->append(imageLink(text.mid(start, size), match, position + start));
            start = end;
        } else {
            start += opening.size();
        }
    }
}

void insertPicture(QTextCursor &cursor, const ImageLink &link, LinkedPictures &pictures)
{
    const LinkedPictures::File file = pictures.find(link.path);
    QString toolTip = QCoreApplication::translate("QObject", "Image Link: '%1'").arg(file.path);
    if (!file.exists)
        toolTip.prepend(QCoreApplication::translate("QObject", "Missing "));
    const EditBlock undoStep(cursor);
    cursor.setPosition(link.range.start);
    cursor.setPosition(link.range.end, QTextCursor::KeepAnchor);
    QTextImageFormat format;
    format.merge(cursor.charFormat());
    format.setName(pictures.add(file, link.size));
    format.setWidth(link.size.width());
    format.setHeight(link.size.height());
    format.setToolTip(toolTip);
    format.setProperty(MVRTextFormat::ImageLinkProperty, file.path);
    format.setProperty(MVRTextFormat::ImageLinkBaseNameProperty, QFileInfo(file.path).baseName());
    cursor.insertImage(format);
}

} // namespace

void MVRTextDoc::fromInlineMarkupImageLinks(QTextDocument *document)
{
    fromInlineMarkupImageLinks(document, MVRPicturePolicy::anywhere());
}

void MVRTextDoc::fromInlineMarkupImageLinks(QTextDocument *document, const MVRPicturePolicy &policy)
{
    if (!document)
        return;
    QVector<ImageLink> links;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        collectImageLinks(block.text(), block.position(), &links);
    if (links.isEmpty())
        return;
    UnrecordedEditBlock unrecorded(document);
    unrecorded.begin();
    LinkedPictures pictures(document, policy);
    QTextCursor cursor(document);
    // From the last to the first, so that a picture moves no code still to be read.
    for (auto link = links.crbegin(); link != links.crend(); ++link)
        insertPicture(cursor, *link, pictures);
}
