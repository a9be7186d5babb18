// SPDX-License-Identifier: MIT
#include <pages/PageComposer_p.h>

#include <QLocale>

namespace {

/*! What the labels of one page stand for. */
struct PageFacts
{
    const MVRScreenplay &screenplay;
    const MVRScreenplayPage &page;
    const QVector<MVRScreenplayScene> &scenes;
    int number;
};

QString pageNumber(const PageFacts &facts)
{
    return QString::number(facts.number);
}

QString date(const PageFacts &facts)
{
    const QDate date = facts.screenplay.date;
    return QLocale::c().toString(date.isValid() ? date : QDate::currentDate(),
                                 QStringLiteral("M/d/yy"));
}

QString title(const PageFacts &facts)
{
    return facts.screenplay.title;
}

// The first scene that the page shows something of.
QString scene(const PageFacts &facts)
{
    for (const MVRScreenplayLine &line : facts.page.lines) {
        if (line.scene >= 0)
            return facts.scenes[line.scene].number;
    }
    return QString();
}

QString activeRevision(const PageFacts &facts)
{
    const MVRScreenplaySettings &settings = facts.screenplay.settings;
    return settings.revisions.value(settings.activeRevision).name;
}

// The newest revision that the page has text of.
QString revisionOfPage(const PageFacts &facts)
{
    int newest = 0;
    for (const MVRScreenplayLine &line : facts.page.lines) {
        for (const MVRScreenplayLine::Run &run : line.runs)
            newest = qMax(newest, run.attr.revisionId);
    }
    return facts.screenplay.settings.revisions.value(newest).name;
}

struct Label
{
    const char *name;
    QString (*text)(const PageFacts &facts);
};

constexpr Label labels[] = {
    {"Page #", pageNumber},
    {"Page", pageNumber},
    {"Date", date},
    {"Last Revised", date},
    {"Title", title},
    {"Script Title", title},
    {"File Name", title},
    {"Scene #", scene},
    {"Scene", scene},
    {"Active Revision", activeRevision},
    {"Collated Revisions", revisionOfPage},
    {"Revision", revisionOfPage},
    {"Revision Label", revisionOfPage},
};

QString labelText(const QString &name, const PageFacts &facts)
{
    for (const Label &label : labels) {
        if (name.compare(QLatin1String(label.name), Qt::CaseInsensitive) == 0)
            return label.text(facts);
    }
    return QString();
}

MVRScreenplayParagraph filled(MVRScreenplayParagraph paragraph, const PageFacts &facts)
{
    for (MVRScreenplayRun &run : paragraph.runs) {
        if (!run.label.isEmpty())
            run.text = labelText(run.label, facts);
    }
    return paragraph;
}

QVector<MVRScreenplayLine> linesOf(const MVRScreenplayHeader &header, const PageFacts &facts,
                                   MVRScreenplayLine::Kind kind)
{
    const PageFlow flow(facts.screenplay, nullptr);
    QVector<MVRScreenplayLine> lines;
    double y = 0.0;
    for (const MVRScreenplayParagraph &paragraph : header.paragraphs) {
        const MVRScreenplayParagraph source = filled(paragraph, facts);
        FlowParagraph laidOut = flow.paragraph(source, -1);
        laidOut.kind = kind;
        y += lines.isEmpty() ? 0.0 : laidOut.spaceBefore;
        for (const TextSpan &span : qAsConst(laidOut.lines)) {
            lines.append(lineOf(laidOut, span, y));
            y += laidOut.lineHeight;
        }
    }
    return lines;
}

// Empty lines are there for their height only.
QVector<MVRScreenplayLine> movedTo(QVector<MVRScreenplayLine> lines, double top)
{
    QVector<MVRScreenplayLine> moved;
    for (MVRScreenplayLine &line : lines) {
        line.y += top;
        if (!line.text().trimmed().isEmpty())
            moved.append(line);
    }
    return moved;
}

}

void addFurniture(const MVRScreenplay &screenplay, const QVector<MVRScreenplayScene> &scenes,
                  int index, MVRScreenplayPage &page)
{
    const bool isFirst = index == 0;
    // Title pages count for themselves.
    const PageFacts facts {screenplay, page, scenes, page.isTitlePage ? index + 1 : page.number};
    const MVRScreenplaySettings &settings = screenplay.settings;
    const MVRScreenplayHeader &header = page.isTitlePage ? settings.titleHeader : settings.header;
    const MVRScreenplayHeader &footer = page.isTitlePage ? settings.titleFooter : settings.footer;
    const auto shows = [isFirst](const MVRScreenplayHeader &part) {
        return part.isVisible && (part.isOnFirstPage || !isFirst);
    };
    QVector<MVRScreenplayLine> lines;
    if (shows(header))
        lines = movedTo(linesOf(header, facts, MVRScreenplayLine::Header), settings.headerMargin);
    lines += page.lines;
    if (shows(footer)) {
        const QVector<MVRScreenplayLine> foot = linesOf(footer, facts, MVRScreenplayLine::Footer);
        const double height = foot.isEmpty() ? 0.0 : foot.last().y + foot.last().height;
        lines += movedTo(foot, settings.pageSize.height() - settings.footerMargin - height);
    }
    page.lines = lines;
}
