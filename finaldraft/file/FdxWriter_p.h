// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxMatch_p.h>
#include <finaldraft/file/FdxNotes_p.h>

#include <QHash>
#include <QSet>

/*! Puts what a document changed back into the source of its file. */
class FdxWriter
{
public:
    /*!
        \param anchors  for the anchors of notes in documents: index of the file's note
    */
    FdxWriter(FdxScript &script, const FdxPlaces &places, const QVector<FdxNote> &notes,
              const QHash<QString, int> &anchors, int fileId,
              const QList<MVRScriptElement> &elements, const QTextDocument *document);

    /*! Settings for types that the file has none of, as XML. */
    void setSettings(const QHash<QString, QByteArray> &settings) { m_settings = settings; }

    /*! The file as the document has it, in UTF-8. */
    QByteArray write();

private:
    /*! What is known of a container while its new paragraphs are placed. */
    struct Container
    {
        int behind = -1; // end of the element that the next one follows
        int modelStart = -1; // of that element, whose white space is taken
        int firstInPlace = -1; // paragraph whose element is the first to stay
        QByteArray content; // of a container that nothing stays in
    };

    void compareParagraphs();
    FdxRunEdit runEdit(const FdxEntry &entry);
    void writeParagraphs();
    void removeParagraphs();
    void removeWrapper(int paragraph);
    void findFirstInPlace();
    void findAlive();
    int elementOf(int paragraph, int container) const;
    void placeNew(int container, const QByteArray &element);
    void passInPlace(int entry);
    void fillContainers();
    QByteArray gapBefore(int position) const;

    FdxType &newType(const FdxEntry &entry);
    QByteArray newTypeName(const FdxEntry &entry) const;
    QByteArray shapeName(const FdxEntry &entry) const;
    void writeSettings();
    FdxSplices paragraphSplices(int entry);
    void addAttribute(const FdxElement &element, const char *name, const QByteArray &value,
                      FdxSplices *splices) const;
    void addShape(const FdxEntry &entry, FdxType &type, FdxSplices *splices);
    QByteArray element(int entry);
    QByteArray movedParagraph(int entry);

    // What is new to the file, in FdxNewParagraph.cpp.

    QByteArray newDualDialogue(int first);
    QByteArray newParagraph(int entry);
    QByteArray newRuns(int index, FdxType &type) const;

    // Notes, in FdxNoteWriter.cpp; which of them stay, in FdxNoteMatch.cpp.

    /*! A note that comes into a paragraph, behind so much of its text; -1: as its first child. */
    struct NewNote
    {
        int offset;
        QByteArray element;
    };

    void matchNotes();
    bool hasMoved(const FdxNote &note, const FdxDocumentNote &now) const;
    void findKeptText();
    bool hasKeptText(const MVRTextRange &range) const;
    bool isUnderOther(const FdxNote &note) const;
    bool isGone(const FdxNote &note);
    QString textInPlaceOf(int entry, int from, int to);
    void writeNotes();
    void writeKeptNote(int index);
    void writeRange(int index);
    void writeNewNotes();
    void addRangeNotes(const QByteArray &elements);
    FdxSplices contentSplices(int index) const;
    FdxSplices noteSplices(int paragraph) const;
    FdxSplices childSplices(int entry) const;
    FdxSplice childSplice(const FdxEntry &entry, const NewNote &note, const QVector<FdxRun> &runs,
                          const QVector<int> &ends) const;
    MVRTextRange anchorOf(const FdxDocumentNote &note) const;
    QByteArray newNote(const FdxDocumentNote &note, int id) const;
    QByteArray noteParagraphs(const FdxDocumentNote &note) const;
    bool isRangeFile() const;
    bool isRunFile() const;
    void findNumbers();
    int dualDialogueOf(const FdxEntry &entry) const;
    int numberOf(int position) const;
    int moved(int position) const;

    FdxScript &m_script;
    const FdxTree &m_tree;
    const FdxPlaces &m_places;
    const QVector<FdxNote> &m_notes;
    const QHash<QString, int> &m_anchors;
    QList<MVRScriptElement> m_elements; // the application's
    QHash<QString, QByteArray> m_settings; // by type, for types without
    FdxMatch m_match;
    FdxSplices m_splices;
    QVector<Container> m_containers;
    QSet<int> m_alive; // wrappers that stay, among other paragraphs
    QVector<int> m_documentNote; // for each note of the file: index in m_match.notes; -1: none
    QSet<int> m_keptNotes; // indexes in m_match.notes
    QVector<int> m_nextKept; // by paragraph: the next one with text that nobody changed
    struct Changes
    {
        QVector<FdxRunEdit::Hunk> hunks;
        QString text;
    };
    QHash<int, Changes> m_changes; // by entry, where notes are missing
    QHash<int, QVector<int>> m_goneIn; // by paragraph: notes that go out of it
    QHash<int, QVector<int>> m_changedIn; // by paragraph: notes whose content was changed
    QHash<int, QVector<NewNote>> m_newIn; // by entry: notes that come into it
    QVector<int> m_numbers; // by entry: the number that ranges count it from
};
