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

namespace {

using File = MVRFinalDraftFile;

/*! An attribute of a paragraph, or of its SceneProperties, as a property of its block. */
struct BlockAttribute
{
    const char *name;
    int property;
};

constexpr BlockAttribute paragraphAttributes[] = {
    {"Number", File::SceneNumberProperty},
    {"Label", File::LabelProperty},
    {"Bookmark", File::BookmarkProperty},
};

constexpr BlockAttribute sceneAttributes[] = {
    {"Title", File::SceneTitleProperty},
    {"Color", File::SceneColorProperty},
    {"Length", File::SceneLengthProperty},
    {"Page", File::ScenePageProperty},
};

template <int Count>
void setProperties(const pugi::xml_node &element, const BlockAttribute (&attributes)[Count],
                   QTextBlockFormat *format)
{
    for (const BlockAttribute &row : attributes) {
        if (const pugi::xml_attribute attribute = element.attribute(row.name))
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

    void insert(int paragraph)
    {
        FdxType &type = m_script.typeOf(paragraph);
        startBlock(blockFormat(type, paragraph), type.plain.format);
        const FdxTree &tree = m_script.tree();
        for (const pugi::xml_node &child : m_script.paragraphs()[paragraph].node.children("Text")) {
            const FdxRunStyle *style = &m_script.runStyle(type, child);
            const FdxTree::Span span = tree.span(child);
            if (style != m_style)
                flush();
            m_style = style;
            m_text += fdxText(tree.source(), span.innerStart, span.innerEnd);
        }
        flush();
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

    void flush()
    {
        if (!m_text.isEmpty())
            m_cursor.insertText(m_text, m_style->format);
        m_text.clear();
    }

    QTextBlockFormat blockFormat(FdxType &type, int paragraph) const
    {
        const pugi::xml_node &node = m_script.paragraphs()[paragraph].node;
        const FdxContainer &container = m_script.containerOf(paragraph);
        QTextBlockFormat format = m_script.paragraphStyle(type, node).format;
        format.setProperty(File::SourceParagraphProperty, paragraph);
        format.setProperty(File::SourceFileProperty, m_fileId);
        if (container.isTitlePage)
            format.setProperty(File::TitlePageProperty, true);
        if (container.wrapper >= 0)
            format.setProperty(File::DualDialogueProperty,
                               m_script.paragraphs()[paragraph].container);
        setProperties(node, paragraphAttributes, &format);
        if (const pugi::xml_node scene = node.child("SceneProperties")) {
            setProperties(scene, sceneAttributes, &format);
            if (const pugi::xml_node summary = scene.child("Summary"))
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
    const FdxRunStyle *m_style = nullptr;
};

// Final Draft writes its times in UTC, as "20240229T235900". They are taken apart by hand: Qt's
// parser goes through the system's local time, which now and then fails where several threads do
// so.
QDateTime fdxTime(const pugi::xml_node &note)
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
void fillNote(const pugi::xml_node &note, const FdxTree &tree, QTextCursor *cursor)
{
    bool isFirst = true;
    for (const pugi::xml_node &paragraph : note.children("Paragraph")) {
        if (!isFirst)
            cursor->insertBlock();
        isFirst = false;
        for (const pugi::xml_node &run : paragraph.children("Text")) {
            const FdxTree::Span span = tree.span(run);
            const FdxLook look = FdxLook().with(run);
            cursor->insertText(fdxText(tree.source(), span.innerStart, span.innerEnd),
                               look.toCharFormat(FdxLook()));
        }
    }
}

}

void fdxInsertScript(FdxScript &script, int fileId, QTextDocument *document)
{
    Inserter inserter(script, fileId, document);
    for (int i = 0; i < script.paragraphs().size(); ++i) {
        if (script.paragraphs()[i].hasBlock)
            inserter.insert(i);
    }
}

QByteArray fdxNoteRtf(const pugi::xml_node &note, const FdxTree &tree)
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
        if (note.attached.start == note.attached.end)
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
