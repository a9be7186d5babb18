// SPDX-License-Identifier: MIT
#pragma once

#include "FdxBytes.h"

#include <core/MVRScriptElement.h>

#include <QDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

inline QByteArray sample(const QString &name)
{
    QFile file(QStringLiteral(MVR_TEST_DATA "/fdx/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QStringList sampleNames()
{
    return QDir(QStringLiteral(MVR_TEST_DATA "/fdx")).entryList({QStringLiteral("*.fdx")});
}

/*! A file and the document that it was read into. */
struct Opened
{
    explicit Opened(const QByteArray &bytes)
        : isRead(loadFdx(&file, bytes) && file.read(&document))
    {
        document.setUndoRedoEnabled(true);
    }

    QByteArray written() { return writtenFdx(&file, document); }
    QTextCursor find(const char *text) { return document.find(QString::fromUtf8(text)); }
    QString type(int block)
    {
        return document.findBlockByNumber(block).blockFormat().stringProperty(
            MVRScriptElement::NameProperty);
    }

    MVRFinalDraftFile file;
    QTextDocument document;
    bool isRead;
};

inline QByteArray script(const QByteArray &paragraphs, const QByteArray &rest = QByteArray(),
                         const QByteArray &version = "5")
{
    return "<FinalDraft DocumentType=\"Script\" Version=\"" + version + "\">\n  <Content>\n"
        + paragraphs + "  </Content>\n" + rest + "</FinalDraft>\n";
}

/*! Makes a change that write() has to look at, and that leaves the document as it was. */
inline void touch(QTextDocument *document)
{
    QTextCursor cursor(document);
    cursor.insertText(QStringLiteral("x"));
    cursor.deletePreviousChar();
}

/*! A row for every sample; the column is "bytes". */
inline void addSampleRows()
{
    QTest::addColumn<QByteArray>("bytes");
    const QStringList names = sampleNames();
    for (const QString &name : names)
        QTest::newRow(name.toUtf8().constData()) << sample(name);
}
