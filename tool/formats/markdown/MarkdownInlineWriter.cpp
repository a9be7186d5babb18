// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownInlineWriter.h>

#include <tool/formats/markdown/MarkdownEscapes.h>
#include <tool/formats/markdown/MarkdownLook.h>

#include <algorithm>

using namespace MarkdownLook;

namespace {

/*! How a style is spelled; those without delimiters have tags only. */
struct Spelling
{
    Style style;
    const char *delimiter;
    const char *tag;
};

constexpr Spelling spellings[] = {
    {Bold, "**", "strong"}, {Italic, "*", "em"},      {Strike, "~~", "del"},
    {Underline, "", "u"},   {Superscript, "", "sup"}, {Subscript, "", "sub"},
};

constexpr int spanBits = Bold | Italic | Strike | Underline | Superscript | Subscript;
constexpr int invisibleOnBlanks = Bold | Italic;

const Spelling &spellingOf(int bit)
{
    return *std::find_if(std::begin(spellings), std::end(spellings),
                         [bit](const Spelling &row) { return row.style == bit; });
}

bool isBlank(QChar c)
{
    return c.isSpace();
}

// Of neither kind, by any version of CommonMark, are blanks and signs.
bool isOfWord(QChar c)
{
    return c.isLetterOrNumber() || c.isMark();
}

bool isAsciiSign(QChar c)
{
    return c.unicode() < 128 && !isOfWord(c) && !isBlank(c);
}

} // namespace

void MarkdownInlineWriter::addText(const QString &text, const MarkdownStyle &style)
{
    // Blanks get pieces of their own, as their formats give way to those around them. In code only
    // the ends of lines do, where it begins anew.
    const auto isApart
        = [&style](QChar c) { return style.bits & Code ? c == QChar::LineSeparator : isBlank(c); };
    for (int start = 0; start < text.size();) {
        const bool apart = isApart(text.at(start));
        int end = start + 1;
        while (end < text.size() && isApart(text.at(end)) == apart)
            ++end;
        Piece piece;
        piece.text = text.mid(start, end - start);
        piece.style = style;
        if (apart)
            piece.style.bits &= ~Code;
        m_pieces.append(piece);
        start = end;
    }
}

void MarkdownInlineWriter::addMarkup(const QString &markup)
{
    Piece piece;
    piece.text = markup;
    piece.isMarkup = piece.takesStyle = true;
    m_pieces.append(piece);
}

void MarkdownInlineWriter::addMarkup(const QString &markup, const MarkdownStyle &style)
{
    Piece piece;
    piece.text = markup;
    piece.style = style;
    piece.isMarkup = true;
    m_pieces.append(piece);
}

// Readers drop blanks at both ends of lines.
void MarkdownInlineWriter::trim()
{
    bool isAtStart = true;
    const auto trimPiece = [&isAtStart](Piece &piece, bool fromEnd) {
        if (piece.isMarkup) {
            isAtStart = isAtStart && piece.takesStyle;
        } else if (piece.text.contains(QChar::LineSeparator)) {
            piece.text = QString(int(piece.text.count(QChar::LineSeparator)), QChar::LineSeparator);
            isAtStart = true;
        } else if (isAtStart && !(piece.style.bits & Code)) {
            const auto isTrimmed
                = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); };
            const int size = int(piece.text.size());
            int count = 0;
            while (count < size && isTrimmed(piece.text.at(fromEnd ? size - 1 - count : count)))
                ++count;
            piece.text.remove(fromEnd ? size - count : 0, count);
            isAtStart = piece.text.isEmpty();
        } else {
            isAtStart = false;
        }
    };
    for (Piece &piece : m_pieces)
        trimPiece(piece, false);
    isAtStart = true;
    for (auto piece = m_pieces.rbegin(); piece != m_pieces.rend(); ++piece)
        trimPiece(*piece, true);
    // Breaks at the end would be seen by nobody.
    while (!m_pieces.isEmpty() && !m_pieces.last().isMarkup
           && m_pieces.last().text.trimmed().isEmpty() && !(m_pieces.last().style.bits & Code))
        m_pieces.removeLast();
}

