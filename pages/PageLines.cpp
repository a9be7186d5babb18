// SPDX-License-Identifier: MIT
#include <pages/PageComposer_p.h>

namespace {

constexpr double pointsPerInch = 72.0;

}

QString MVRScreenplayLine::text() const
{
    QString text;
    for (const Run &run : runs)
        text += run.text;
    return text;
}

MVRScreenplayLine lineOf(const FlowParagraph &paragraph, const TextSpan &span, double y)
{
    MVRScreenplayLine line;
    line.kind = paragraph.kind;
    line.y = y;
    line.height = paragraph.lineHeight;
    line.needsShaping = paragraph.text->needsShaping();
    line.scene = paragraph.scene;
    line.paragraph = paragraph.kind == MVRScreenplayLine::Text ? paragraph.index : -1;
    const QVector<PlacedPiece> pieces = placeLine(*paragraph.text, paragraph.box, span);
    for (const PlacedPiece &piece : pieces) {
        line.runs.append(
            {piece.x, piece.width,
             paragraph.text->text().mid(piece.span.start, piece.span.end - piece.span.start),
             paragraph.text->runs()[piece.run].attr});
    }
    return line;
}

void PageComposer::putLine(const FlowParagraph &paragraph, const TextSpan &span, int column)
{
    MVRScreenplayLine line = lineOf(paragraph, span, m_y);
    line.column = column;
    m_isAtTop = false;
    const bool isFirst = span.start == 0 && paragraph.kind == MVRScreenplayLine::Text;
    const QString number = isFirst ? paragraph.source->sceneNumber : QString();
    if (m_settings.showsNumbersLeft && !number.isEmpty())
        putAside(number, m_settings.numberLeft, MVRScreenplayLine::SceneNumber, line);
    m_pages->last().lines.append(line);
    if (m_settings.showsNumbersRight && !number.isEmpty())
        putAside(number, m_settings.numberRight, MVRScreenplayLine::SceneNumber, line);
    putRevisionMark(paragraph, span, line);
}

void PageComposer::putAside(const QString &text, double inches, MVRScreenplayLine::Kind kind,
                            const MVRScreenplayLine &line)
{
    MVRScreenplayRun run;
    run.text = text;
    if (kind == MVRScreenplayLine::SceneNumber)
        run.attr = m_settings.numberLook;
    MVRScreenplayParagraph source;
    source.attr.leftIndent = inches;
    source.attr.rightIndent = m_settings.pageSize.width() / pointsPerInch;
    source.runs = {run};
    FlowParagraph aside = m_flow.paragraph(source, -1);
    aside.kind = kind;
    aside.scene = line.scene;
    MVRScreenplayLine added = lineOf(aside, aside.lines.first(), line.y);
    added.column = line.column;
    m_pages->last().lines.append(added);
}

void PageComposer::putRevisionMark(const FlowParagraph &paragraph, const TextSpan &span,
                                   const MVRScreenplayLine &line)
{
    int newest = 0;
    const QVector<ShapedText::Piece> pieces = paragraph.text->pieces(span);
    for (const ShapedText::Piece &piece : pieces)
        newest = qMax(newest, paragraph.text->runs()[piece.run].attr.revisionId);
    if (newest <= 0 || paragraph.kind != MVRScreenplayLine::Text)
        return;
    if (m_settings.showsActiveRevisionOnly && newest != m_settings.activeRevision)
        return;
    const QString mark = m_settings.revisions.value(newest).mark;
    if (!mark.isEmpty())
        putAside(mark, m_settings.revisionMark, MVRScreenplayLine::RevisionMark, line);
}

FlowParagraph PageComposer::sceneLine(const QString &text, Qt::Alignment alignment,
                                      MVRScreenplayLine::Kind kind) const
{
    FlowParagraph line = m_flow.added(m_flow.paragraph(m_sceneLine, -1), text, kind);
    line.box.alignment = alignment;
    line.scene = m_scene;
    return line;
}

void PageComposer::putSceneBottom()
{
    if (!m_settings.marksBrokenScene)
        return;
    m_y += m_settings.lineHeight;
    put(sceneLine(m_settings.sceneBottomText, Qt::AlignRight, MVRScreenplayLine::SceneBottom), 1,
        -1, 0);
}

void PageComposer::putSceneTop()
{
    if (!m_settings.continuesBrokenScene)
        return;
    QString text = m_settings.sceneTopText;
    ++m_sceneBreaks;
    if (m_settings.countsContinueds && m_sceneBreaks > 1)
        text += QStringLiteral(" (%1)").arg(m_sceneBreaks);
    const FlowParagraph paragraph = sceneLine(text, Qt::AlignLeft, MVRScreenplayLine::SceneTop);
    const MVRScreenplayScene &scene = (*m_scenes)[m_scene];
    MVRScreenplayLine line = lineOf(paragraph, paragraph.lines.first(), m_y);
    if (m_settings.showsNumbersLeft && scene.isNumbered)
        putAside(scene.number, m_settings.numberLeft, MVRScreenplayLine::SceneNumber, line);
    m_pages->last().lines.append(line);
    if (m_settings.showsNumbersRight && scene.isNumbered)
        putAside(scene.number, m_settings.numberRight, MVRScreenplayLine::SceneNumber, line);
    m_y += paragraph.lineHeight;
    m_isBehindSceneTop = true;
}
