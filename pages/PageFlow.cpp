// SPDX-License-Identifier: MIT
#include <pages/PageFlow_p.h>

#include <QRegularExpression>

#include <cmath>
#include <limits>

using namespace MVRFinalDraft;

namespace {

constexpr double pointsPerInch = 72.0;
constexpr double maxIndent = 100.0; // inches; beyond any paper
constexpr double narrowest = 7.2; // points; a letter
constexpr double leastOnPaper = 72.0; // points that a paragraph has there, wherever it is to begin
constexpr double minSpacing = 0.1;
constexpr double maxSpacing = 100.0;
constexpr int maxSpace = 10000; // points
constexpr double maxSpaceShare = 0.5; // of a page

double points(double inches)
{
    return qBound(-maxIndent, std::isfinite(inches) ? inches : 0.0, maxIndent) * pointsPerInch;
}

LineBox boxOf(const MVRScreenplayParagraph &source, double paperWidth)
{
    const double first = points(source.attr.leftIndent) + points(source.attr.firstIndent);
    LineBox box = boxOnPaper(source.attr.leftIndent, source.attr.rightIndent, paperWidth);
    box.firstLeft = qBound(0.0, first, box.right - narrowest);
    box.alignment = source.attr.alignment;
    box.tabStops = source.tabStops;
    return box;
}

int linesOnPage(const FlowParagraph &paragraph, double bodyHeight)
{
    return int(std::ceil(bodyHeight / paragraph.lineHeight)) + 2;
}

void wrap(FlowParagraph &paragraph, int from, double bodyHeight)
{
    paragraph.lines
        = wrapLines(*paragraph.text, paragraph.box, from, linesOnPage(paragraph, bodyHeight));
    paragraph.hasMore = paragraph.lines.last().end < paragraph.text->length();
}

// The runs of a text as they are printed; what was revised in them does not come along.
QVector<MVRScreenplayRun> runsOf(const ShapedText &text)
{
    QVector<MVRScreenplayRun> runs;
    const QVector<ShapedText::Piece> pieces = text.pieces({0, text.length()});
    for (const ShapedText::Piece &piece : pieces) {
        MVRScreenplayRun run = text.runs()[piece.run];
        run.text = text.text().mid(piece.span.start, piece.span.end - piece.span.start);
        run.attr.revisionId = 0;
        runs.append(run);
    }
    return runs;
}

void appendContinued(QVector<MVRScreenplayRun> &runs, const QString &text)
{
    MVRScreenplayRun suffix = runs.isEmpty() ? MVRScreenplayRun() : runs.last();
    suffix.text = QLatin1Char(' ') + text;
    suffix.attr.style.setFlag(AllCaps, false);
    runs.append(suffix);
}

bool isSceneHeading(const MVRScreenplayParagraph &source)
{
    return source.paginateAs == SceneHeading && source.type != QLatin1String("Shot");
}

}

LineBox boxOnPaper(double leftInches, double rightInches, double paperWidth)
{
    const double right = points(rightInches);
    LineBox box;
    box.left = qBound(0.0, points(leftInches), paperWidth - leastOnPaper);
    box.right = qBound(box.left + narrowest, right > 0.0 ? right : right + paperWidth, paperWidth);
    box.firstLeft = box.left;
    return box;
}

QString speakerOf(const QString &cue)
{
    return cue.section(QLatin1Char('('), 0, 0).simplified().toUpper();
}

bool saysContinued(const QString &cue, const QString &continuedText)
{
    static const QRegularExpression usual(
        QStringLiteral("\\(\\s*CONT(?:['’]?D|INUED|INUING|\\.)?\\s*\\)"),
        QRegularExpression::CaseInsensitiveOption);
    return cue.contains(usual) || cue.contains(continuedText, Qt::CaseInsensitive);
}

PageFlow::PageFlow(const MVRScreenplay &screenplay, QVector<MVRScreenplayScene> *scenes)
    : m_screenplay(screenplay)
    , m_scenes(scenes)
{
    const MVRScreenplaySettings &settings = screenplay.settings;
    m_bodyHeight = settings.pageSize.height() - settings.topMargin - settings.bottomMargin;
}

FlowParagraph PageFlow::paragraph(const MVRScreenplayParagraph &source, int index) const
{
    const MVRScreenplaySettings &settings = m_screenplay.settings;
    FlowParagraph paragraph;
    paragraph.source = &source;
    paragraph.index = index;
    paragraph.scene = m_scene;
    paragraph.text = std::make_shared<ShapedText>(source.runs);
    paragraph.box = boxOf(source, settings.pageSize.width());
    // Larger letters than those of a typewriter need higher lines.
    const double grown = qMax(1.0, paragraph.text->largestSize() / 12.0);
    const double spacing
        = source.attr.spacing > 0.0 ? qBound(minSpacing, source.attr.spacing, maxSpacing) : 1.0;
    paragraph.lineHeight = settings.lineHeight * spacing * grown;
    // More would leave no room for the paragraph on any page that begins with something else.
    const double space = qBound(0, source.attr.spaceBefore, maxSpace) * settings.lineHeight / 12.0;
    paragraph.spaceBefore = qMin(space, m_bodyHeight * maxSpaceShare);
    wrap(paragraph, 0, m_bodyHeight);
    return paragraph;
}

