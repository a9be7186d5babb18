// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownReader.h>

#include <tool/formats/markdown/MarkdownBuilder.h>
#include <tool/formats/markdown/MarkdownFrontMatter.h>
#include <tool/formats/markdown/MarkdownMarks.h>
#include <tool/formats/markdown/MarkdownNotes.h>
#include <tool/formats/markdown/MarkdownRows.h>

#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <core/document/EditBlock_p.h>
#include <core/document/ForeignFormat_p.h>
#include <core/document/OfflineDocument_p.h>
#include <core/document/TextFragments_p.h>

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

/*! A blank line, or the first one of an item of a list. */
bool beginsParagraph(QStringView line)
{
    const QStringView text = line.trimmed();
    const bool isItem = text.size() > 2 && QStringView(u"*+-").contains(text[0])
        && text[1].isSpace() && line.indexOf(text[0]) < 4;
    return text.isEmpty() || isItem;
}

/*! Runs of asterisks and underscores; those between blanks are no marks of emphasis. */
int emphases(QStringView line)
{
    const auto isMark = [](QChar c) { return c == QLatin1Char('*') || c == QLatin1Char('_'); };
    const auto isBlank
        = [&line](int place) { return place < 0 || place >= line.size() || line[place].isSpace(); };
    int count = 0;
    int start = 0;
    for (int i = 0; i < line.size(); ++i) {
        if (i > 0 && line[i] != line[i - 1])
            start = i;
        const bool isLast = i + 1 == line.size() || line[i + 1] != line[i];
        count += isMark(line[i]) && isLast && !(isBlank(start - 1) && isBlank(i + 1)) ? 1 : 0;
    }
    return count;
}

int instructions(QStringView line)
{
    const QLatin1String opening("<?");
    int count = 0;
    for (auto at = line.indexOf(opening); at >= 0; at = line.indexOf(opening, at + 2))
        ++count;
    return count;
}

// The parser looks through its paragraph for the other end of each of them.
bool hasDenseParagraph(const QString &source)
{
    constexpr int maxEmphases = 20000;
    constexpr int maxInstructions = 1000; // as in "<?php"
    int emphasisCount = 0;
    int instructionCount = 0;
    for (int start = 0; start < source.size();) {
        const int found = int(source.indexOf(QLatin1Char('\n'), start));
        const int end = found < 0 ? int(source.size()) : found;
        const QStringView line = QStringView(source).mid(start, end - start);
        if (beginsParagraph(line))
            emphasisCount = instructionCount = 0;
        emphasisCount += emphases(line);
        instructionCount += instructions(line);
        if (emphasisCount > maxEmphases || instructionCount > maxInstructions)
            return true;
        start = end + 1;
    }
    return false;
}

MarkdownResult::Refusal refusalOf(const QString &source)
{
    if (hasDeepBlocks(source))
        return MarkdownResult::TooDeep;
    return hasDenseParagraph(source) ? MarkdownResult::TooDense : MarkdownResult::NotRefused;
}

// A list in a document takes a hundred times what the shortest one takes in a file.
bool hasTooManyLists(cmark_node *root, qint64 sourceSize)
{
    qint64 left = 10000 + sourceSize / 40;
    const CmarkIterator iterator(cmark_iter_new(root));
    for (cmark_event_type event; (event = cmark_iter_next(iterator.get())) != CMARK_EVENT_DONE;) {
        const bool isList
            = cmark_node_get_type(cmark_iter_get_node(iterator.get())) == CMARK_NODE_LIST;
        if (event == CMARK_EVENT_ENTER && isList && --left < 0)
            return true;
    }
    return false;
}

CmarkTree parseMarked(const QString &source, const MarkdownOptions &options)
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

CmarkTree parse(const QString &source, const MarkdownOptions &options)
{
    const QString marked = MarkdownMarks::marked(source);
    CmarkTree tree = parseMarked(marked, options);
    const QString joined = withoutExcessCells(marked, tree.get());
    return joined == marked ? std::move(tree) : parseMarked(joined, options);
}

int picturesIn(const QTextDocument &text)
{
    int pictures = 0;
    for (FragmentWalker walker(&text, 0); walker.isValid(); walker.next())
        pictures += walker.format().isImageFormat() ? walker.end() - walker.start() : 0;
    return pictures;
}

/*! The contents of footnotes by their number, each made once. */
class Footnotes
{
public:
    explicit Footnotes(const QVector<cmark_node *> &definitions)
        : m_definitions(definitions)
        , m_contents(definitions.size())
        , m_pictures(definitions.size())
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

    /*! Those of content(). */
    int pictures(int number) const { return m_pictures.at(number); }

private:
    /*! Notes in a note follow its content, each once. */
    QByteArray build(int first)
    {
        OfflineDocument content;
        content.setUndoRedoEnabled(false);
        QTextCursor cursor(&content);
        QVector<int> numbers {first};
        QSet<int> known {first};
        for (int i = 0; i < numbers.size(); ++i) {
            OfflineDocument part;
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
                insertBlockLike(cursor, part.begin());
            STextDoc::appendFragment(cursor, QTextDocumentFragment(&part));
        }
        m_pictures[first] = picturesIn(content);
        return MVRTextRtf::toRtfCData(&content, false);
    }

    static constexpr int maxInOne = 20;
    const QVector<cmark_node *> m_definitions;
    QVector<QByteArray> m_contents;
    QVector<int> m_pictures;
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
        if (left < 0) {
            ++result->lostNotes;
            continue;
        }
        notes.append(rtfNote);
        if (note.footnote >= 0)
            result->notePictures += footnotes.pictures(note.footnote);
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
    result.refusal = refusalOf(source);
    if (result.refusal != MarkdownResult::NotRefused)
        return result;
    const CmarkTree tree = parse(source, options);
    if (hasTooManyLists(tree.get(), source.size())) {
        result.refusal = MarkdownResult::TooManyLists;
        return result;
    }
    MarkdownBuilder builder(document);
    {
        const EditBlock edit(document);
        if (!builder.build(tree.get()))
            result.refusal = MarkdownResult::TooDeep;
    }
    if (result.refusal != MarkdownResult::NotRefused)
        return result;
    attachNotes(document, builder, source.size(), &result);
    if (!frontMatter.title.isEmpty())
        document->setMetaInformation(QTextDocument::DocumentTitle, frontMatter.title);
    if (!frontMatter.author.isEmpty())
        document->setProperty(MVRTextRtf::authorProperty, frontMatter.author);
    return result;
}
