// SPDX-License-Identifier: MIT
// Searches any text for anything: the count is right and the rest of the text stays.
#include <fuzz/Bytes.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>
#include <text/MVRTextDoc.h>

#include <QRegularExpression>
#include <QTextDocument>

#ifdef MVR_HAS_QREGEXP
#include <QRegExp>
#endif

void fuzz_replace(const QByteArray &input)
{
    Bytes bytes(input);
    const int syntax = bytes.upTo(3);
    const QString before = bytes.text(12);
    const QString after = bytes.text(12);
    const int from = bytes.upTo(20);
    const QString text = QString::fromUtf8(bytes.rest());

    QTextDocument document;
    document.setPlainText(text);
    const QString whole = document.toPlainText();
    QTextCursor cursor(&document);
    cursor.setPosition(qMin(from, document.characterCount() - 1));
    const int plain = MVRTextDoc::replaceAll(before, after, cursor);
    require(plain >= 0 && (plain == 0 || !before.isEmpty()), "nothing is found by nothing");
    require(plain > 0 || document.toPlainText() == whole, "what is not found changes nothing");
    document.undo();
    require(!document.isUndoAvailable(), "replacing is one undo step");
    require(document.toPlainText() == whole, "undo brings the text back");

    QTextCursor again(&document);
    MVRTextDoc::replace(QRegularExpression(before, QRegularExpression::PatternOptions(syntax)),
                        after, again);
#ifdef MVR_HAS_QREGEXP
    static constexpr QRegExp::PatternSyntax syntaxes[]
        = {QRegExp::RegExp, QRegExp::RegExp2, QRegExp::Wildcard, QRegExp::FixedString};
    MVRTextDoc::replace(QRegExp(before, Qt::CaseInsensitive, syntaxes[syntax]), after, again);
#endif
}
