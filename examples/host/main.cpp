// SPDX-License-Identifier: MIT
// Prints the notes of a Final Draft screenplay, each behind the words that it is attached to.
#include <finaldraft/MVRFinalDraftReader.h>
#include <text/MVRTextDoc.h>

#include <QGuiApplication>
#include <QTextDocument>
#include <QTextStream>

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QTextStream out(stdout);
    MVRFinalDraftReader reader;
    QTextDocument script;
    if (!reader.load(application.arguments().value(1)) || !reader.read(&script, {})) {
        out << "cannot read the screenplay. " << reader.errorString() << '\n';
        return 1;
    }
    const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(&script, -1, -1);
    for (auto note = notes.cbegin(); note != notes.cend(); ++note) {
        const QTextCursor place = note.key().toTextCursor(&script);
        const QString content = MVRTextDoc::commentText(place.charFormat(), false);
        out << place.selectedText() << ": " << content << '\n';
    }
    return 0;
}
