// SPDX-License-Identifier: MIT
#pragma once

#include <tool/formats/markdown/CmarkNodes.h>

#include <QByteArray>
#include <QString>
#include <QTextCharFormat>
#include <QVector>

/*! Text of one format. */
struct MarkdownRun
{
    QString text;
    QTextCharFormat format;
};
using MarkdownRuns = QVector<MarkdownRun>;

/*! A note in the text of one paragraph. */
struct MarkdownNote
{
    int start
        = 0; /*!< what it is about, counted from the paragraph's start; equal to the end when */
    int end = 0; /*!< only the place of its mark is known */
    int footnote = -1; /*!< number of its definition, from 0; below 0 for a comment */
    MarkdownRuns comment; /*!< its content */
};

/*! The text of a paragraph, heading or cell. */
struct MarkdownText
{
    MarkdownRuns runs;
    QVector<MarkdownNote> notes;

    int length() const;
};

/*! Reads what stands in \a node; \a format is that of all of it. */
MarkdownText readMarkdownText(cmark_node *node, const QTextCharFormat &format);

/*! The content of an HTML comment; null for other HTML. */
QString htmlComment(const QString &html);