// What bold or italic blanks look like is what those around them look like.
void MarkdownInlineWriter::styleBlanks()
{
    QVector<int> behind(m_pieces.size() + 1);
    const auto isBlankPiece = [](const Piece &piece) {
        return !piece.isMarkup && !piece.text.isEmpty() && isBlank(piece.text.at(0))
            && !(piece.style.bits & Code);
    };
    const auto hasStyle
        = [&](const Piece &piece) { return !piece.takesStyle && !isBlankPiece(piece); };
    for (int i = int(m_pieces.size()) - 1; i >= 0; --i)
        behind[i] = hasStyle(m_pieces.at(i)) ? m_pieces.at(i).style.bits : behind.at(i + 1);
    int before = 0;
    for (int i = 0; i < m_pieces.size(); ++i) {
        Piece &piece = m_pieces[i];
        if (hasStyle(piece)) {
            before = piece.style.bits;
        } else if (isBlankPiece(piece)) {
            const int both = before & behind.at(i + 1);
            piece.style.bits = (both & invisibleOnBlanks) | (both & piece.style.bits & spanBits);
        }
    }
}

void MarkdownInlineWriter::styleMarkup()
{
    QVector<const MarkdownStyle *> behind(m_pieces.size() + 1, nullptr);
    for (int i = int(m_pieces.size()) - 1; i >= 0; --i)
        behind[i] = m_pieces.at(i).takesStyle ? behind.at(i + 1) : &m_pieces.at(i).style;
    MarkdownStyle before;
    for (int i = 0; i < m_pieces.size(); ++i) {
        Piece &piece = m_pieces[i];
        if (!piece.takesStyle) {
            before = piece.style;
            continue;
        }
        const MarkdownStyle next = behind.at(i + 1) ? *behind.at(i + 1) : MarkdownStyle();
        piece.style.bits = before.bits & next.bits & spanBits;
        if (before.link == next.link && before.linkTitle == next.linkTitle) {
            piece.style.link = before.link;
            piece.style.linkTitle = before.linkTitle;
        }
    }
}

void MarkdownInlineWriter::mergePieces()
{
    QVector<Piece> merged;
    for (const Piece &piece : qAsConst(m_pieces)) {
        if (piece.text.isEmpty())
            continue;
        if (!piece.isMarkup && !merged.isEmpty() && !merged.last().isMarkup
            && merged.last().style == piece.style)
            merged.last().text += piece.text;
        else
            merged.append(piece);
    }
    m_pieces = merged;
}

/*! How far from each piece each style goes on without a gap, the link last. */
QVector<QVector<int>> MarkdownInlineWriter::runEnds() const
{
    QVector<QVector<int>> ends(styleCount + 1, QVector<int>(m_pieces.size() + 1));
    for (int i = int(m_pieces.size()) - 1; i >= 0; --i) {
        const MarkdownStyle &style = m_pieces.at(i).style;
        const bool hasNext = i + 1 < m_pieces.size();
        for (int bit = 0; bit < styleCount; ++bit) {
            const bool goesOn = hasNext && (m_pieces.at(i + 1).style.bits & (1 << bit));
            ends[bit][i] = goesOn ? ends.at(bit).at(i + 1) : i + 1;
        }
        const bool goesOn = hasNext && m_pieces.at(i + 1).style.link == style.link;
        ends[styleCount][i] = goesOn ? ends.at(styleCount).at(i + 1) : i + 1;
    }
    return ends;
}

QString MarkdownInlineWriter::pieceText(const Piece &piece) const
{
    if (piece.isMarkup)
        return piece.text;
    if (!(piece.style.bits & Code))
        return MarkdownEscapes::escaped(piece.text);
    QStringList lines = piece.text.split(QChar::LineSeparator);
    for (QString &line : lines) {
        if (!line.isEmpty())
            line = MarkdownEscapes::codeSpan(line, m_place == MarkdownPlace::Cell);
    }
    return lines.join(QChar::LineSeparator);
}

