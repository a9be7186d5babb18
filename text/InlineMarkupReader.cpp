// SPDX-License-Identifier: MIT
#include <text/InlineMarkup_p.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <core/MVRTextFormat.h>
#include <core/document/EditBlock_p.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/WellFormed_p.h>

#include <QTextBlock>
#include <QTextDocument>

namespace {

/*!
    The places of a marker in \a text, those too that come to be when one inside them is deleted:
    "<$Mvr<$MvrKeepWithNext>KeepWithNext>" is one place.
*/
QVector<MVRTextRange> keepWithNextMarkers(const QString &text)
{
    struct Letter
    {
        int position;
        int matched; // how many letters of the marker end here
    };
    static const QString marker = QStringLiteral("<$mvrkeepwithnext>");
    QVector<MVRTextRange> places;
    if (!text.contains(marker, Qt::CaseInsensitive))
        return places;
    QVector<Letter> left; // what deleting leaves of the text so far
    for (int i = 0; i < text.size(); ++i) {
        const QChar letter = text[i].toCaseFolded();
        int matched = left.isEmpty() ? 0 : left.last().matched;
        // Nothing but a marker's first letter begins another one.
        if (letter == marker[matched])
            ++matched;
        else
            matched = letter == marker[0] ? 1 : 0;
        left.append({i, matched});
        if (matched < marker.size())
            continue;
        const int start = left[left.size() - marker.size()].position;
        left.resize(left.size() - marker.size());
        while (!places.isEmpty() && places.last().start > start)
            places.removeLast();
        places.append(MVRTextRange(start, i + 1));
    }
    return places;
}

void removeText(QTextCursor &cursor, const MVRTextRange &range)
{
    cursor.setPosition(range.start);
    cursor.setPosition(range.end, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void removeKeepWithNextMarkers(QTextDocument *document)
{
    QTextCursor cursor(document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const int position = block.position();
        const QVector<MVRTextRange> markers = keepWithNextMarkers(block.text());
        for (auto it = markers.crbegin(); it != markers.crend(); ++it)
            removeText(cursor, MVRTextRange(position + it->start, position + it->end));
    }
}

/*! An opening code and the closing code that ends what it opened. */
struct CodePair
{
    MVRTextRange opening;
    MVRTextRange closing;
};

/*!
    Pairs each opening code with the first closing code behind it, the next one being searched for
    behind that. A code lies within one paragraph.
    \param start  finds opening codes, \a end closing ones
*/
QVector<CodePair> codePairs(const QTextDocument *document, const QRegularExpression &start,
                            const QRegularExpression &end)
{
    QVector<CodePair> pairs;
    MVRTextRange opening;
    bool isOpen = false;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const QString text = wellFormed(block.text().replace(QChar::Nbsp, QLatin1Char(' ')));
        for (int offset = 0;;) {
            const QRegularExpressionMatch match = findMatch(isOpen ? end : start, text, offset);
            if (!match.hasMatch())
                break;
            offset = int(match.capturedEnd());
            const MVRTextRange code(block.position() + int(match.capturedStart()),
                                    block.position() + offset);
            if (isOpen)
                pairs.append({opening, code});
            else
                opening = code;
            isOpen = !isOpen;
        }
    }
    return pairs;
}

/*! Removes the codes of one kind and marks what they enclose. */
class CodeReader
{
public:
    explicit CodeReader(const InlineMarkup::Code &code)
        : m_property(code.property)
        , m_opening(InlineMarkup::openingPattern(code))
        , m_closing(InlineMarkup::closingPattern(code))
    {
    }

    void read(QTextDocument *document) const
    {
        const QVector<CodePair> pairs = codePairs(document, m_opening, m_closing);
        if (pairs.isEmpty())
            return;
        const EditBlock editBlock(document);
        QTextCharFormat mark;
        mark.setProperty(m_property, true);
        QTextCursor cursor(document);
        // From the last to the first, so that what is removed moves no pair still to be read.
        for (auto pair = pairs.crbegin(); pair != pairs.crend(); ++pair) {
            mergeIntoRange(cursor, pair->opening.end, pair->closing.start, mark);
            removeText(cursor, pair->closing);
            removeText(cursor, pair->opening);
        }
    }

private:
    int m_property;
    QRegularExpression m_opening;
    QRegularExpression m_closing;
};

/*! Whether the text holds anything that looks like a code. */
bool holdsCodes(const QTextDocument &document)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        if (text.contains(QLatin1String("{\\Mvrn_")) || text.contains(QLatin1String("{$MVRImage"))
            || text.contains(QLatin1String("<$mvrkeep"), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

void InlineMarkup::readNoteCodes(QTextDocument *document)
{
    static const CodeReader readers[] = {CodeReader(InlineMarkup::codes[InlineMarkup::Footnote]),
                                         CodeReader(InlineMarkup::codes[InlineMarkup::Annotation]),
                                         CodeReader(InlineMarkup::codes[InlineMarkup::Preserve])};
    for (const CodeReader &reader : readers)
        reader.read(document);
}

void MVRTextDoc::fromInlineMarkup(QTextDocument *document)
{
    fromInlineMarkup(document, MVRPicturePolicy::anywhere());
}

void MVRTextDoc::fromInlineMarkup(QTextDocument *document, const MVRPicturePolicy &policy)
{
    if (!document)
        return;
    document->setUndoRedoEnabled(false);
    if (holdsCodes(*document)) {
        const EditBlock editBlock(document);
        removeKeepWithNextMarkers(document);
        fromInlineMarkupImageLinks(document, policy);
        InlineMarkup::readNoteCodes(document);
    }
    document->setUndoRedoEnabled(true);
}
