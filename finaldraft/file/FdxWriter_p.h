// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxMatch_p.h>
#include <finaldraft/file/FdxNotes_p.h>

#include <QHash>
#include <QSet>

#include <string_view>
#include <unordered_map>

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

    /*! What has to be changed for the file to be as the document has it. */
    FdxSplices splices();

private:
    /*! What is known of a container while its new paragraphs are placed. */
    struct Container
    {
        int behind = -1; // end of the element that the next one follows
        int modelStart = -1; // of that element, whose white space is taken
        int firstInPlace = -1; // paragraph whose element is the first to stay
        QByteArray content; // of a container that nothing stays in
    };

    void writeParagraphs();
    void removeParagraphs();
    void removeWrapper(int paragraph);
    void findFirstInPlace();
    void findAlive();
    int elementOf(int paragraph, int container) const;
    void placeNew(int container, const QByteArray &element);
    void passInPlace(int entry);
    void fillContainers();
    void fill(const FdxElement &node, const QByteArray &content);
    QByteArray gapBefore(int position) const;

    void writeSettings();
    FdxSplices paragraphSplices(int entry);
    QByteArray element(int entry);
    QByteArray movedParagraph(int entry);

    // What is as the file has it, in FdxCompare.cpp.

    /*! What a block's format makes of its element. */
    struct Shown
    {
        QByteArray typeName;
        FdxType *type = nullptr;
        FdxType *oldType = nullptr; // in the file
        bool isAsInFile = false; // no attribute of the element changes
    };
    struct ShownKey
    {
        int format; // of the block, as its document counts them
        bool isTitlePage;
        bool wasTitlePage;
        std::string_view tag; // that the element begins with

        bool operator==(const ShownKey &other) const
        {
            return format == other.format && isTitlePage == other.isTitlePage
                && wasTitlePage == other.wasTitlePage && tag == other.tag;
        }
    };
    struct ShownHash
    {
        size_t operator()(const ShownKey &key) const
        {
            return std::hash<std::string_view>()(key.tag) * 31 + size_t(key.format);
        }
    };

    QByteArray newTypeName(const FdxEntry &entry) const;
    QByteArray shapeName(const FdxEntry &entry) const;
    const Shown &shown(const FdxEntry &entry);
    FdxSplices attributeSplices(const FdxEntry &entry);
    void addAttribute(const FdxElement &element, const char *name, const QByteArray &value,
                      FdxSplices *splices) const;
    void addShape(const FdxEntry &entry, FdxType &type, FdxSplices *splices);
    void compareParagraphs();
    bool isAsInFile(const FdxEntry &entry);
    bool isShownAs(const QTextFragment &fragment, const FdxType &type, const FdxRunStyle &style);
    FdxRunEdit runEdit(const FdxEntry &entry);
    FdxTextDiff diff(int entry) const;

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
    bool isUnderOther(const FdxNote &note);
    bool isGone(const FdxNote &note);
    struct Changes
    {
        QVector<FdxRunEdit::Hunk> hunks;
        QString text;
    };
    const Changes &changes(int entry);
    QString textInPlaceOf(int entry, int from, int to);
    void writeNotes();
    void writeKeptNote(int index);
    void writeRange(int index);
    void writeNewNotes();
    void addRangeNotes(const QByteArray &elements);
    FdxSplices contentSplices(int index) const;
    FdxSplices noteSplices(int paragraph) const;
    FdxSplices childSplices(int entry) const;
    FdxSplice childSplice(int index, const NewNote &note, const QVector<FdxRun> &runs,
                          const QVector<int> &ends) const;
    MVRTextRange anchorOf(const FdxDocumentNote &note);
    QByteArray newNote(const FdxDocumentNote &note, const MVRTextRange &anchor, int id) const;
    QByteArray noteParagraphs(const FdxDocumentNote &note) const;
    bool isRangeFile() const;
    bool isRunFile() const;
    void findNumbers();
    int dualDialogueOf(const FdxEntry &entry) const;
    int numberOf(int position) const;
    int moved(int position);
    int movedWithin(int entry, int offset);

    FdxScript &m_script;
    const FdxTree &m_tree;
    const FdxPlaces &m_places;
    const QVector<FdxNote> &m_notes;
    const QHash<QString, int> &m_anchors;
    QList<MVRScriptElement> m_elements; // the application's
    QHash<QString, QByteArray> m_settings; // by type, for types without
    FdxMatch m_match;
    QHash<int, FdxTextDiff> m_diffs; // by entry, of paragraphs whose text was changed
    std::unordered_map<ShownKey, Shown, ShownHash> m_shown;
    const FdxRunStyle *m_sameStyle = nullptr; // that looks as the format of that index
    int m_sameFormat = -1;
    FdxSplices m_splices;
    QVector<Container> m_containers;
    QByteArray m_newContent; // of a file that has no container
    QSet<int> m_alive; // wrappers that stay, among other paragraphs
    QVector<int> m_documentNote; // for each note of the file: index in m_match.notes; -1: none
    QSet<int> m_keptNotes; // indexes in m_match.notes
    QVector<int> m_nextKept; // by paragraph: the next one with text that nobody changed
    QHash<int, Changes> m_changes; // by entry, where notes are missing or move
    QHash<int, QVector<int>> m_goneIn; // by paragraph: notes that go out of it
    QHash<int, QVector<int>> m_changedIn; // by paragraph: notes whose content was changed
    QHash<int, QVector<NewNote>> m_newIn; // by entry: notes that come into it
    int m_anchorEntry = -1; // the last one with an inline note
    QString m_anchorText; // of that entry, which may have many
    QVector<int> m_numbers; // by entry: the number that ranges count it from
};
