// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRTextNote.h>

#include <QAbstractTableModel>
#include <QPointer>

#include <vector>

class QTextDocument;

/*!
    The notes of a document as a table, in document order, for a view beside the text.

    The model follows the edits of its document. One edit costs a listing of the notes that it
    touches and one pass over the positions of the others; rows that only move keep their place,
    selection and persistent indexes. It never changes the document, sorts nothing itself, and works
    below QSortFilterProxyModel, for which SortRole gives typed values.
*/
class MVRTEXT_EXPORT MVRNotesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /*! What the columns hold. */
    enum Column { KindColumn, TextColumn, ContentColumn, ColorColumn, AuthorColumn, DateColumn };
    static constexpr int columns = DateColumn + 1; /*!< how many there are */

    /*! What data() gives beside Qt's own roles. */
    enum Role {
        SortRole = Qt::UserRole, /*!< kind as a number, texts, colour name, date */
        StartRole, /*!< first position of the note, in UTF-16 code units */
        EndRole, /*!< position behind its last character */
        ResolvedRole /*!< whether the note needs nobody any more */
    };

    /*! An empty model, until setDocument(). */
    explicit MVRNotesModel(QObject *parent = nullptr);
    ~MVRNotesModel() override;

    /*!
        Lists the notes of \a document from now on. It is not owned; when it is destroyed the model
        becomes empty. Null: an empty model. The document gets its layout, without which Qt tells
        nothing of edits.
    */
    void setDocument(QTextDocument *document);
    /*! The document whose notes are listed; null for none. */
    QTextDocument *document() const;

    /*! The note of a row, with its place after all edits so far; a default one for a bad row. */
    MVRTextNote note(int row) const;

    /*! The row of the note that has the character behind \a position, the innermost one where an
        inline note lies in an inspector note's text; -1 when there is none. */
    int rowAt(int position) const;
    /*! The row of a note that was listed once, wherever it stands by now; of several copies the one
        in its old place, else the last one. -1 when it is gone or says something else. */
    int rowOf(const MVRTextNote &note) const;

    /*! The number of notes; 0 below a row. */
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    /*! The number of columns; 0 below a row. */
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /*! A cell: its text, for ColorColumn also Qt::DecorationRole, and the roles above; an invalid
        variant for other roles and without a document. */
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /*! The translated head of a column. */
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /*! Notes came, went or changed; emitted once behind the row signals of an edit. */
    void notesChanged();
    /*! Notes from \a row on stand at other positions than before. */
    void notesMoved(int row);

private:
    struct Row
    {
        MVRTextNote note;
        mutable QString content; // as plain text, made when asked for
        mutable bool hasContent = false;
    };
    struct Edit
    {
        int position;
        int removed;
        int added;

        int growth() const { return added - removed; }
        int oldEnd() const { return position + removed; }
        int newEnd() const { return position + added; }
    };
    struct Span
    {
        int first; // rows [first, last)
        int last;
        MVRTextNotes notes; // that take their place
    };

    void follow(int position, int removed, int added);
    Span changedSpan(const Edit &edit) const;
    void followEdit(int from, const Edit &edit);
    bool replaceRows(const Span &span, const Edit &edit);
    void reset();
    QString content(const Row &row) const;
    QVariant text(const Row &row, int column) const;

    QPointer<QTextDocument> m_document;
    std::vector<Row> m_rows;
};
