// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRNoteHighlighter.h>

class QWidget;

/*! Tints notes, and shows text that is black by its format in the colour of text on this page. */
class Tints : public MVRNoteHighlighter
{
public:
    /*! \param page  its palette counts; call rehighlight() when that changes */
    Tints(QTextDocument *document, const QWidget *page);

protected:
    QVector<QTextLayout::FormatRange> looks(const QTextBlock &block) const override;

private:
    const QWidget *m_page;
};
