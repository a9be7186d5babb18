// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextFormat.h>
#include <core/document/EditBlock_p.h>
#include <text/LinkedPictures_p.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegExp>
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
    The first number that \a expression finds in \a code, 1 at least; \a defaultValue when it is
    longer than an int.
*/
int numberIn(const QString &code, QRegExp expression, int defaultValue)
{
    expression.indexIn(code);
    bool isNumber = false;
    const int number = expression.cap(1).toInt(&isNumber);
    return isNumber ? qMax(1, number) : defaultValue;
}

ImageLink imageLink(const QString &code, int position)
{
    static const QRegExp widthRegExp(QStringLiteral("w:(\\d+)"));
    static const QRegExp heightRegExp(QStringLiteral("h:(\\d+)"));
    QString path = code.mid(code.indexOf(QLatin1Char('=')) + 1);
    for (const char ending : {'}', '\\'}) {
        if (path.endsWith(QLatin1Char(ending)))
            path.chop(1);
    }
    return {MVRTextRange(position, position + code.size()), path,
            QSize(numberIn(code, widthRegExp, 800), numberIn(code, heightRegExp, 600))};
}

/*! Collects the codes of a paragraph. */
void collectImageLinks(const QString &text, int position, QVector<ImageLink> *links)
{
    static const QRegExp floatingImageExp(
        QStringLiteral("\\{\\$MVRImageLink\\[w:(\\d+);h:(\\d+)\\]=([^}]+)\\}"));
    const QLatin1String opening("{$MVRImageLink[w:");
    const QRegExp expression = floatingImageExp;
    // Searching for the expression itself would read up to the end of the text for every opening
    // that nothing closes. No code goes on beyond the first brace that closes.
    int end = -1;
    for (int start = text.indexOf(opening); start >= 0; start = text.indexOf(opening, start)) {
        if (end < start)
            end = text.indexOf(QLatin1Char('}'), start);
        if (end < 0)
            return;
        const QString code = QString::fromRawData(text.constData() + start, end + 1 - start);
        if (expression.exactMatch(code)) {
            links->append(imageLink(text.mid(start, code.size()), position + start));
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
