// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplay.h>

#include <QFont>
#include <QVector>

/*! Characters of a text, [start, end). */
struct TextSpan
{
    int start;
    int end;
};

/*! Fonts are made this many units to the point, so that sizes are whole numbers. */
constexpr double fontUnits = 20.0;

/*! The font of text, its size in fontUnits. Courier's many names give the screenplay face. */
QFont pageFont(const MVRFinalDraft::TextAttr &attr);

/*!
    The text of a paragraph with the width of each character, ready to be broken into lines.

    Capitals are made here. Typewriter text is measured by counting, all other by the toolkit.
*/
class ShapedText
{
public:
    explicit ShapedText(const QVector<MVRScreenplayRun> &runs);

    const QString &text() const { return m_text; }
    int length() const { return m_text.size(); }
    bool needsShaping() const { return m_needsShaping; }
    bool isRightToLeft() const { return m_isRightToLeft; }
    /*! Points; 0 without text. */
    double largestSize() const { return m_largestSize; }
    /*! In points; that of a tab depends on its place and is 0. */
    double width(int i) const { return double(m_widths[i]); }
    double width(const TextSpan &span) const;
    bool breaksBefore(int i) const { return m_breaks[i]; }

    /*! The stretches of one look that \a span has, with the look's index in runs(). */
    struct Piece
    {
        TextSpan span;
        int run;
    };
    QVector<Piece> pieces(const TextSpan &span) const;
    const QVector<MVRScreenplayRun> &runs() const { return m_runs; }

    /*! Where sentences begin in [from, to), the last one first; not at from itself. */
    QVector<int> sentenceStarts(int from, int to) const;
    /*! The first character at or behind \a from that is no blank. */
    int skipBlanks(int from) const;

private:
    void append(const MVRScreenplayRun &run);
    void findBreaks();
    int findBreaksFrom(int start);
    int letterEnd(int place) const;
    void measure();
    void measureSegment(const TextSpan &segment);
    bool isSentenceStart(int i) const;

    QString m_text;
    QVector<MVRScreenplayRun> m_runs;
    QVector<int> m_runEnds;
    QVector<float> m_widths;
    QVector<bool> m_breaks;
    bool m_needsShaping = false;
    bool m_isRightToLeft = false;
    double m_largestSize = 0.0;
};

/*! Whether \a c takes no part in where a line ends. */
inline bool hangs(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

/*! Where the lines of a paragraph may run, in points from the paper's left edge. */
struct LineBox
{
    double left = 0.0;
    double right = 0.0;
    double firstLeft = 0.0; /*!< of the first line */
    Qt::Alignment alignment = Qt::AlignLeft;
    QVector<MVRScreenplayTabStop> tabStops;
};

/*!
    Breaks text into lines at blanks, which hang, after hyphens and dashes and at line breaks; words
    longer than a line are cut.

    \param from      where the first line begins; it is the paragraph's first one for 0 only
    \param maxLines  no more than these
    \return the lines with the blanks at their ends; they touch but for line breaks
*/
QVector<TextSpan> wrapLines(const ShapedText &text, const LineBox &box, int from, int maxLines);

/*! A line without the blanks at its end, each stretch of it where the box puts it. */
struct PlacedPiece
{
    double x;
    double width;
    TextSpan span;
    int run;
};
QVector<PlacedPiece> placeLine(const ShapedText &text, const LineBox &box, const TextSpan &line);
