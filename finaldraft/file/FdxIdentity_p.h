// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxMatch_p.h>

#include <QBitArray>

/*!
    Turns the marks of blocks into the paragraphs that they came from.

    The blocks of a large script carry the remainder of their paragraph's index. A block goes on
    where the one in front of it left off, if its mark fits and its text, or what follows it, does.
    Where that ends, of the paragraphs with its mark the one is taken at which the most text goes on
    as in the file, then the nearest. A block that fits nowhere is one of the paragraphs that are
    left over. It takes time in proportion to the script.
*/
class FdxIdentity
{
public:
    /*! The origins of \a entries are marks, -1 for none; identify() makes them paragraphs. */
    FdxIdentity(const FdxScript &script, QVector<FdxEntry> *entries);

    void identify();

private:
    struct Text
    {
        quint32 hash; // of text and mark
        int paragraph;
        bool operator<(const Text &other) const
        {
            return hash != other.hash ? hash < other.hash : paragraph < other.paragraph;
        }
    };

    const QString &text(int entry);
    bool isMarked(int entry, int paragraph) const;
    bool hasText(int entry, int paragraph);
    bool fits(int entry, int paragraph);
    bool goesOn(int entry, int paragraph);
    int nextWithBlock(int paragraph) const;
    int best(int entry, int expected, int resumed);
    int votes(int entry, int paragraph);
    QVector<int> candidates(int entry, int expected, int resumed);
    void addNear(int mark, int expected, QVector<int> *candidates) const;
    void addAlike(int entry, int expected, int ahead, QVector<int> *candidates);
    void settleClaims();
    void findStrays();
    void findTexts();
    static quint32 hashOf(const QString &text, int mark);

    const FdxScript &m_script;
    QVector<FdxEntry> &m_entries;
    struct Stray
    {
        int entry;
        int expected; // paragraph that should have stood there
    };

    QBitArray m_isSure; // by entry
    QVector<Stray> m_strays; // blocks that only their mark is known of
    QVector<int> m_marks; // as the blocks have them
    QVector<Text> m_texts; // of all paragraphs; empty until one is looked for

    static constexpr int keptTexts = 16; // blocks are looked at again and again
    QString m_kept[keptTexts];
    int m_keptOf[keptTexts];
};
