// SPDX-License-Identifier: MIT
#pragma once

#include <QTextDocument>

/*! Switches a document's undo recording off while it lives and gives back the former state. */
class UndoRecordingOff
{
public:
    explicit UndoRecordingOff(QTextDocument *document)
        : m_document(document)
        , m_wasEnabled(document->isUndoRedoEnabled())
    {
        m_document->setUndoRedoEnabled(false);
    }
    ~UndoRecordingOff() { m_document->setUndoRedoEnabled(m_wasEnabled); }
    Q_DISABLE_COPY_MOVE(UndoRecordingOff)

private:
    QTextDocument *m_document;
    bool m_wasEnabled;
};
