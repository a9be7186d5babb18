// SPDX-License-Identifier: MIT
#include <pages/ShapedText_p.h>

#include <pages/MVRScreenplayFace.h>

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>

using MVRFinalDraft::TextAttr;

namespace {

constexpr double courierWidth = 0.6; // of the size: ten letters to the inch at 12 points
constexpr double maxSize = 400.0; // points; beyond any page
constexpr double defaultSize = 12.0;
constexpr int longestSegment = 64; // characters that are measured at once
constexpr int longestPiece = 2000; // characters in which places for breaks are looked for at once

double sizeOf(const TextAttr &attr)
{
    return attr.size > 0.0 && attr.size <= maxSize ? attr.size : defaultSize;
}

// What the screenplay face has, each letter in a cell of its own.
bool isTypewriter(QChar c)
{
    static const QString others = QStringLiteral("‐‑–—‘’‚“”„†‡•…‰‹›€™");
    const ushort code = c.unicode();
    if (code < 0x20)
        return code == '\t' || code == '\n';
    return code < 0x7f || (code >= 0xa0 && code < 0x180 && code != 0xad) || others.contains(c);
}

// Line ends of all kinds are one; what cannot be seen goes.
QString cleaned(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QString result;
    result.reserve(text.size());
    for (const QChar c : qAsConst(text)) {
        const ushort code = c.unicode();
        if (code == '\r' || code == '\v' || code == '\f' || code == 0x2028 || code == 0x2029)
            result += QLatin1Char('\n');
        else if (code == '\n' || code == '\t' || (code >= 0x20 && code != 0x7f && code != 0xfffc))
            result += c;
    }
    return result;
}

bool breaksBetween(QChar before, QChar c, QChar beforeBoth)
{
    if (c == QLatin1Char('\n') || hangs(c))
        return false;
    if (hangs(before) || before == QLatin1Char('\n'))
        return true;
    const bool isDash = before.unicode() == 0x2013 || before.unicode() == 0x2014;
    const bool isHyphen = before == QLatin1Char('-') || before.unicode() == 0x2010;
    return c.isLetterOrNumber() && (isDash || (isHyphen && !beforeBoth.isSpace()));
}

}

QFont pageFont(const TextAttr &attr)
{
    using namespace MVRFinalDraft;
    QFont font(MVRScreenplayFace::isAlias(attr.font) ? MVRScreenplayFace::family() : attr.font);
    font.setPixelSize(qMax(1, qRound(sizeOf(attr) * fontUnits)));
    font.setBold(attr.style.testFlag(Bold));
    font.setItalic(attr.style.testFlag(Italic));
    font.setUnderline(attr.style & (Underline | WordUnderline | DottedUnderline));
    font.setStrikeOut(attr.style.testFlag(Strikeout));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

ShapedText::ShapedText(const QVector<MVRScreenplayRun> &runs)
{
    for (const MVRScreenplayRun &run : runs)
        append(run);
    m_isRightToLeft = m_needsShaping && m_text.isRightToLeft();
    findBreaks();
    measure();
}

void ShapedText::append(const MVRScreenplayRun &run)
{
    QString text = cleaned(run.text);
    if (run.attr.style.testFlag(MVRFinalDraft::AllCaps))
        text = text.toUpper();
    if (text.isEmpty())
        return;
    m_text += text;
    m_runs.append({QString(), run.attr, QString()});
    m_runEnds.append(m_text.size());
    m_largestSize = qMax(m_largestSize, sizeOf(run.attr));
    m_needsShaping = m_needsShaping || !MVRScreenplayFace::isAlias(run.attr.font)
        || !std::all_of(text.cbegin(), text.cend(), isTypewriter);
}

void ShapedText::findBreaks()
{
    m_breaks.fill(false, m_text.size());
    if (m_needsShaping) {
        for (int start = 0; start < m_text.size();)
            start = findBreaksFrom(start);
        return;
    }
    for (int i = 1; i < m_text.size(); ++i)
        m_breaks[i] = breaksBetween(m_text[i - 1], m_text[i],
                                    i > 1 ? m_text[i - 2] : QChar(QLatin1Char(' ')));
}

/*! Finds those of a piece; \return where the next one begins: at the last place that was found. */
int ShapedText::findBreaksFrom(int start)
{
    const QString piece = m_text.mid(start, longestPiece); // words of some scripts cost its square
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, piece);
    const int end = start + int(piece.size());
    int last = end;
    for (int i = start + int(finder.toNextBoundary()); i > start && i < end;
         i = start + int(finder.toNextBoundary())) {
        m_breaks[i] = !hangs(m_text[i]) && m_text[i] != QLatin1Char('\n');
        last = i;
    }
    return end < m_text.size() ? last : end;
}

