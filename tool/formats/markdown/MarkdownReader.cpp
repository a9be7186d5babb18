// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownReader.h>

#include <tool/formats/markdown/MarkdownBuilder.h>
#include <tool/formats/markdown/MarkdownFrontMatter.h>
#include <tool/formats/markdown/MarkdownMarks.h>
#include <tool/formats/markdown/MarkdownNotes.h>

#include <core/MVRTextRtf.h>
#include <core/document/EditBlock_p.h>

#include <QRegularExpression>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

// Each mark of a repeated note has a note of its own, whose content is written again.
constexpr qint64 spareContent = 1 << 20;
constexpr qint64 maxRepeats = 16; // times the size of the file

// The parser visits all open quotes and lists for each line.
bool hasDeepBlocks(const QString &source)
{
    static const QRegularExpression deepLine(
        QStringLiteral("^(?:[ \\t]*+(?:>|[*+-][ \\t]|[0-9]{1,9}[.)][ \\t])){100}"),
        QRegularExpression::MultilineOption);
    return deepLine.match(source).hasMatch();
}

// The parser looks through its paragraph for the other end of each of them.
bool hasDenseParagraph(const QString &source)
{
    constexpr int maxEmphases = 20000; // runs of asterisks and underscores
    constexpr int maxInstructions = 1000; // as in "<?php"
    int emphases = 0;
    int instructions = 0;
    bool isBlank = true; // the line so far
    QChar before;
    for (const QChar c : source) {
        if (c == QLatin1Char('\n')) {
            if (isBlank)
                emphases = instructions = 0;
            isBlank = true;
        } else if (!c.isSpace()) {
            isBlank = false;
            emphases += c != before && (c == QLatin1Char('*') || c == QLatin1Char('_')) ? 1 : 0;
            instructions += c == QLatin1Char('?') && before == QLatin1Char('<') ? 1 : 0;
        }
        if (emphases > maxEmphases || instructions > maxInstructions)
            return true;
        before = c;
    }
    return false;
}

CmarkTree parse(const QString &source, const MarkdownOptions &options)
{
    cmark_gfm_core_extensions_ensure_registered();
    const CmarkParser parser(cmark_parser_new(
        CMARK_OPT_FOOTNOTES | (options.hasSmartPunctuation ? CMARK_OPT_SMART : 0)));
    for (const char *name : {"table", "strikethrough"}) {
        if (cmark_syntax_extension *extension = cmark_find_syntax_extension(name))
            cmark_parser_attach_syntax_extension(parser.get(), extension);
    }
    const QByteArray bytes = source.toUtf8();
    cmark_parser_feed(parser.get(), bytes.constData(), size_t(bytes.size()));
    return CmarkTree(cmark_parser_finish(parser.get()));
}

/*! The contents of footnotes by their number, each made once. */
class Footnotes
{
public:
    explicit Footnotes(const QVector<cmark_node *> &definitions)
        : m_definitions(definitions)
        , m_contents(definitions.size())
    {
    }

    bool has(int number) const { return number >= 0 && number < m_definitions.size(); }

    QByteArray content(int number)
    {
        QByteArray &content = m_contents[number];
        if (content.isNull())
            content = build(number);
        return content;
    }

private:
    /*! Notes in a note follow its content, each once. */
    QByteArray build(int first)
    {
        QTextDocument content;
        content.setUndoRedoEnabled(false);
        QTextCursor cursor(&content);
        QVector<int> numbers {first};
        QSet<int> known {first};
        for (int i = 0; i < numbers.size(); ++i) {
            QTextDocument part;
            part.setUndoRedoEnabled(false);
            MarkdownBuilder builder(&part);
            if (!builder.build(m_definitions.at(numbers.at(i))))
                continue;
            for (const MarkdownNote &note : builder.notes()) {
                if (has(note.footnote) && !known.contains(note.footnote)
                    && known.size() < maxInOne) {
                    known.insert(note.footnote);
                    numbers.append(note.footnote);
                }
            }
            if (!cursor.atStart())
                cursor.insertBlock(part.begin().blockFormat(), part.begin().charFormat());
            cursor.insertFragment(QTextDocumentFragment(&part));
        }
        return MVRTextRtf::toRtfCData(&content, false);
    }

    static constexpr int maxInOne = 20;
    const QVector<cmark_node *> m_definitions;
    QVector<QByteArray> m_contents;
};

void attachNotes(QTextDocument *document, const MarkdownBuilder &builder, qint64 sourceSize,
                 MarkdownResult *result)
{
    Footnotes footnotes(builder.definitions());
    qint64 left = sourceSize * maxRepeats + spareContent;
    MVRTextRtfNotes notes;
    for (const MarkdownNote &note : builder.notes()) {
        MVRTextRtfNote rtfNote;
        rtfNote.start = note.start;
        rtfNote.end = note.end;
        rtfNote.kind = note.footnote >= 0 ? MVRTextRtfNote::Footnote : MVRTextRtfNote::Comment;
        if (note.footnote >= 0 && !footnotes.has(note.footnote))
            continue;
        rtfNote.rtf = note.footnote >= 0 ? footnotes.content(note.footnote)
                                         : markdownCommentContent(note.comment);
        left -= rtfNote.rtf.size();
        if (left >= 0)
            notes.append(rtfNote);
        else
            ++result->lostNotes;
    }
    if (!notes.isEmpty())
        attachMarkdownNotes(document, notes);
}

} // namespace

MarkdownResult readMarkdown(const QString &text, const MarkdownOptions &options,
                            QTextDocument *document)
{
    MarkdownResult result;
    QString source = text;
    const MarkdownFrontMatter frontMatter = MarkdownFrontMatter::take(&source);
    result.lacksMetadata = frontMatter.hasMore;
    result.isTooDeep = hasDeepBlocks(source);
    result.isTooDense = hasDenseParagraph(source);
    if (result.isTooDeep || result.isTooDense)
        return result;
    const CmarkTree tree = parse(MarkdownMarks::marked(source), options);
    MarkdownBuilder builder(document);
    {
        const EditBlock edit(document);
        result.isTooDeep = !builder.build(tree.get());
    }
    if (result.isTooDeep)
        return result;
    attachNotes(document, builder, source.size(), &result);
    if (!frontMatter.title.isEmpty())
        document->setMetaInformation(QTextDocument::DocumentTitle, frontMatter.title);
    if (!frontMatter.author.isEmpty())
        document->setProperty(MVRTextRtf::authorProperty, frontMatter.author);
    return result;
}