void MarkdownInlineWriter::makeTokens()
{
    const QVector<QVector<int>> ends = runEnds();
    QVector<int> open; // spans
    for (int i = 0; i < m_pieces.size(); ++i) {
        const Piece &piece = m_pieces.at(i);
        const auto isOfPiece = [&](int span) {
            const Span &opened = m_spans.at(span);
            return opened.bit ? (piece.style.bits & opened.bit) != 0
                              : opened.link.link == piece.style.link
                    && opened.link.linkTitle == piece.style.linkTitle;
        };
        const auto lost = std::find_if_not(open.cbegin(), open.cend(), isOfPiece);
        for (const int kept = int(lost - open.cbegin()); open.size() > kept;)
            m_tokens.append({Token::Close, open.takeLast(), QString()});
        int missing = piece.style.bits & spanBits;
        bool lacksLink = !piece.style.link.isNull();
        for (const int span : qAsConst(open)) {
            missing &= ~m_spans.at(span).bit;
            lacksLink = lacksLink && m_spans.at(span).bit != 0;
        }
        QVector<QPair<int, int>> wanted; // where it ends, and the bit
        if (lacksLink)
            wanted.append({ends.at(styleCount).at(i), 0});
        for (int bit = 0; bit < styleCount; ++bit) {
            if (missing & (1 << bit))
                wanted.append({ends.at(bit).at(i), 1 << bit});
        }
        std::stable_sort(wanted.begin(), wanted.end(),
                         [](const auto &a, const auto &b) { return a.first > b.first; });
        for (const auto &next : qAsConst(wanted)) {
            Span span;
            span.bit = next.second;
            span.link = piece.style;
            span.isTag = span.bit && (m_usesTags || !*spellingOf(span.bit).delimiter);
            open.append(m_spans.size());
            m_tokens.append({Token::Open, int(m_spans.size()), QString()});
            m_spans.append(span);
        }
        m_tokens.append({piece.isMarkup || (piece.style.bits & Code) ? Token::Markup : Token::Text,
                         -1, pieceText(piece)});
    }
    while (!open.isEmpty())
        m_tokens.append({Token::Close, open.takeLast(), QString()});
}

QString MarkdownInlineWriter::text(const Token &token) const
{
    if (token.span < 0)
        return token.text;
    const Span &span = m_spans.at(token.span);
    const bool opens = token.kind == Token::Open;
    if (!span.bit)
        return opens ? QStringLiteral("[")
                     : QLatin1String("](")
                + MarkdownEscapes::destination(span.link.link, span.link.linkTitle)
                + QLatin1Char(')');
    const Spelling &spelling = spellingOf(span.bit);
    if (!span.isTag)
        return QLatin1String(spelling.delimiter);
    return QLatin1String(opens ? "<" : "</") + QLatin1String(spelling.tag) + QLatin1Char('>');
}

bool MarkdownInlineWriter::isDelimiter(const Token &token) const
{
    return token.span >= 0 && m_spans.at(token.span).bit && !m_spans.at(token.span).isTag;
}

/*! The character next to a run of delimiters, on the side of \a step (-1 or 1); GitHub's parser
    looks \a past tildes, others do not. */
QChar MarkdownInlineWriter::neighbour(int token, int step, bool isPastTildes) const
{
    for (int i = token + step; i >= 0 && i < m_tokens.size(); i += step) {
        const QString markup = text(m_tokens.at(i));
        if (!isPastTildes || !isDelimiter(m_tokens.at(i)) || !markup.startsWith(QLatin1Char('~')))
            return step < 0 ? markup.back() : markup.front();
    }
    return QLatin1Char(' ');
}

