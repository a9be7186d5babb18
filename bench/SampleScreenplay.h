// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <finaldraft/MVRFinalDraft.h>

#include <QByteArray>
#include <QTextDocument>
#include <QTextFormat>
#include <QVector>

class QIODevice;

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

/*! One screenplay in the forms that the benchmarks start from. */
struct Sample
{
    QByteArray xml;
    QTextDocument document;
    QList<MVRScriptElement> elements;
    QVector<SampleBlock> blocks;
};

/*! Reads a screenplay and the settings of its elements. */
using ReadSample = bool (*)(QIODevice *xml, QTextDocument *document,
                            QHash<QString, MVRFinalDraft::ElementSettings> *settings);

/*!
    The screenplay of a size, made when it is first asked for.

    \param bytes  its size
    \param read   reads it; the same for every size in a program
*/
const Sample &sample(qint64 bytes, ReadSample read);
