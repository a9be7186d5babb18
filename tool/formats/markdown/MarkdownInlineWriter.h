// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

/*! How a piece of text is written: formats of MarkdownLook::Style, and where it leads. */
struct MarkdownStyle
{
    int bits = 0;
    QString link; /*!< null for text that is no link */
    QString linkTitle;

    friend bool operator==(const MarkdownStyle &a, const MarkdownStyle &b)
    {
        return a.bits == b.bits && a.link == b.link && a.linkTitle == b.linkTitle;
    }
};

/*! Where a paragraph stands decides how its lines break. */
enum class MarkdownPlace {
    Paragraph, /*!< lines end with a backslash */
    Line, /*!< a heading or comment: one line of the file */
    Cell /*!< the same, and of a table */
};

/*! Puts the text of one paragraph together. */
class MarkdownInlineWriter
{
public:
    /*!
        \param usesTags  tags for all emphasis: for what stands inside of other text, whose
                         asterisks must not meet those of this text
    */
    explicit MarkdownInlineWriter(MarkdownPlace place, bool usesTags = false)
        : m_place(place)
        , m_usesTags(usesTags)
    {
    }

    void addText(const QString &text, const MarkdownStyle &style);
    /*! Markup that is written as it is: a mark of a note, a picture. */
    void addMarkup(const QString &markup);
    /*! The same for a picture that is a link. */
    void addMarkup(const QString &markup, const MarkdownStyle &style);
    bool isEmpty() const { return m_pieces.isEmpty(); }

    /*! The Markdown; lines are parted by "\n". */
    QString write();

private:
    struct Piece
    {
        QString text;
        MarkdownStyle style;
        bool isMarkup = false;
        bool takesStyle = false; // that of the text around it
    };
    struct Span
    {
        int bit = 0; // 0 for a link
        MarkdownStyle link;
        bool isTag = false;
    };
    struct Token
    {
        enum Kind { Text, Markup, Open, Close };
        Kind kind = Text;
        int span = -1;
        QString text;
    };

    void trim();
    void styleBlanks();
    void styleMarkup();
    void mergePieces();
    void makeTokens();
    QVector<QVector<int>> runEnds() const;
    QString pieceText(const Piece &piece) const;
    QString text(const Token &token) const;
    bool isDelimiter(const Token &token) const;
    QChar neighbour(int token, int step, bool isPastTildes) const;
    bool fixGroup(int first, int last, bool isInside);
    void fixDelimiters();
    QString joined() const;

    MarkdownPlace m_place;
    bool m_usesTags;
    QVector<Piece> m_pieces;
    QVector<Span> m_spans;
    QVector<Token> m_tokens;
};
