// SPDX-License-Identifier: MIT
#include <tool/formats/HtmlLists.h>

#include <core/MVRToolkit.h>

#include <QHash>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QVector>

#include <algorithm>

namespace {

/*! What has been seen of a list. */
struct Part
{
    QTextList *list = nullptr; // of the last item
    int place = -1; // where the cell or frame begins that this stands in
    int items = 0; // of all parts
};

// Where the cell or frame begins that a paragraph stands in.
int placeOf(const QTextBlock &block)
{
    const QTextCursor cursor(block);
    QTextFrame *frame = cursor.currentFrame();
    const auto *table = qobject_cast<const QTextTable *>(frame);
    return table ? table->cellAt(cursor.position()).firstPosition() : frame->firstPosition();
}

void takeItem(const QTextBlock &block, Part &part, QVector<int> &numbers)
{
    constexpr int maxItems = 500; // each that joins a list makes Qt go through all of them
    const int place = placeOf(block);
    if (!part.list) {
        part.list = block.textList();
        numbers.append(1);
    } else if (place != part.place
               || (block.textList() != part.list && part.list->count() >= maxItems)) {
        part.list = QTextCursor(block).createList(part.list->format());
        numbers.append(part.items + 1);
    } else if (block.textList() != part.list) {
        part.list->add(block);
    }
    part.place = place;
    ++part.items;
}

// Gives the number of the first item of each list, in the order in which the lists begin.
QVector<int> partListsAtCells(QTextDocument *text)
{
    QVector<int> numbers;
    if (text->rootFrame()->childFrames().isEmpty())
        return numbers;
    QHash<const QTextList *, Part> parts;
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next()) {
        if (const QTextList *list = block.textList())
            takeItem(block, parts[list], numbers);
    }
    return numbers;
}

// Writes which of the numbered lists begin with another number than 1.
void startListsAt(const QVector<int> &numbers, QString *html)
{
    if (std::all_of(numbers.cbegin(), numbers.cend(), [](int number) { return number == 1; }))
        return;
    static const QRegularExpression start(QStringLiteral("<[ou]l(?=[ >])"));
    QString started;
    int written = 0;
    QRegularExpressionMatchIterator tags = start.globalMatch(*html);
    for (int i = 0; i < numbers.size() && tags.hasNext(); ++i) {
        const QRegularExpressionMatch tag = tags.next();
        if (numbers[i] == 1 || tag.capturedView() == QLatin1String("<ul"))
            continue;
        started += QStringView(*html).mid(written, tag.capturedEnd() - written);
        started += QStringLiteral(" start=\"%1\"").arg(numbers[i]);
        written = int(tag.capturedEnd());
    }
    *html = started + html->mid(written);
}

}

QString htmlWithWholeLists(QTextDocument *text)
{
    const QVector<int> numbers = partListsAtCells(text);
    QString html = MVRToolkit::toHtml(*text);
    startListsAt(numbers, &html);
    return html;
}
