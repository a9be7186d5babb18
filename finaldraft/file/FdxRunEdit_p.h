// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxScript_p.h>

#include <QVector>

/*! A run of text as a document has it. */
struct FdxNewRun
{
    QString text;
    QTextCharFormat format;
};

/*! What of a paragraph's text stayed: so many characters in front and behind. */
struct FdxTextDiff
{
    int prefix = 0;
    int suffix = 0;
    int oldLength = 0;
    int newLength = 0;

    bool isSame() const { return prefix == oldLength && prefix == newLength; }
    /*! Where what stood at \a offset stands now. */
    int moved(int offset) const
    {
        if (offset <= prefix)
            return offset;
        if (offset >= oldLength - suffix)
            return newLength - (oldLength - offset);
        return qMin(offset, newLength - suffix);
    }
};

/*!
    Writes the runs of a paragraph again with the least change.

    What stands in front of and behind the change stays as it is, byte by byte. Changed text goes
    into the run that it was changed in, if it looks like that, else into a new one.
*/
class FdxRunEdit
{
public:
    /*! Text that was changed: characters [oldStart, oldEnd) became [newStart, newEnd). */
    struct Hunk
    {
        int oldStart;
        int oldEnd;
        int newStart;
        int newEnd;
    };

    /*!
        \param oldType  the type that the file gives the paragraph
        \param newType  the type that the document gives it
    */
    FdxRunEdit(const FdxScript &script, const FdxElement &paragraph, FdxType &oldType,
               FdxType &newType, const QVector<FdxNewRun> &runs);

    const FdxTextDiff &diff() const { return m_diff; }
    FdxSplices splices() const;
    QVector<Hunk> hunks() const;

private:
    struct OldRun
    {
        FdxRun run;
        QString text;
        FdxLook look;
        FdxLook lookInNewType;
        int start;
        int end;
    };
    struct NewRun
    {
        QString text;
        FdxLook look;
        FdxLook lookInOldType;
        int end;
    };
    struct Change; // what becomes of the runs

    static bool isSameLook(const OldRun &oldRun, const NewRun &newRun);
    int commonLength(bool fromEnd, int limit) const;
    void compare();
    void alignChange(const QString &oldText);
    QVector<NewRun> changedRuns(const Hunk &hunk) const;
    Hunk trimmed(Hunk hunk) const;
    Change assign(const Hunk &hunk) const;
    bool belongsToRight(const Hunk &hunk, const Change &change) const;
    void addHunk(const Hunk &hunk, FdxSplices *splices) const;
    void addInserted(const Change &change, FdxSplices *splices) const;
    void addSplit(const Hunk &hunk, const Change &change, FdxSplices *splices) const;
    FdxSplice replaceText(const OldRun &run, int from, int to, const QByteArray &bytes) const;
    FdxSplice setText(const OldRun &run, const QString &text) const;
    QByteArray startTag(const OldRun &run) const;
    QByteArray newElement(const NewRun &run, const OldRun *model) const;
    QByteArray escaped(const QString &text) const;

    const FdxTree &m_tree;
    FdxElement m_paragraph;
    FdxType &m_type;
    QVector<OldRun> m_old;
    QVector<NewRun> m_new;
    FdxTextDiff m_diff;
};

/*! What a Text says to look like \a look in a paragraph of a type, with a leading blank. */
QByteArray fdxRunAttributes(const FdxLook &look, const FdxType &type);

/*! Line ends as the file has them. */
QByteArray fdxNewLine(const FdxTree &tree);
