// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxElement_p.h>

#include <QByteArray>
#include <QString>
#include <QVector>

class QIODevice;

/*! New bytes for the stretch [start, end) of a file. */
struct FdxSplice
{
    int start;
    int end;
    QByteArray bytes;
};
using FdxSplices = QVector<FdxSplice>;

/*!
    The source of a Final Draft file and the tree of its elements, each of which knows its place in
    the source, so that what nobody changed can be copied as it stands.

    Character data is no part of the tree, nor are attributes: they are read from the source, see
    FdxText_p.h and FdxElement_p.h.
*/
class FdxTree
{
public:
    /*! Where an element stands: [start, end), its content [innerStart, innerEnd). */
    struct Span
    {
        int start = 0;
        int innerStart = 0;
        int innerEnd = 0;
        int end = 0;
        bool isEmptyTag = false; /*!< "<a/>": then all but start equal end */
    };

    FdxTree() = default;
    Q_DISABLE_COPY_MOVE(FdxTree)

    /*! Parses a file in place of the one before; false when it is not well-formed or too deep. */
    bool load(const QByteArray &file);
    QString errorString() const { return m_errorString; }

    /*! The file as it was loaded, in its own encoding. */
    const QByteArray &file() const { return m_file; }
    /*! The file in UTF-8, which all places count in. */
    const QByteArray &source() const { return m_source; }
    /*!
        Writes the file with all of \a splices made; of those at one place, the first stands first.
        False when not all was written.
    */
    bool write(QIODevice *device, const FdxSplices &splices) const;

    /*! The first element of the file; null when nothing is loaded. */
    FdxElement root() const { return at(0); }
    FdxElement parent(int element) const { return at(m_nodes[element].parent); }
    FdxElement next(int element) const;
    FdxElement firstChild(int element) const;

    int start(const FdxElement &element) const { return m_nodes[element.index()].start; }
    Span span(const FdxElement &element) const;
    /*! The end of the start tag, behind its ">". */
    int tagEnd(const FdxElement &element) const { return m_nodes[element.index()].innerStart; }
    /*! The start of the white space in front of \a position. */
    int gapStart(int position) const;
    /*! The source of [start, end), valid as long as the tree is. */
    QByteArray slice(int start, int end) const
    {
        return QByteArray::fromRawData(m_source.constData() + start, end - start);
    }

private:
    enum Encoding { Utf8, Utf16LittleEndian, Utf16BigEndian, Latin1 };

    /*! An element; those that it holds follow it. */
    struct Node
    {
        int start;
        int innerStart;
        int innerEnd;
        int end;
        int parent;
        int behind; // index of what follows the element and all that it holds
    };

    FdxElement at(int index) const
    {
        return index >= 0 && index < m_nodes.size() ? FdxElement(this, index) : FdxElement();
    }
    bool parse();
    bool parse(QVector<Node> *nodes);
    void decode();
    /*! Text in UTF-8 in the encoding of the file. */
    QByteArray toFileEncoding(const QByteArray &utf8) const;
    bool fail(const char *message, int offset);

    QByteArray m_file;
    QByteArray m_source;
    Encoding m_encoding = Utf8;
    QVector<Node> m_nodes; // in document order
    QString m_errorString;

    friend class FdxTreeBuilder;
};

/*! \a source with splices made whose places count from \a base. */
QByteArray fdxSpliced(const QByteArray &source, const FdxSplices &splices, int base = 0);
