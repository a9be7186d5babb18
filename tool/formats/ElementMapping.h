// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <array>

class QTextDocument;

/*!
    Which screenplay elements the paragraphs of other documents become.

    An empty name leaves the paragraph to its shape; what has none of a screenplay is Action.
*/
struct ElementMapping
{
    QString scene = QStringLiteral("Scene Heading"); /*!< headings that read like one of a scene */
    /*! Other headings, by level from 1 on. */
    std::array<QString, 6> headings
        = {general(), general(), general(), general(), general(), general()};
    QString text;

    static QString general() { return QStringLiteral("General"); }

    /*! All elements that it names. */
    QStringList names() const;
};

/*!
    Takes a mapping from words: "outline" makes headings Outline 1 to Outline 4, and pairs joined by
    commas say it one by one: "h1=Act,headings=General,scenes=Shot,text=Dialogue".

    \param error  receives what is wrong
    \return false when the words are none of these; \a mapping may have been changed then
*/
bool readElementMapping(const QString &words, ElementMapping *mapping, QString *error);

/*! Gives the paragraphs of a document that did not come from a screenplay their elements. */
void nameElements(QTextDocument &document, const ElementMapping &mapping);
