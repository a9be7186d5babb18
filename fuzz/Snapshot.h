// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>

#include <QByteArray>
#include <QDataStream>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QVector>

/*! What stands in a document, to be compared; numbers of lists and tables are left out. */
class Snapshot
{
public:
    explicit Snapshot(const QTextDocument &document)
        : m_firstFormat(document.begin().charFormat())
    {
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            addBlock(block);
        addFrames(*document.rootFrame());
    }

    /*! Also the character format of the first paragraph, which Qt changes without undo. */
    bool isExactly(const Snapshot &other) const
    {
        return *this == other && m_firstFormat == other.m_firstFormat;
    }
    bool operator==(const Snapshot &other) const { return m_parts == other.m_parts; }
    bool operator!=(const Snapshot &other) const { return m_parts != other.m_parts; }

    /*! The first part in which two documents differ, of both, for a look at a finding. */
    QByteArray difference(const Snapshot &other) const
    {
        int part = 0;
        while (part < m_parts.size() && m_parts.value(part) == other.m_parts.value(part))
            ++part;
        return "part " + QByteArray::number(part) + "\n" + m_parts.value(part).toPercentEncoding()
            + "\n" + other.m_parts.value(part).toPercentEncoding() + "\n";
    }

private:
    template <typename Format> static Format withoutNumber(Format format)
    {
        format.clearProperty(QTextFormat::ObjectIndex);
        return format;
    }

    void addBlock(const QTextBlock &block)
    {
        QByteArray part;
        QDataStream stream(&part, QIODevice::WriteOnly);
        stream << block.text() << withoutNumber(block.blockFormat());
        if (block.position() > 0)
            stream << withoutNumber(block.charFormat());
        if (block.textList())
            stream << withoutNumber(block.textList()->format());
        int length = 0; // of a run: Qt may cut it where nothing differs
        QTextCharFormat format;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat next = withoutNumber(it.fragment().charFormat());
            if (length > 0 && next != format) {
                stream << length << format;
                length = 0;
            }
            format = next;
            length += it.fragment().length();
        }
        stream << length << format;
        m_parts.append(part);
    }

    void addFrames(const QTextFrame &root)
    {
        QVector<const QTextFrame *> open {&root};
        while (!open.isEmpty()) {
            const QTextFrame *frame = open.takeLast();
            QByteArray part;
            QDataStream stream(&part, QIODevice::WriteOnly);
            stream << frame->firstPosition() << frame->lastPosition();
            if (const auto *table = qobject_cast<const QTextTable *>(frame))
                stream << table->rows() << table->columns();
            m_parts.append(part);
            const QList<QTextFrame *> children = frame->childFrames();
            for (const QTextFrame *child : children)
                open.append(child);
        }
    }

    QTextCharFormat m_firstFormat;
    QVector<QByteArray> m_parts;
};

/*! The marks of each character of a document: its notes and what is to be kept of its format. */
inline QVector<int> marksOf(const QTextDocument &document)
{
    static constexpr MVRTextFormat::Property properties[]
        = {MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty,
           MVRTextFormat::InspectorCommentProperty, MVRTextFormat::InspectorFootnoteProperty,
           MVRTextFormat::PreserveFormattingProperty};
    QVector<int> marks(document.characterCount());
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            int mark = 0;
            for (const int property : properties)
                mark = mark * 2 + int(it.fragment().charFormat().boolProperty(property));
            for (int i = 0; i < it.fragment().length(); ++i)
                marks[it.fragment().position() + i] = mark;
        }
    }
    return marks;
}
