// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxNotes_p.h>
#include <finaldraft/file/FdxScript_p.h>

class QTextDocument;

/*! An attribute of a paragraph, or of its SceneProperties, as a property of its block. */
struct FdxBlockAttribute
{
    const char *name;
    int property;
};

constexpr FdxBlockAttribute fdxParagraphAttributes[] = {
    {"Number", MVRFinalDraftFile::SceneNumberProperty},
    {"Label", MVRFinalDraftFile::LabelProperty},
    {"Bookmark", MVRFinalDraftFile::BookmarkProperty},
};

constexpr FdxBlockAttribute fdxSceneAttributes[] = {
    {"Title", MVRFinalDraftFile::SceneTitleProperty},
    {"Color", MVRFinalDraftFile::SceneColorProperty},
    {"Length", MVRFinalDraftFile::SceneLengthProperty},
    {"Page", MVRFinalDraftFile::ScenePageProperty},
};

/*!
    Inserts title page and script into an empty document; \a fileId tells whose paragraphs they are.

    \return how many characters each paragraph's block has
*/
QVector<int> fdxInsertScript(FdxScript &script, int fileId, QTextDocument *document);

/*!
    Attaches the notes to the document that the script was inserted into.

    \return for each note's anchor in the document: its index
*/
QHash<QString, int> fdxAttachNotes(const QVector<FdxNote> &notes, const FdxTree &tree,
                                   QTextDocument *document);

/*! A note's content as RTF. */
QByteArray fdxNoteRtf(const FdxElement &note, const FdxTree &tree);
