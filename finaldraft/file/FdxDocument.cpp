// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxDocument_p.h>

#include <finaldraft/file/FdxText_p.h>

#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/document/EditBlock_p.h>
#include <text/MVRTextDoc.h>

#include <QDateTime>
#include <QTextBlock>
#include <QTextDocument>

#include <string_view>
#include <unordered_map>

namespace {

using File = MVRFinalDraftFile;

template <int Count>
void setProperties(const FdxElement &element, const FdxBlockAttribute (&attributes)[Count],
                   QTextBlockFormat *format)
{
    for (const FdxBlockAttribute &row : attributes) {
        if (const FdxSourceAttribute attribute = element.attribute(row.name))
            format->setProperty(row.property, QString::fromUtf8(attribute.value()));
    }
}

/*! Writes the blocks of a script. */
class Inserter
{
public:
    Inserter(FdxScript &script, int fileId, QTextDocument *document)
        : m_script(script)
        , m_fileId(fileId)
        , m_cursor(document)
    {
        m_cursor.beginEditBlock();
    }
    ~Inserter() { m_cursor.endEditBlock(); }
    Q_DISABLE_COPY_MOVE(Inserter)

    /*! Returns how many characters the block has. */
    int insert(int paragraph)
    {
        Style &style = styleOf(paragraph);
        const QTextBlockFormat &format = markedFormat(&style, m_script.mark(paragraph));
        const bool isPlain = m_script.containerOf(paragraph).wrapper < 0
            && !m_script.paragraphs()[paragraph].node.child("SceneProperties");
        startBlock(isPlain ? format : ownFormat(format, paragraph), style.type->plain.format);
        const FdxTree &tree = m_script.tree();
        int length = 0;
        for (const FdxElement &child : m_script.paragraphs()[paragraph].node.children("Text")) {
            const FdxRunStyle *runStyle = &m_script.runStyle(*style.type, child);
            const FdxTree::Span span = tree.span(child);
            if (runStyle != m_runStyle)
                length += flush();
            m_runStyle = runStyle;
            m_text += fdxText(tree.source(), span.innerStart, span.innerEnd);
        }
        return length + flush();
    }

private:
    void startBlock(const QTextBlockFormat &format, const QTextCharFormat &charFormat)
    {
        if (m_isFirst) {
            m_cursor.setBlockFormat(format);
            m_cursor.setBlockCharFormat(charFormat);
        } else {
            m_cursor.insertBlock(format, charFormat);
        }
        m_isFirst = false;
    }

    int flush()
    {
        const int length = m_text.size();
        if (length > 0)
            m_cursor.insertText(m_text, m_runStyle->format);
        m_text.clear();
        return length;
    }

    /*! What paragraphs with one start tag have in common. */
    struct Style
    {
        FdxType *type = nullptr;
        QTextBlockFormat format; // of the last one
        QVector<QTextBlockFormat> marked; // by mark, where several have one
    };

    const QTextBlockFormat &markedFormat(Style *style, int mark) const
    {
        if (!m_script.hasOwnMarks() && style != &m_otherStyle) {
            style->marked.resize(FdxScript::markRing);
            if (!style->marked[mark].hasProperty(File::SourceParagraphProperty)) {
                style->marked[mark] = style->format;
                style->marked[mark].setProperty(File::SourceParagraphProperty, mark);
            }
            return style->marked[mark];
        }
        // Its own data, which no other format shares, is cheap to change.
        style->format.setProperty(File::SourceParagraphProperty, mark);
        return style->format;
    }

    Style &styleOf(int paragraph)
    {
        constexpr int most = 256; // tags that are kept: no file is slower for having each but once
        const FdxTree &tree = m_script.tree();
        const FdxElement &node = m_script.paragraphs()[paragraph].node;
        const bool isTitlePage = m_script.isTitlePage(paragraph);
        const int start = tree.start(node);
        const std::string_view tag(tree.source().constData() + start,
                                   size_t(tree.tagEnd(node) - start));
        auto &styles = isTitlePage ? m_titleStyles : m_styles;
        const auto known = styles.find(tag);
        if (known != styles.end())
            return known->second;
        Style &style = styles.size() < most ? styles[tag] : m_otherStyle; // the tree keeps the tag
        style.type = &m_script.typeOf(paragraph);
        style.format = m_script.paragraphStyle(*style.type, node).format;
        style.format.setProperty(File::SourceParagraphProperty, 0);
        style.format.setProperty(File::SourceFileProperty, m_fileId);
        if (isTitlePage)
            style.format.setProperty(File::TitlePageProperty, true);
        setProperties(node, fdxParagraphAttributes, &style.format);
        return style;
    }

