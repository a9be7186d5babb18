// SPDX-License-Identifier: MIT
#pragma once

#include <fuzz/Bytes.h>

#include <QTextCursor>
#include <QVector>

class QTextDocument;

/*! What an operation is called with. */
struct Call
{
    Bytes &bytes;
    QTextDocument &document;
    QTextDocument &other;
    QTextCursor cursor; /*!< of the document, of the other one, or null */
};

struct Operation
{
    enum Kind {
        Reads, /*!< leaves the document as it is */
        Edits, /*!< is undone and done again exactly */
        EditsAsOne, /*!< the same, in one step */
        Replaces, /*!< the same, also where it puts in what it takes out */
        Marks, /*!< the same, and changes marks inside the selection only */
        Restarts /*!< keeps no history, or changes what has none */
    };

    const char *name;
    Kind kind;
    void (*run)(Call &call);
};

/*! Every public operation on documents. */
const QVector<Operation> &operations();

/*! Those, and what menus of editors do to notes. */
const QVector<Operation> &operationsAndNoteEdits();
