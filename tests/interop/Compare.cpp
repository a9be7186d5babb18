// SPDX-License-Identifier: MIT
#include "Content.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

namespace {

/*! One kind of difference: a property and the two values that it has. */
struct Difference
{
    int count = 0; // characters, or paragraphs
    QString first; // where
};

class Differences
{
public:
    void add(const QString &what, const QString &left, const QString &right, int count,
             const QString &where)
    {
        Difference &found = m_found[{what, left, right}];
        if (found.count == 0)
            found.first = where;
        found.count += count;
    }

    void add(const QString &what, const Properties &left, const Properties &right, int count,
             const QString &where)
    {
        QStringList names = left.keys() + right.keys();
        names.removeDuplicates();
        for (const QString &name : qAsConst(names)) {
            if (!isEqual(left.value(name), right.value(name)))
                add(what + name, left.value(name), right.value(name), count, where);
        }
    }

    QString table() const
    {
        QString rows;
        for (auto it = m_found.begin(); it != m_found.end(); ++it) {
            const QStringList cells {it.key().at(0), it.key().at(1), it.key().at(2),
                                     QString::number(it->count), it->first};
            QString row = cells.join(QLatin1String(" | "));
            row.replace(QLatin1Char('\n'), QLatin1String("\\n"));
            rows += QLatin1String("| ") + row + QLatin1String(" |\n");
        }
        return rows;
    }

private:
    // Programs round lengths, each in its own unit.
    static bool isEqual(const QString &left, const QString &right)
    {
        bool leftIsNumber = false;
        bool rightIsNumber = false;
        const double a
            = left.isEmpty() ? 0 : left.section(QLatin1Char(' '), 0, 0).toDouble(&leftIsNumber);
        const double b
            = right.isEmpty() ? 0 : right.section(QLatin1Char(' '), 0, 0).toDouble(&rightIsNumber);
        const bool isLength = leftIsNumber || rightIsNumber;
        const bool sameUnit
            = left.section(QLatin1Char(' '), 1) == right.section(QLatin1Char(' '), 1);
        return left == right || (isLength && sameUnit && qAbs(a - b) <= 0.11);
    }

    QMap<QStringList, Difference> m_found;
};

/*! Pairs of indexes of paragraphs with the same text: the longest common sequence. */
QVector<QPair<int, int>> aligned(const Content &left, const Content &right)
{
    const int rows = left.paragraphs.size();
    const int columns = right.paragraphs.size();
    QVector<QVector<int>> best(rows + 1, QVector<int>(columns + 1, 0));
    const auto same = [&](int row, int column) {
        return left.paragraphs.at(row).text == right.paragraphs.at(column).text;
    };
    for (int row = rows - 1; row >= 0; --row) {
        for (int column = columns - 1; column >= 0; --column)
            best[row][column] = same(row, column)
                ? best[row + 1][column + 1] + 1
                : std::max(best[row + 1][column], best[row][column + 1]);
    }
    QVector<QPair<int, int>> pairs;
    for (int row = 0, column = 0; row < rows && column < columns;) {
        if (same(row, column))
            pairs.append({row++, column++});
        else if (best[row + 1][column] >= best[row][column + 1])
            ++row;
        else
            ++column;
    }
    return pairs;
}

void addMissing(const Content &content, const QSet<int> &found, bool isLeft,
                Differences *differences)
{
    for (int i = 0; i < content.paragraphs.size(); ++i) {
        const QString text = content.paragraphs.at(i).text.left(60);
        if (!found.contains(i))
            differences->add(QStringLiteral("text"), isLeft ? text : QString(),
                             isLeft ? QString() : text, 1, QStringLiteral("paragraph %1").arg(i));
    }
}

void compareRuns(const Content::Paragraph &left, const Content::Paragraph &right,
                 Differences *differences)
{
    int at = 0;
    int leftRun = 0;
    int rightRun = 0;
    int leftEnd = left.runs.isEmpty() ? 0 : left.runs.at(0).length;
    int rightEnd = right.runs.isEmpty() ? 0 : right.runs.at(0).length;
    while (at < left.text.size()) {
        while (leftEnd <= at)
            leftEnd += left.runs.at(++leftRun).length;
        while (rightEnd <= at)
            rightEnd += right.runs.at(++rightRun).length;
        const int end = std::min(leftEnd, rightEnd);
        const bool isPicture = left.text.at(at) == QChar::ObjectReplacementCharacter;
        if (!isPicture) // nobody sees its font
            differences->add(QString(), left.runs.at(leftRun).format,
                             right.runs.at(rightRun).format, end - at,
                             left.text.mid(at, std::min(end - at, 30)));
        at = end;
    }
}

void compareNotes(const Content &left, const Content &right, Differences *differences)
{
    const int count = std::max(left.notes.size(), right.notes.size());
    for (int i = 0; i < count; ++i) {
        const Content::Note a = left.notes.value(i);
        const Content::Note b = right.notes.value(i);
        const auto properties = [](const Content::Note &note) {
            return Properties {{QStringLiteral("kind"), note.kind},
                               {QStringLiteral("place"), note.before},
                               {QStringLiteral("content"), note.text},
                               {QStringLiteral("author"), note.author}};
        };
        differences->add(QStringLiteral("note: "), properties(a), properties(b), 1,
                         QStringLiteral("note %1").arg(i));
    }
}

} // namespace

QString plainText(const Content &content)
{
    QString text;
    for (const Content::Paragraph &paragraph : content.paragraphs)
        text += paragraph.text + QLatin1Char('\n');
    return text;
}

QString compare(const Content &left, const Content &right)
{
    Differences differences;
    QSet<int> foundLeft;
    QSet<int> foundRight;
    const auto pairs = aligned(left, right);
    for (const auto &pair : pairs) {
        foundLeft.insert(pair.first);
        foundRight.insert(pair.second);
        const Content::Paragraph &a = left.paragraphs.at(pair.first);
        const Content::Paragraph &b = right.paragraphs.at(pair.second);
        differences.add(QStringLiteral("paragraph: "), a.format, b.format, 1, a.text.left(30));
        compareRuns(a, b, &differences);
    }
    addMissing(left, foundLeft, true, &differences);
    addMissing(right, foundRight, false, &differences);
    compareNotes(left, right, &differences);
    return differences.table();
}
