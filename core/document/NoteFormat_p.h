// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>

#include <QTextCharFormat>

/*! The anchors that inspector notes carry: "Comment:" or "Footnote:" and an identifier. */
inline bool isNoteAnchor(const QString &href)
{
    return href.startsWith(QLatin1String("Footnote:"))
        || href.startsWith(QLatin1String("Comment:"));
}

/*! The content of the note that \a format carries, as RTF. */
inline QByteArray noteContent(const QTextCharFormat &format)
{
    return format.property(MVRTextFormat::CommentCDataProperty).toByteArray();
}

/*! Equal bytes; the content of one note is usually one array shared by all its fragments. */
inline bool isSameContent(const QByteArray &a, const QByteArray &b)
{
    return (a.constData() == b.constData() && a.size() == b.size()) || a == b;
}

/*!
    Takes an inspector note and its own anchor, never another link, out of \a format, and gives back
    the link that the note had covered.
*/
inline void clearNoteProperties(QTextCharFormat &format)
{
    constexpr int noteProperties[] = {
        MVRTextFormat::CommentLinkProperty,       MVRTextFormat::CommentCDataProperty,
        MVRTextFormat::CommentColorProperty,      MVRTextFormat::InspectorCommentProperty,
        MVRTextFormat::InspectorFootnoteProperty, MVRTextFormat::CommentAuthorProperty,
        MVRTextFormat::CommentDateProperty,       MVRTextFormat::CommentResolvedProperty,
    };
    for (const int property : noteProperties) {
        if (format.hasProperty(property)) // clearing an absent one copies the whole format
            format.clearProperty(property);
    }
    const QString link = format.stringProperty(MVRTextFormat::CoveredLinkProperty);
    if (format.hasProperty(MVRTextFormat::CoveredLinkProperty))
        format.clearProperty(MVRTextFormat::CoveredLinkProperty);
    if (!isNoteAnchor(format.anchorHref()))
        return;
    if (!link.isEmpty()) {
        format.setAnchorHref(link);
    } else {
        format.clearProperty(QTextFormat::AnchorHref);
        // What is left of a link that a note was written over leads nowhere.
        if (!format.hasProperty(QTextFormat::AnchorName))
            format.clearProperty(QTextFormat::IsAnchor);
    }
}
