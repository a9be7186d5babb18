// SPDX-License-Identifier: MIT
// The part of the reader for what stands in the text: pictures, shapes, frames, notes.
#include <core/rtf/read/RtfReader.h>

#include <core/rtf/model/RtfExact.h>

void RtfReader::beginField(const RtfDestination &field)
{
    m_fields.begin(&group(), builder().textLength());
    // The text of a note stays that of the note.
    const bool isText
        = group().isIn(RtfDestination::Body) || group().isIn(RtfDestination::PageText);
    if (isText && !group().opensDestination)
        openDestination(field);
}

void RtfReader::finishField()
{
    const QString text = m_fields.finish(&group(), builder().textLength());
    if (!text.isEmpty())
        m_text.addCharacters(QStringView(text));
}

void RtfReader::beginFieldResult(const RtfDestination &ignored)
{
    const QString shown = m_fields.beginResult(&group());
    if (shown.isEmpty())
        return;
    m_text.addCharacters(QStringView(shown));
    if (!group().beginsText())
        group().destination = &ignored;
}

void RtfReader::beginPicture(const RtfDestination &picture)
{
    // A floating picture is a property of a shape; it goes where that is anchored.
    const bool isOfShape = group().isIn(RtfDestination::ShapeValue) && m_shapes.isPicture();
    if (!group().isVisible() && !isOfShape) {
        skipDestination();
        return;
    }
    if (!openDestination(picture))
        return;
    m_picture = {};
    m_isFloating = isOfShape;
}

void RtfReader::finishPicture()
{
    if (m_picture.isEmpty())
        return;
    if (m_isFloating)
        m_picture.setShownSize(m_shapes.size());
    m_text.endText();
    bool isLost = false;
    const QTextImageFormat format = m_picture.store(
        m_story.document, m_formats.charFormat(charFormat()), &isLost, &m_story.pictures);
    m_leftOut.pictures += int(isLost);
    const QChar object(QChar::ObjectReplacementCharacter);
    m_inHeader = false;
    builder().append(QStringView(&object, 1), m_formats.addCharFormat(format));
    m_picture = {};
}

void RtfReader::beginTextBox(const RtfDestination &box)
{
    if (!m_shapes.canBeginBox() || group().opensDestination) {
        skipDestination();
        return;
    }
    if (!openDestination(box))
        return;
    m_text.endText();
    m_shapes.beginBox(&builder(), group().para);
    resetPara();
}

void RtfReader::finishTextBox()
{
    if (!m_shapes.isInBox())
        return;
    m_text.endText();
    if (builder().hasText())
        insertParagraph();
    m_shapes.endBox(&builder());
}

// Letters that are drawn as a shape are a property of it.
void RtfReader::addShapeText()
{
    const QString text = takeValue();
    if (!m_shapes.isText() || text.isEmpty())
        return;
    RtfParagraph paragraph = builder().takeParagraph();
    builder().append(QStringView(text), charFormat());
    insertParagraph();
    builder().giveParagraph(std::move(paragraph));
}

// The marks of frames stand in the text, behind the formatting of the frame's first paragraph and
// behind its last one, so the paragraph's table is the frame's.
void RtfReader::beginFrame(int exact)
{
    if (isOwnMark()) {
        if (builder().hasText())
            endParagraph();
        m_inHeader = false;
        builder().beginFrame(tableLevel(), exact);
    }
    skipDestination();
}

void RtfReader::endFrame()
{
    if (isOwnMark()) {
        if (builder().hasText())
            endParagraph();
        builder().endFrame(tableLevel());
    }
    skipDestination();
}

void RtfReader::addBookmark()
{
    const QString name = takeValue();
    if (!m_notes.isInNote())
        m_bookmarks.add(name);
}

// Bookmarks stand on the first character behind their beginning.
int RtfReader::takeAnchorFormat()
{
    QTextCharFormat format = m_formats.charFormat(charFormat());
    QStringList names = format.anchorNames();
    if (!m_bookmarks.moveTo(&names))
        return charFormat();
    format.setAnchor(true);
    format.setAnchorNames(names);
    return m_formats.addCharFormat(format);
}

