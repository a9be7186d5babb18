// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <finaldraft/MVRFinalDraft.h>

#include <QByteArray>
#include <QTextFormat>
#include <QVector>

class QTextDocument;

/*! Text of one format, as it is inserted by hand. */
struct SampleRun
{
    QString text;
    QTextCharFormat format;
};

/*! A paragraph of such text. */
struct SampleBlock
{
    QTextBlockFormat format;
    QVector<SampleRun> runs;
};

/*!
    Makes the XML of a screenplay like those that writers have: nine paragraph types, words cut by
    the spelling mark, bold and italic runs, a script note now and then.

    \param bytes  the size to reach; the text is the same for the same size
*/
QByteArray sampleScreenplay(int bytes);

/*!
    The paragraphs of a document, without what says from where in a file they came: by hand nobody
    gives every paragraph a format of its own.
*/
QVector<SampleBlock> sampleBlocks(const QTextDocument &document);

/*! Inserts paragraphs with Qt alone, which is the floor that readers are measured against. */
void insertByHand(const QVector<SampleBlock> &blocks, QTextDocument *document);

/*! The elements that a file's settings describe. */
QList<MVRScriptElement>
sampleElements(const QHash<QString, MVRFinalDraft::ElementSettings> &settings);
