// SPDX-License-Identifier: MIT
#include <text/MVRWordCounter.h>

#include <core/MVRTextFormat.h>
#include <core/STextDoc.h>
#include <core/document/ChangedText_p.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {

MVRWordCounter::Words wordsOf(const QTextBlock &block)
{
    const QString text = block.text();
    QString outside;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        if (!format.boolProperty(MVRTextFormat::InlineAnnotationProperty)
            && !format.boolProperty(MVRTextFormat::InlineFootnoteProperty))
            outside += it.fragment().text();
    }
    const int all = STextDoc::wordCountText(text);
    return {all, outside.size() == text.size() ? all : STextDoc::wordCountText(outside)};
}

/*! What one paragraph adds to the total, until it goes. */
class ParagraphCount : public QTextBlockUserData
{
public:
    ParagraphCount(std::shared_ptr<MVRWordCounter::Words> total, const QTextBlock &block)
        : words(wordsOf(block))
        , m_total(std::move(total))
    {
        m_total->all += words.all;
        m_total->outsideNotes += words.outsideNotes;
    }
    ~ParagraphCount() override
    {
        m_total->all -= words.all;
        m_total->outsideNotes -= words.outsideNotes;
    }

    const MVRWordCounter::Words words;

private:
    std::shared_ptr<MVRWordCounter::Words> m_total;
};

} // namespace

MVRWordCounter::MVRWordCounter(QTextDocument *document)
    : QObject(document)
    , m_document(document)
    , m_total(std::make_shared<Words>())
{
    if (!document)
        return;
    document->documentLayout(); // without one Qt tells nothing of edits
    connect(document, &QTextDocument::contentsChange, this, &MVRWordCounter::count);
    count(0, 0, document->characterCount());
}

void MVRWordCounter::count(int position, int removed, int added)
{
    Q_UNUSED(removed) // paragraphs that are gone took their counts along
    const int end = position + added + leftOutOfChange(*m_document, position, added);
    QTextBlock block = m_document->findBlock(position);
    for (; block.isValid() && block.position() <= end; block = block.next())
        block.setUserData(new ParagraphCount(m_total, block));
}

int MVRWordCounter::words(const QTextCursor &selection)
{
    const int start = selection.selectionStart();
    const int end = selection.selectionEnd();
    if (start == end)
        return 0;
    int words = 0;
    QTextBlock block = selection.document()->findBlock(start);
    for (; block.isValid() && block.position() < end; block = block.next()) {
        const int first = qMax(0, start - block.position());
        const int last = qMin(block.length() - 1, end - block.position());
        const auto *whole = dynamic_cast<const ParagraphCount *>(block.userData());
        if (whole && first == 0 && last == block.length() - 1)
            words += whole->words.all;
        else
            words += STextDoc::wordCountText(block.text().mid(first, last - first));
    }
    return words;
}