/*!
    Makes tags of delimiters that CommonMark's rules of flanking would not take for what they are.

    \param first, last  tokens that are one run of a delimiter's character
    \param isInside     other delimiters are open, which an opening one must not seem to close
    \return whether there were any
*/
bool MarkdownInlineWriter::fixGroup(int first, int last, bool isInside)
{
    bool canOpen = true;
    bool canClose = true;
    for (const bool isPastTildes : {false, true}) {
        const QChar before = neighbour(first, -1, isPastTildes);
        const QChar behind = neighbour(last, 1, isPastTildes);
        const bool mayClose = !isBlank(before) && !(isAsciiSign(before) && isOfWord(behind));
        canOpen = canOpen && !(isInside && mayClose)
            && (isOfWord(behind) || (!isBlank(behind) && (isBlank(before) || isAsciiSign(before))));
        canClose = canClose
            && (isOfWord(before) || (!isBlank(before) && (isBlank(behind) || isAsciiSign(behind))));
    }
    const bool hasClosing = m_tokens.at(first).kind == Token::Close;
    bool isFixed = false;
    for (int i = first; i <= last; ++i) {
        const bool opens = m_tokens.at(i).kind == Token::Open;
        if (opens ? canOpen && !hasClosing : canClose)
            continue;
        m_spans[m_tokens.at(i).span].isTag = true;
        isFixed = true;
    }
    return isFixed;
}

void MarkdownInlineWriter::fixDelimiters()
{
    constexpr int maxRounds = 4;
    for (int round = 0; round < maxRounds; ++round) {
        bool isFixed = false;
        int open = 0;
        for (int first = 0; first < m_tokens.size(); ++first) {
            if (!isDelimiter(m_tokens.at(first)))
                continue;
            int last = first;
            const QChar sign = text(m_tokens.at(first)).front();
            while (last + 1 < m_tokens.size() && isDelimiter(m_tokens.at(last + 1))
                   && text(m_tokens.at(last + 1)).front() == sign)
                ++last;
            isFixed = fixGroup(first, last, open > 0) || isFixed;
            for (; first <= last; ++first) {
                if (isDelimiter(m_tokens.at(first)))
                    open += m_tokens.at(first).kind == Token::Open ? 1 : -1;
            }
            first = last;
        }
        if (!isFixed)
            return;
    }
    for (Span &span : m_spans)
        span.isTag = span.bit != 0;
}

QString MarkdownInlineWriter::joined() const
{
    const QString lineEnd
        = m_place == MarkdownPlace::Paragraph ? QStringLiteral("\\\n") : QStringLiteral("<br>");
    QString result;
    bool isFirst = true;
    for (int i = 0; i < m_tokens.size(); ++i) {
        const Token &token = m_tokens.at(i);
        if (token.kind != Token::Text) {
            result += QString(text(token)).replace(QChar::LineSeparator, lineEnd);
            continue;
        }
        const QStringList lines = token.text.split(QChar::LineSeparator);
        for (int line = 0; line < lines.size(); ++line) {
            if (line > 0) {
                result += lineEnd;
                isFirst = false;
            }
            QString part = lines.at(line);
            const bool isBehindLabel = i == 1 && result.endsWith(QLatin1String("]: "));
            const bool startsLine
                = result.isEmpty() || result.endsWith(QLatin1Char('\n')) || isBehindLabel;
            if (startsLine && m_place == MarkdownPlace::Paragraph)
                part = MarkdownEscapes::escapedLineStart(part, isFirst);
            else if (result.endsWith(QLatin1Char(']'))
                     && (part.startsWith(QLatin1Char('(')) || part.startsWith(QLatin1Char(':'))))
                part.prepend(QLatin1Char('\\')); // behind a mark it would make a link of it
            result += part;
        }
    }
    return result;
}

QString MarkdownInlineWriter::write()
{
    trim();
    styleBlanks();
    mergePieces();
    styleMarkup();
    makeTokens();
    fixDelimiters();
    return joined();
}
