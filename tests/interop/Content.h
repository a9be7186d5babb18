// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>
#include <QVector>

/*! Names and values as text; lengths are points. A property that is not there has its default. */
using Properties = QMap<QString, QString>;

/*!
    What a document says, whoever read it: the vocabulary in which two programs' readings of one
    file are compared.
*/
struct Content
{
    struct Run
    {
        int length = 0; /*!< in UTF-16 code units */
        Properties format;
    };

    struct Paragraph
    {
        QString text; /*!< a picture is U+FFFC, a line break U+2028 */
        Properties format;
        QVector<Run> runs;

        void append(const QString &piece, const Properties &pieceFormat)
        {
            text += piece;
            runs.append({int(piece.size()), pieceFormat});
        }
    };

    struct Note
    {
        QString kind;
        QString before; /*!< the last characters before the end of its place */
        QString text;
        QString author;
    };

    QVector<Paragraph> paragraphs;
    QVector<Note> notes;
};

/*! Reads an RTF file with this library. \return false when it is none */
bool readRtf(const QByteArray &bytes, Content *content);

/*! Reads a flat OpenDocument text, which LibreOffice makes of all that it reads. */
bool readFlatOdt(const QByteArray &bytes, Content *content);

/*! The paragraphs' text, a line each. */
QString plainText(const Content &content);

/*!
    Compares two readings, property by property.
    \return a table in Markdown: what differs, both values, how often and where first
*/
QString compare(const Content &left, const Content &right);

/*! A length as properties have it; nothing for 0. */
inline QString lengthText(double points)
{
    const double rounded = qRound(points * 10) / 10.0;
    return rounded == 0 ? QString() : QString::number(rounded);
}

/*! Sets a property, or leaves it out where \a value is empty. */
inline void setProperty(Properties *properties, const char *name, const QString &value)
{
    if (value.isEmpty())
        properties->remove(QString::fromLatin1(name));
    else
        properties->insert(QString::fromLatin1(name), value);
}

inline void setProperty(Properties *properties, const char *name, const char *value)
{
    setProperty(properties, name, QString::fromLatin1(value));
}