/*! Where the letter ends that the character in front of \a place belongs to. */
int ShapedText::letterEnd(int place) const
{
    const int start = qMax(0, place - longestSegment);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme,
                               m_text.mid(start, 2 * longestSegment));
    finder.setPosition(place - start);
    const int end = finder.isAtBoundary() ? -1 : int(finder.toNextBoundary());
    return end > 0 ? start + end : place;
}

void ShapedText::measure()
{
    m_widths.fill(0.0F, m_text.size());
    int start = 0;
    for (int run = 0; run < m_runs.size(); ++run) {
        const bool isCounted = MVRScreenplayFace::isAlias(m_runs[run].attr.font);
        const auto cell = float(sizeOf(m_runs[run].attr) * courierWidth);
        for (; start < m_runEnds[run]; ++start)
            m_widths[start] = isCounted && m_text[start] >= QLatin1Char(' ') ? cell : 0.0F;
    }
    if (!m_needsShaping)
        return;
    for (int from = 0; from < m_text.size();) {
        int to = from + 1;
        while (to < m_text.size() && !m_breaks[to] && to - from < longestSegment)
            ++to;
        if (to < m_text.size() && !m_breaks[to])
            to = letterEnd(to);
        measureSegment({from, to});
        from = to;
    }
}

void ShapedText::measureSegment(const TextSpan &segment)
{
    const QVector<Piece> parts = pieces(segment);
    const auto isCounted = [this](const Piece &part) {
        return MVRScreenplayFace::isAlias(m_runs[part.run].attr.font)
            && std::all_of(m_text.cbegin() + part.span.start, m_text.cbegin() + part.span.end,
                           isTypewriter);
    };
    for (const Piece &part : parts) {
        if (isCounted(part))
            continue;
        const int length = part.span.end - part.span.start;
        QString text = m_text.mid(part.span.start, length);
        text.replace(QLatin1Char('\n'), QChar(0x200b)).replace(QLatin1Char('\t'), QChar(0x200b));
        QTextLayout layout(text, pageFont(m_runs[part.run].attr));
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setLineWidth(1e6);
        layout.endLayout();
        for (int i = 0; i < length; ++i)
            m_widths[part.span.start + i]
                = float(qAbs(line.cursorToX(i + 1) - line.cursorToX(i)) / fontUnits);
    }
}

double ShapedText::width(const TextSpan &span) const
{
    double sum = 0.0;
    for (int i = span.start; i < span.end; ++i)
        sum += double(m_widths[i]);
    return sum;
}

QVector<ShapedText::Piece> ShapedText::pieces(const TextSpan &span) const
{
    QVector<Piece> pieces;
    int run = int(std::upper_bound(m_runEnds.cbegin(), m_runEnds.cend(), span.start)
                  - m_runEnds.cbegin());
    for (int start = span.start; start < span.end && run < m_runs.size(); ++run) {
        const int end = qMin(span.end, m_runEnds[run]);
        pieces.append({{start, end}, run});
        start = end;
    }
    return pieces;
}

int ShapedText::skipBlanks(int from) const
{
    while (from < m_text.size() && hangs(m_text[from]))
        ++from;
    return from;
}
