// SPDX-License-Identifier: MIT
#include <pages/ShapedText_p.h>

#include <cmath>

namespace {

constexpr double pointsPerInch = 72.0;
constexpr double defaultTab = 36.0; // points
constexpr double tolerance = 0.05; // points that a line may be too long through rounding
constexpr int maxCombining = 32; // marks that are kept with their letter

// Where the text behind a tab begins; \a length is that text's, up to the next tab.
double behindTab(const LineBox &box, double x, double length)
{
    for (const MVRScreenplayTabStop &stop : box.tabStops) {
        const double position = stop.position * pointsPerInch;
        if (position <= x + tolerance)
            continue;
        const double share = stop.kind == MVRScreenplayTabStop::Left ? 0.0
            : stop.kind == MVRScreenplayTabStop::Center              ? 0.5
                                                                     : 1.0;
        return qMax(x, position - share * length);
    }
    return (std::floor((x + tolerance) / defaultTab) + 1.0) * defaultTab;
}

bool endsField(QChar c)
{
    return c == QLatin1Char('\t') || c == QLatin1Char('\n');
}

double fieldLength(const ShapedText &text, int from, int end)
{
    int to = from;
    while (to < end && !endsField(text.text()[to]))
        ++to;
    while (to > from && hangs(text.text()[to - 1]))
        --to;
    return text.width({from, to});
}

double behind(const ShapedText &text, const LineBox &box, int i, double x, int end)
{
    if (text.text()[i] != QLatin1Char('\t'))
        return x + text.width(i);
    return behindTab(box, x, box.tabStops.isEmpty() ? 0.0 : fieldLength(text, i + 1, end));
}

// A word that is too long is cut between letters, and there is a letter on every line.
int cutInWord(const QString &text, int start, int i)
{
    const auto belongsToLetter
        = [&text](int at) { return text[at].isLowSurrogate() || text[at].isMark(); };
    int cut = i;
    while (cut > start && i - cut < maxCombining && belongsToLetter(cut))
        --cut;
    if (cut > start)
        return cut;
    cut = qMax(i, start + 1);
    while (cut < text.size() && cut - start < maxCombining && belongsToLetter(cut))
        ++cut;
    return cut;
}

double leftOf(const LineBox &box, int start)
{
    return start == 0 ? box.firstLeft : box.left;
}

// The end of the line that begins at \a start.
int lineEnd(const ShapedText &shaped, const LineBox &box, int start)
{
    const QString &text = shaped.text();
    double x = leftOf(box, start);
    int lastBreak = -1;
    int i = start;
    for (; i < text.size() && text[i] != QLatin1Char('\n'); ++i) {
        if (i > start && shaped.breaksBefore(i))
            lastBreak = i;
        // Fields behind stops that center or align right do not make a line longer than the box.
        const double next = behind(shaped, box, i, x, qMin(text.size(), i + 256));
        if (!hangs(text[i]) && next > box.right + tolerance)
            return lastBreak > start ? lastBreak : cutInWord(text, start, i);
        x = next;
    }
    return i;
}

TextSpan withoutBlanks(const ShapedText &text, TextSpan line)
{
    while (line.end > line.start && hangs(text.text()[line.end - 1]))
        --line.end;
    return line;
}

// Behind the last tab and the blanks at the start.
int firstStretched(const ShapedText &text, const TextSpan &visible)
{
    int first = visible.end;
    while (first > visible.start && text.text()[first - 1] != QLatin1Char('\t'))
        --first;
    return text.skipBlanks(first);
}

double extent(const ShapedText &text, const LineBox &box, const TextSpan &line, double left)
{
    double x = left;
    for (int i = line.start; i < line.end; ++i)
        x = behind(text, box, i, x, line.end);
    return x - left;
}

// What each blank of a justified line is wider by. The paragraph's last line is not, nor one that
// ends where the page made it end.
double stretchOf(const ShapedText &text, const LineBox &box, const TextSpan &line,
                 const TextSpan &visible)
{
    if (!(box.alignment & Qt::AlignJustify) || text.isRightToLeft() || line.end >= text.length()
        || text.text()[line.end] == QLatin1Char('\n') || line.end != lineEnd(text, box, line.start))
        return 0.0;
    int blanks = 0;
    for (int i = firstStretched(text, visible); i < visible.end; ++i)
        blanks += text.text()[i] == QLatin1Char(' ') ? 1 : 0;
    const double left = leftOf(box, line.start);
    const double rest = box.right - left - extent(text, box, visible, left);
    return blanks > 0 ? qMax(0.0, rest / blanks) : 0.0;
}

// How far a line moves to the right as a whole: its tabs are as wide as if it began on the left.
double shiftOf(const ShapedText &text, const LineBox &box, const TextSpan &line)
{
    if (!(box.alignment & (Qt::AlignRight | Qt::AlignHCenter)) && !text.isRightToLeft())
        return 0.0;
    const double left = leftOf(box, line.start);
    const double rest = box.right - left - extent(text, box, line, left);
    return box.alignment & Qt::AlignHCenter ? rest / 2.0 : rest;
}

}

QVector<TextSpan> wrapLines(const ShapedText &text, const LineBox &box, int from, int maxLines)
{
    QVector<TextSpan> lines;
    int start = from;
    while (lines.size() < maxLines) {
        const int end = lineEnd(text, box, start);
        lines.append({start, end});
        if (end >= text.length())
            break;
        start = text.text()[end] == QLatin1Char('\n') ? end + 1 : end;
    }
    return lines;
}

QVector<PlacedPiece> placeLine(const ShapedText &text, const LineBox &box, const TextSpan &line)
{
    const TextSpan visible = withoutBlanks(text, line);
    const double stretch = stretchOf(text, box, line, visible);
    const int firstWide = stretch > 0.0 ? firstStretched(text, visible) : visible.end;
    QVector<PlacedPiece> placed;
    const double shift = shiftOf(text, box, visible);
    double x = leftOf(box, visible.start);
    const QVector<ShapedText::Piece> pieces = text.pieces(visible);
    for (const ShapedText::Piece &piece : pieces) {
        int start = piece.span.start;
        double startX = x;
        for (int i = start; i < piece.span.end; ++i) {
            const bool isTab = text.text()[i] == QLatin1Char('\t');
            const bool isWide = i >= firstWide && text.text()[i] == QLatin1Char(' ');
            const int end = isTab ? i : i + 1;
            const double endX = isTab ? x : x + text.width(i);
            const bool endsPiece = isTab || isWide || end == piece.span.end;
            if (endsPiece && end > start)
                placed.append({startX + shift, endX - startX, {start, end}, piece.run});
            x = behind(text, box, i, x, visible.end) + (isWide ? stretch : 0.0);
            if (endsPiece) {
                start = i + 1;
                startX = x;
            }
        }
    }
    return placed;
}