void RtfReader::beginNote(MVRTextRtfNote::Kind kind, const RtfDestination &note)
{
    // The mark of a comment is hidden in some programs' files; a hidden footnote is not shown.
    const bool isComment = kind == MVRTextRtfNote::Comment;
    const bool isShown
        = isComment ? group().isBody() && !group().chars.deleted : group().isVisible();
    if (!isShown || !m_notes.canBegin()) {
        if (isShown && m_notes.isInNote())
            ++m_leftOut.notes;
        skipDestination();
        return;
    }
    if (group().opensDestination) // said twice in one group
        return;
    if (!openDestination(note))
        return;

    m_text.endText();
    m_bookmarks.clear();
    const int mark = m_notes.isInNote() ? m_notes.mark() : m_body.addMark();
    m_notes.begin(kind, m_body, mark, &m_story);
    resetChars();
    resetPara();
    group().chars.link = 0;
    group().field = -1;
}

void RtfReader::finishNote()
{
    if (!m_notes.isInNote())
        return;
    insertLastParagraph();
    m_notes.finish(&m_story);
}

void RtfReader::addNoteEdge(bool isStart)
{
    const QString reference = takeValue();
    if (m_story.builder == &m_body) // in headers and text boxes, there is nothing to mark
        m_notes.addEdge(reference, m_story, isStart);
}

void RtfReader::beginPageText(const QString &word, const RtfDestination &text)
{
    const bool isBody = group().isBody() && !group().chars.deleted && !m_notes.isInNote()
        && !m_shapes.isInBox() && !group().opensDestination;
    if (!isBody || !m_pageTexts.canBegin(word)) {
        skipDestination();
        return;
    }
    if (!openDestination(text))
        return;
    m_text.endText();
    m_bookmarks.clear();
    m_pageTexts.begin(word, m_body, &m_story, m_inHeader);
    resetChars();
    resetPara();
    group().chars.link = 0;
    group().field = -1;
}

void RtfReader::finishPageText()
{
    if (!m_pageTexts.isOpen())
        return;
    insertLastParagraph();
    m_inHeader = m_pageTexts.finish(&m_story);
}

// \chpgn is the field PAGE in one word.
void RtfReader::addPageNumber()
{
    if (!m_pageTexts.isOpen())
        return;
    const int field
        = std::exchange(group().chars.field, m_resources.linkNumber(QStringLiteral("PAGE")));
    group().charsChanged();
    m_text.addCharacter('1');
    group().chars.field = field;
    group().charsChanged();
}

// \atntime and \creatim say part after part.
void RtfReader::setTime(int part, int value)
{
    QDateTime *time = nullptr;
    if (group().isIn(RtfDestination::InfoTime))
        time = &m_header.info().time;
    else if (group().isIn(RtfDestination::NoteTime))
        time = m_notes.time();
    if (!time)
        return;
    if (!time->isValid())
        *time = QDateTime(QDate(1900, 1, 1), QTime(0, 0));
    QDate date = time->date();
    int parts[]
        = {date.year(), date.month(), date.day(), time->time().hour(), time->time().minute()};
    parts[part] = value;
    date = QDate(parts[0], parts[1], parts[2]);
    const QTime clock(parts[3], parts[4]);
    if (date.isValid() && clock.isValid())
        *time = QDateTime(date, clock);
}

void RtfReader::finishExactProperties()
{
    if (m_resources.exact.isEmpty())
        m_resources.exact.append(RtfExactProperties()); // sets are counted from 1
    m_resources.exact += RtfExact::fromText(takeValue().toLatin1());
    m_formats.resourcesChanged();
}

void RtfReader::takeDefaults()
{
    if (group().isBody() && m_groups.isNested()) {
        RtfGroup &outer = m_groups.outer();
        m_defaultFormat = RtfFormats::toCharFormat(outer.chars, m_resources);
        outer.chars = {};
        outer.fontChanged();
        m_formatting.dropDefaults();
    }
    skipDestination();
}
