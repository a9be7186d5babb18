// SPDX-License-Identifier: MIT
#include <tool/Columns.h>

#include <QTextBoundaryFinder>
#include <QVector>

#include <algorithm>

namespace {

struct Characters
{
    uint first;
    uint last;
};

// What Unicode calls wide (East Asian Width W or F), blocks of one kind put together.
constexpr Characters wideCharacters[] = {
    {0x1100, 0x115f},   {0x231a, 0x231b},   {0x2329, 0x232a},   {0x23e9, 0x23ec},
    {0x23f0, 0x23f0},   {0x23f3, 0x23f3},   {0x25fd, 0x25fe},   {0x2614, 0x2615},
    {0x2648, 0x2653},   {0x267f, 0x267f},   {0x2693, 0x2693},   {0x26a1, 0x26a1},
    {0x26aa, 0x26ab},   {0x26bd, 0x26be},   {0x26c4, 0x26c5},   {0x26ce, 0x26ce},
    {0x26d4, 0x26d4},   {0x26ea, 0x26ea},   {0x26f2, 0x26f3},   {0x26f5, 0x26f5},
    {0x26fa, 0x26fa},   {0x26fd, 0x26fd},   {0x2705, 0x2705},   {0x270a, 0x270b},
    {0x2728, 0x2728},   {0x274c, 0x274c},   {0x274e, 0x274e},   {0x2753, 0x2755},
    {0x2757, 0x2757},   {0x2795, 0x2797},   {0x27b0, 0x27b0},   {0x27bf, 0x27bf},
    {0x2b1b, 0x2b1c},   {0x2b50, 0x2b50},   {0x2b55, 0x2b55},   {0x2e80, 0x303e},
    {0x3041, 0x4dbf},   {0x4e00, 0xa4cf},   {0xa960, 0xa97f},   {0xac00, 0xd7a3},
    {0xf900, 0xfaff},   {0xfe10, 0xfe19},   {0xfe30, 0xfe6f},   {0xff01, 0xff60},
    {0xffe0, 0xffe6},   {0x16fe0, 0x1b2ff}, {0x1f004, 0x1f004}, {0x1f0cf, 0x1f0cf},
    {0x1f18e, 0x1f18e}, {0x1f191, 0x1f19a}, {0x1f1e6, 0x1f320}, {0x1f32d, 0x1f335},
    {0x1f337, 0x1f37c}, {0x1f37e, 0x1f393}, {0x1f3a0, 0x1f3ca}, {0x1f3cf, 0x1f3d3},
    {0x1f3e0, 0x1f3f0}, {0x1f3f4, 0x1f3f4}, {0x1f3f8, 0x1f43e}, {0x1f440, 0x1f440},
    {0x1f442, 0x1f4fc}, {0x1f4ff, 0x1f53d}, {0x1f54b, 0x1f54e}, {0x1f550, 0x1f567},
    {0x1f57a, 0x1f57a}, {0x1f595, 0x1f596}, {0x1f5a4, 0x1f5a4}, {0x1f5fb, 0x1f64f},
    {0x1f680, 0x1f6c5}, {0x1f6cc, 0x1f6cc}, {0x1f6d0, 0x1f6d2}, {0x1f6d5, 0x1f6df},
    {0x1f6eb, 0x1f6ec}, {0x1f6f4, 0x1f6fc}, {0x1f7e0, 0x1f7eb}, {0x1f90c, 0x1f93a},
    {0x1f93c, 0x1f945}, {0x1f947, 0x1f9ff}, {0x1fa70, 0x1faff}, {0x20000, 0x3fffd},
};

constexpr uint emojiPresentation = 0xfe0f; // behind a sign: it is drawn as an emoji

bool isWide(uint character)
{
    const auto *range = std::lower_bound(
        std::begin(wideCharacters), std::end(wideCharacters), character,
        [](const Characters &characters, uint wanted) { return characters.last < wanted; });
    return range != std::end(wideCharacters) && range->first <= character;
}

int columnsOfCharacter(uint character)
{
    if (character == emojiPresentation || isWide(character))
        return 2;
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
    case QChar::Other_Control:
        return 0;
    default:
        return 1;
    }
}

/*! What a reader takes for one character is as wide as the widest part of it. */
int columnsOfCluster(const QString &cluster)
{
    int columns = 0;
    const QVector<uint> characters = cluster.toUcs4();
    for (const uint character : characters)
        columns = std::max(columns, columnsOfCharacter(character));
    return columns;
}

/*! Calls visit(end, columns) for each cluster until that answers false. */
template <typename Visit> void visitClusters(const QString &text, const Visit &visit)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int start = 0;
    for (int end = int(finder.toNextBoundary()); end > start; end = int(finder.toNextBoundary())) {
        if (!visit(end, columnsOfCluster(text.mid(start, end - start))))
            return;
        start = end;
    }
}

}

int columnCount(const QString &text)
{
    int count = 0;
    visitClusters(text, [&count](int, int columns) {
        count += columns;
        return true;
    });
    return count;
}

QString cutToColumns(const QString &text, int columns)
{
    if (columnCount(text) <= columns)
        return text;
    int left = columns - 1; // the last one is the ellipsis'
    int kept = 0;
    visitClusters(text, [&](int end, int width) {
        left -= width;
        if (left >= 0)
            kept = end;
        return left >= 0;
    });
    return text.left(kept) + QChar(0x2026);
}
