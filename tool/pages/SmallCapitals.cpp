// SPDX-License-Identifier: MIT
#include <tool/pages/SmallCapitals.h>

#include <core/document/EditBlock_p.h>
#include <core/document/PointSize_p.h>
#include <core/document/TextFragments_p.h>

#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QVector>

#include <algorithm>

namespace {

constexpr double share = 0.7; // of the size of capitals, as the toolkit has them

struct Run
{
    int start;
    int end;
    QString text; // null where it stays
    QTextCharFormat format;
};

bool isShownSmall(const QTextCharFormat &format)
{
    return format.fontCapitalization() == QFont::SmallCaps && !format.isImageFormat();
}

QTextCharFormat smaller(QTextCharFormat format, double usualSize)
{
    const double size = pointSizeOf(format, usualSize);
    format.setFontPointSize((size > 0.0 ? size : usualSize) * share);
    format.clearProperty(QTextFormat::FontSizeAdjustment);
    return format;
}

QString capitals(QString text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](QChar letter) { return letter.toUpper(); });
    return text;
}

// Parts the text of one format where small letters begin and end.
void appendRuns(int start, const QString &text, QTextCharFormat format, double usualSize,
                QVector<Run> &runs)
{
    format.setFontCapitalization(QFont::MixedCase);
    const QTextCharFormat small = smaller(format, usualSize);
    for (int i = 0; i < text.size();) {
        const bool isSmall = text[i].isLower();
        const int first = i;
        while (i < text.size() && text[i].isLower() == isSmall)
            ++i;
        if (isSmall)
            runs.append({start + first, start + i, capitals(text.mid(first, i - first)), small});
        else
            runs.append({start + first, start + i, QString(), format});
    }
}

}

void putSmallCapitals(QTextDocument &text)
{
    const QVector<QTextFormat> formats = text.allFormats();
    if (std::none_of(formats.cbegin(), formats.cend(),
                     [](const QTextFormat &format) { return isShownSmall(format.toCharFormat()); }))
        return;
    QVector<Run> runs;
    const double usualSize = text.defaultFont().pointSizeF();
    for (FragmentWalker walker(&text, 0); walker.isValid(); walker.next()) {
        if (isShownSmall(walker.format()))
            appendRuns(walker.start(), walker.text(), walker.format(), usualSize, runs);
    }
    const EditBlock edit(&text);
    QTextCursor cursor(&text);
    for (auto run = runs.crbegin(); run != runs.crend(); ++run) {
        cursor.setPosition(run->start);
        cursor.setPosition(run->end, QTextCursor::KeepAnchor);
        if (run->text.isNull())
            cursor.setCharFormat(run->format);
        else
            cursor.insertText(run->text, run->format);
    }
}