    QTextBlockFormat ownFormat(QTextBlockFormat format, int paragraph) const
    {
        const FdxParagraph &record = m_script.paragraphs()[paragraph];
        if (m_script.containerOf(paragraph).wrapper >= 0)
            format.setProperty(File::DualDialogueProperty, record.container);
        if (const FdxElement scene = record.node.child("SceneProperties")) {
            setProperties(scene, fdxSceneAttributes, &format);
            if (const FdxElement summary = scene.child("Summary"))
                format.setProperty(File::SceneSummaryProperty,
                                   fdxParagraphsText(m_script.tree(), summary));
        }
        return format;
    }

    FdxScript &m_script;
    int m_fileId;
    QTextCursor m_cursor;
    bool m_isFirst = true;
    QString m_text; // kept back until its format ends
    const FdxRunStyle *m_runStyle = nullptr;
    std::unordered_map<std::string_view, Style> m_styles; // by start tag
    std::unordered_map<std::string_view, Style> m_titleStyles;
    Style m_otherStyle;
};

// Final Draft writes its times in UTC, as "20240229T235900". They are taken apart by hand: Qt's
// parser goes through the system's local time, which now and then fails where several threads do
// so.
QDateTime fdxTime(const FdxElement &note)
{
    const QString text = fdxAttribute(note, "DateTime");
    if (text.size() != 15 || text.at(8) != QLatin1Char('T'))
        return QDateTime();
    bool isDay = false;
    bool isClock = false;
    const int day = text.left(8).toInt(&isDay);
    const int clock = text.mid(9).toInt(&isClock);
    if (!isDay || !isClock || day < 0 || clock < 0)
        return QDateTime();
    return QDateTime(QDate(day / 10000, day / 100 % 100, day % 100),
                     QTime(clock / 10000, clock / 100 % 100, clock % 100), Qt::UTC);
}

/*! A note's paragraphs as a document. */
void fillNote(const FdxElement &note, const FdxTree &tree, QTextCursor *cursor)
{
    bool isFirst = true;
    BoundedNames fonts;
    for (const FdxElement &paragraph : note.children("Paragraph")) {
        if (!isFirst)
            cursor->insertBlock();
        isFirst = false;
        for (const FdxElement &run : paragraph.children("Text")) {
            const FdxTree::Span span = tree.span(run);
            FdxLook look = FdxLook().with(run);
            if (!fonts.take(look.font))
                look.font = FdxLook().font;
            cursor->insertText(fdxText(tree.source(), span.innerStart, span.innerEnd),
                               look.toCharFormat(FdxLook()));
        }
    }
}

}

QVector<int> fdxInsertScript(FdxScript &script, int fileId, QTextDocument *document)
{
    Inserter inserter(script, fileId, document);
    QVector<int> lengths(script.paragraphs().size(), 0);
    for (int i = 0; i < script.paragraphs().size(); ++i) {
        if (script.paragraphs()[i].hasBlock)
            lengths[i] = inserter.insert(i);
    }
    return lengths;
}

QByteArray fdxNoteRtf(const FdxElement &note, const FdxTree &tree)
{
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    QTextCursor cursor(&document);
    {
        const EditBlock editBlock(cursor);
        fillNote(note, tree, &cursor);
    }
    return MVRTextRtf::toRtfCData(&document, false);
}

QHash<QString, int> fdxAttachNotes(const QVector<FdxNote> &notes, const FdxTree &tree,
                                   QTextDocument *document)
{
    QHash<QString, int> anchors;
    const EditBlock editBlock(document);
    for (int i = 0; i < notes.size(); ++i) {
        const FdxNote &note = notes[i];
        if (!note.isAttached())
            continue;
        MVRTextCommentLink link;
        link.cdata = fdxNoteRtf(note.node, tree);
        link.color = fdxColor(note.node.attribute("Color").value(), QColor());
        QString author = fdxAttribute(note.node, "WriterName");
        if (author.isEmpty())
            author = fdxAttribute(note.node, "Author");
        QTextCursor cursor = note.attached.toTextCursor(document);
        MVRTextDoc::setComment(cursor, link, author, fdxTime(note.node));
        cursor.setPosition(note.attached.start + 1);
        anchors.insert(cursor.charFormat().anchorHref(), i);
    }
    return anchors;
}
