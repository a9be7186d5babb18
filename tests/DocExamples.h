// SPDX-License-Identifier: MIT
#pragma once

// What the examples of the documentation may use without saying so: the public headers, Qt, and
// these arguments.
#include <bbcode/MVRBbCodeConverter.h>
#include <core/MVRDomDoc.h>
#include <core/MVRParagraphView.h>
#include <core/MVRSettings.h>
#include <core/MVRTextFinder.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/MVRFinalDraftReader.h>
#include <finaldraft/MVRFinalDraftWriter.h>
#include <pages/MVRPagePainter.h>
#include <pages/MVRScreenplayPages.h>
#include <text/MVRNoteHighlighter.h>
#include <text/MVRNotesModel.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

#include <thread>

#define DOC_EXAMPLE_ARGUMENTS                                                                      \
    QTextDocument *document, QTextCursor cursor, QTextEdit *edit, const QString &fileName

struct DocExample
{
    const char *name;
    void (*run)(DOC_EXAMPLE_ARGUMENTS);
};

/*! Runs each of the examples on a small document, and on a copy of the example screenplay. */
template <int count> int runDocExamples(int argc, char *argv[], const DocExample (&examples)[count])
{
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    if (!folder.isValid() || !QDir::setCurrent(folder.path()))
        return 1;
    const QString script = QStringLiteral("script.fdx");
    for (const DocExample &example : examples) {
        QFile::remove(script);
        if (!QFile::copy(QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx"), script))
            return 1;
        qInfo() << example.name;
        QTextEdit edit;
        edit.setPlainText(QStringLiteral("The gulls leave."));
        QTextCursor cursor(edit.document());
        cursor.select(QTextCursor::Document);
        example.run(edit.document(), cursor, &edit, script);
    }
    return 0;
}