FlowParagraph PageFlow::rest(const FlowParagraph &paragraph, int offset) const
{
    FlowParagraph rest = paragraph;
    rest.spaceBefore = 0.0;
    wrap(rest, offset, m_bodyHeight);
    return rest;
}

FlowParagraph PageFlow::added(const FlowParagraph &model, const QString &text,
                              MVRScreenplayLine::Kind kind) const
{
    MVRScreenplayRun run;
    run.text = text;
    run.attr = m_screenplay.settings.continuedLook;
    if (run.attr.font.isEmpty() && !model.source->runs.isEmpty())
        run.attr.font = model.source->runs.first().attr.font;
    FlowParagraph added = model;
    added.kind = kind;
    added.spaceBefore = 0.0;
    added.lineHeight = m_screenplay.settings.lineHeight;
    setRuns(added, {run});
    return added;
}

FlowParagraph PageFlow::continuedName(const FlowParagraph &name) const
{
    FlowParagraph continued = name;
    continued.kind = MVRScreenplayLine::Continued;
    continued.spaceBefore = 0.0;
    QVector<MVRScreenplayRun> runs = runsOf(*name.text);
    if (!saysContinued(name.text->text(), m_screenplay.settings.continuedText))
        appendContinued(runs, m_screenplay.settings.continuedText);
    setRuns(continued, runs);
    return continued;
}

void PageFlow::setRuns(FlowParagraph &paragraph, const QVector<MVRScreenplayRun> &runs) const
{
    paragraph.text = std::make_shared<ShapedText>(runs);
    wrap(paragraph, 0, m_bodyHeight);
}

bool PageFlow::isName(int index) const
{
    if (at(index).paginateAs != Character || index + 1 >= m_screenplay.body.size())
        return false;
    const MVRScreenplayParagraph &next = at(index + 1);
    return (next.paginateAs == Dialogue || next.paginateAs == Parenthetical)
        && next.dualDialogue == at(index).dualDialogue && !next.attr.startsNewPage;
}

bool PageFlow::keepsWithNext(const FlowParagraph &paragraph) const
{
    if (isAtEnd() || at(m_next).attr.startsNewPage || paragraph.source->dualDialogue != 0)
        return false;
    return paragraph.isOf(SceneHeading) || paragraph.isOf(Character)
        || paragraph.isOf(Parenthetical);
}

void PageFlow::noteScene(const MVRScreenplayParagraph &source)
{
    if (!isSceneHeading(source))
        return;
    m_speaker.clear();
    if (source.type != QLatin1String("Scene Heading") && source.sceneNumber.isEmpty())
        return;
    MVRScreenplayScene scene;
    scene.isNumbered = !source.sceneNumber.isEmpty();
    scene.number = scene.isNumbered ? source.sceneNumber : QString::number(m_scenes->size() + 1);
    scene.heading = ShapedText(source.runs).text().simplified();
    m_scenes->append(scene);
    m_scene = m_scenes->size() - 1;
}

FlowParagraph PageFlow::take()
{
    const MVRScreenplayParagraph &source = at(m_next);
    noteScene(source);
    const FlowParagraph taken = paragraph(source, m_next);
    ++m_next;
    return taken;
}

void PageFlow::continueSpeaker(FlowParagraph &name)
{
    const QString cue = name.text->text();
    const QString speaker = speakerOf(cue);
    const MVRScreenplaySettings &settings = m_screenplay.settings;
    if (settings.continuesSpeakers && !speaker.isEmpty() && speaker == m_speaker
        && !saysContinued(cue, settings.continuedText)) {
        QVector<MVRScreenplayRun> runs = name.source->runs;
        appendContinued(runs, settings.continuedText);
        setRuns(name, runs);
    }
    m_speaker = speaker;
}

FlowColumn PageFlow::takeSpeech()
{
    FlowColumn speech;
    speech.isSpeech = isName(m_next);
    speech.isNamed = speech.isSpeech;
    const int group = at(m_next).dualDialogue;
    speech.paragraphs.append(take());
    if (!speech.isSpeech)
        return speech;
    if (group == 0)
        continueSpeaker(speech.paragraphs.first());
    while (!isAtEnd() && at(m_next).dualDialogue == group && !at(m_next).attr.startsNewPage
           && (at(m_next).paginateAs == Dialogue || at(m_next).paginateAs == Parenthetical))
        speech.paragraphs.append(take());
    speech.name = speech.paragraphs.first();
    return speech;
}

FlowUnit PageFlow::next()
{
    FlowUnit unit;
    if (isAtEnd())
        return unit;
    unit.startsPage = at(m_next).attr.startsNewPage;
    unit.startsScene = isSceneHeading(at(m_next));
    double headHeight = 0.0;
    while (!isAtEnd()) {
        if (at(m_next).dualDialogue != 0) {
            takeDual(unit);
            break;
        }
        if (isName(m_next)) {
            unit.columns.append(takeSpeech());
            break;
        }
        const FlowParagraph taken = take();
        headHeight += taken.spaceBefore + taken.height();
        // Headings that fill a page are not kept with anything.
        if (!keepsWithNext(taken) || headHeight > m_bodyHeight / 2.0) {
            FlowColumn column;
            column.paragraphs.append(taken);
            unit.columns.append(column);
            break;
        }
        unit.heads.append(taken);
    }
    unit.scene = unit.heads.isEmpty() ? unit.columns.first().paragraphs.first().scene
                                      : unit.heads.first().scene;
    return unit;
}
