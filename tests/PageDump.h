// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplayPages.h>

#include <QFile>
#include <QStringList>

/*! A page as a typewriter shows it, a row for every sixth of an inch. */
inline QStringList rowsOf(const MVRScreenplayPage &page)
{
    QStringList rows;
    for (const MVRScreenplayLine &line : page.lines) {
        const int row = qRound(line.y / 12.0);
        while (rows.size() <= row)
            rows.append(QString());
        for (const MVRScreenplayLine::Run &run : line.runs) {
            const int column = qRound(run.x / 7.2);
            QString &text = rows[row];
            text = text.leftJustified(column);
            text.replace(column, run.text.size(), run.text);
        }
    }
    return rows;
}

/*! All pages, each with its name and the numbers of its rows. */
inline QByteArray dumpOf(const MVRScreenplayPages &pages)
{
    QString dump;
    for (const MVRScreenplayPage &page : pages.pages()) {
        dump += page.isTitlePage ? QStringLiteral("title page\n")
                                 : QStringLiteral("page %1\n").arg(page.number);
        const QStringList rows = rowsOf(page);
        for (int i = 0; i < rows.size(); ++i) {
            if (!rows[i].trimmed().isEmpty())
                dump += QStringLiteral("%1|%2\n").arg(i, 2).arg(rows[i]);
        }
    }
    return dump.toUtf8();
}

/*! The screenplay of a file of tests/data/pages; an empty one where it cannot be read. */
inline MVRScreenplay screenplayOf(const QString &name)
{
    QFile file(QStringLiteral(MVR_TEST_DATA "/pages/%1.fdx").arg(name));
    MVRScreenplay screenplay;
    if (!file.open(QIODevice::ReadOnly)
        || !MVRScreenplay::fromFinalDraft(&file, &screenplay, nullptr))
        return MVRScreenplay();
    return screenplay;
}

/*! A paragraph of a new script. */
inline MVRScreenplayParagraph scriptParagraph(const QString &type, const QString &text)
{
    MVRScreenplayParagraph made;
    const MVRFinalDraft::ElementSettings element = MVRScreenplay::standardElement(type);
    made.type = type;
    made.paginateAs = element.paginateAs;
    made.attr = element.paragraphSpec;
    MVRScreenplayRun run;
    run.text = text;
    run.attr = element.fontSpec;
    made.runs.append(run);
    return made;
}
