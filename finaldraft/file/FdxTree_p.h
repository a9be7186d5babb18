// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <pugixml.hpp>

#include <memory>

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

    Character data is no part of the tree: it is read from the source, see FdxText_p.h.
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

    FdxTree();
    ~FdxTree();
    Q_DISABLE_COPY_MOVE(FdxTree)

    /*! Parses a file in place of the one before; false when it is not well-formed or too deep. */
    bool load(const QByteArray &file);
    QString errorString() const { return m_errorString; }

    /*! The file as it was loaded, in its own encoding. */
    const QByteArray &file() const { return m_file; }
    /*! The file in UTF-8, which all places count in. */
    const QByteArray &source() const { return m_source; }
    /*! Text in UTF-8 in the encoding of the file. */
    QByteArray toFileEncoding(const QByteArray &utf8) const;
    /*! The source with all of \a splices made; of those at one place, the first stands first. */
    QByteArray spliced(FdxSplices splices) const;

    /*! The first element of the file; null when nothing is loaded. */
    pugi::xml_node root() const;

    int start(const pugi::xml_node &element) const;
    Span span(const pugi::xml_node &element) const;
    /*! The end of the start tag, behind its ">". */
    int tagEnd(const pugi::xml_node &element) const;
    /*! Where an attribute's value stands, without the quotes. */
    Span span(const pugi::xml_attribute &attribute) const;
    /*! The start of the white space in front of \a position. */
    int gapStart(int position) const;
    /*! The source of [start, end), valid as long as the tree is. */
    QByteArray slice(int start, int end) const
    {
        return QByteArray::fromRawData(m_source.constData() + start, end - start);
    }

private:
    enum Encoding { Utf8, Utf16LittleEndian, Utf16BigEndian, Latin1 };

    bool decode();
    bool isShallow() const;
    Span leafSpan(const pugi::xml_node &element) const;
    bool fail(const char *message, int offset);
    int offset(const char *place) const { return int(place - m_buffer.constData()); }
    int find(char character, int from) const;

    QByteArray m_file;
    QByteArray m_source;
    QByteArray m_buffer; // the source once more: names and values of the tree point into it
    Encoding m_encoding = Utf8;
    std::unique_ptr<pugi::xml_document> m_document;
    QString m_errorString;
};

/*! \a source with splices made whose places count from \a base. */
QByteArray fdxSpliced(const QByteArray &source, FdxSplices splices, int base = 0);

/*! The element's attribute of that name as text; null when it has none. */
inline QString fdxAttribute(const pugi::xml_node &element, const char *name)
{
    const pugi::xml_attribute attribute = element.attribute(name);
    return attribute ? QString::fromUtf8(attribute.value()) : QString();
}

inline bool fdxIs(const pugi::xml_node &node, const char *name)
{
    return qstrcmp(node.name(), name) == 0 && node.type() == pugi::node_element;
}
