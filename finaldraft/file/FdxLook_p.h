// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraft.h>
#include <finaldraft/file/FdxElement_p.h>

#include <QByteArray>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QVector>

/*! Words of a style beyond MVRFinalDraft::FontStyleFlag. */
constexpr int fdxSmallCaps = 0x80;
constexpr int fdxHiddenText = 0x100;

/*! How a run of text looks, as far as a file can say it. */
struct FdxLook
{
    QString font = QStringLiteral("Courier Final Draft");
    double size = 12.0; /*!< points */
    QColor color = Qt::black;
    QColor background = Qt::white;
    int style = 0; /*!< flags of MVRFinalDraft::FontStyleFlag and the two above */

    /*! This look with what the attributes of a Text or FontSpec say; no Style leaves it. */
    FdxLook with(const FdxElement &element) const;
    /*! This look with what a format says; what the format leaves open stays. */
    FdxLook with(const QTextCharFormat &format) const;
    /*! A format that says all in which the look differs from nothing or from \a base. */
    QTextCharFormat toCharFormat(const FdxLook &base) const;

    /*! "Bold+AllCaps". */
    QByteArray styleText() const;
    bool hasFontOf(const FdxLook &other) const;

    bool operator==(const FdxLook &other) const { return style == other.style && hasFontOf(other); }
    bool operator!=(const FdxLook &other) const { return !(*this == other); }
};

/*! The colour of "#RRRRGGGGBBBB", which shows its high bytes; \a fallback for anything else. */
QColor fdxColor(const QByteArray &digits, const QColor &fallback);

/*! The shape of a paragraph is MVRFinalDraft::ParagraphAttr without leading and style. */
bool fdxIsSameShape(const MVRFinalDraft::ParagraphAttr &a, const MVRFinalDraft::ParagraphAttr &b);

/*! Takes what the attributes of a Paragraph or ParagraphSpec say; \a margin in points. */
void fdxReadShape(const FdxElement &element, double margin, MVRFinalDraft::ParagraphAttr *shape);

/*! \a base with what a format says; indents count from the text margin in both. */
MVRFinalDraft::ParagraphAttr fdxShape(const QTextBlockFormat &format,
                                      const MVRFinalDraft::ParagraphAttr &base);

/*! One attribute of a paragraph. */
struct FdxAttribute
{
    const char *name;
    QByteArray value;
};

/*! What a paragraph has to say to have \a shape where \a base is given; \a margin in points. */
QVector<FdxAttribute> fdxShapeAttributes(const MVRFinalDraft::ParagraphAttr &shape,
                                         const MVRFinalDraft::ParagraphAttr &base, double margin);

/*! Whether an attribute says something of a paragraph's shape. */
bool fdxIsShapeAttribute(const FdxSourceAttribute &attribute);
