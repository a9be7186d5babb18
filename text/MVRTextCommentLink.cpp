// SPDX-License-Identifier: MIT
#include <text/MVRTextCommentLink.h>

#include <core/MVRTextFormat.h>

#include <QDataStream>
#include <QIODevice>
#include <QTextCharFormat>

namespace {

constexpr const char *versionTag = "MVRTextCommentLink::1.0";

/*!
    A stream can name any number as the kind of a colour. To look at one that is no QColor::Spec is
    undefined, so it is looked at as the first byte that Qt writes of it.
*/
bool isKnownKind(const QColor &color)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << color;
    return static_cast<uchar>(bytes.at(0)) <= QColor::ExtendedRgb;
}

} // namespace

MVRTextCommentLink::MVRTextCommentLink()
    : isFootnote(false)
    , extraFlag(false)
{
}

MVRTextCommentLink::MVRTextCommentLink(const QTextCharFormat &format)
    : isFootnote(format.boolProperty(MVRTextFormat::InspectorFootnoteProperty))
    , extraFlag(false)
    , cdata(format.property(MVRTextFormat::CommentCDataProperty).toByteArray())
{
    // A footnote made of a comment may still hold the comment's colour.
    if (!isFootnote)
        color = format.colorProperty(MVRTextFormat::CommentColorProperty);
}

QDataStream &operator<<(QDataStream &stream, const MVRTextCommentLink &link)
{
    return stream << QString(QLatin1String(versionTag)) << link.color << link.extraFlag
                  << link.isFootnote << link.cdata;
}

QDataStream &operator>>(QDataStream &stream, MVRTextCommentLink &link)
{
    QString tag;
    stream >> tag;
    if (tag != QLatin1String(versionTag))
        return stream;
    MVRTextCommentLink read;
    stream >> read.color >> read.extraFlag >> read.isFootnote >> read.cdata;
    // A component that is no number is not even equal to itself.
    const bool isWhole = stream.status() == QDataStream::Ok && isKnownKind(read.color)
        && read.color == QColor(read.color);
    link = isWhole ? read : MVRTextCommentLink();
    return stream;
}
