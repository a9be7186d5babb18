// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>
#include <QVector>
#include <QXmlStreamReader>

/*!
    The paragraphs of a Final Draft file, read by what is known of the format and nothing of the
    library: a second opinion on what it writes.
*/
class FdxSchemaReader
{
public:
    struct Paragraph
    {
        QString text; /*!< of its own runs; line breaks as line separators */
        QString xml; /*!< canonical: attributes in order, without white space between elements */
    };

    explicit FdxSchemaReader(const QByteArray &file)
        : m_xml(file)
    {
        if (m_xml.readNextStartElement() && isAt("FinalDraft"))
            readRoot();
        else
            m_xml.raiseError(QStringLiteral("no FinalDraft"));
    }

    /*! Why the file is none; null when it is one. */
    QString error() const { return m_xml.hasError() ? m_xml.errorString() : QString(); }
    /*! Those of the title page, then those of the script; of dual dialogue what it holds. */
    QVector<Paragraph> paragraphs() const { return m_titlePage + m_script; }
    /*! What stands beside them and their notes, canonical. */
    QString rest() const { return m_rest; }
    /*! How many of them are on the title page. */
    int titlePageCount() const { return m_titlePage.size(); }

private:
    bool isAt(const char *name) const { return m_xml.name() == QLatin1String(name); }

    void readRoot()
    {
        QString ignored;
        while (m_xml.readNextStartElement()) {
            if (isAt("Content"))
                readParagraphs(&m_script);
            else if (isAt("TitlePage"))
                readTitlePage();
            else if (isAt("ScriptNotes") || isAt("UnanchoredScriptNotes"))
                m_xml.skipCurrentElement();
            else
                m_rest += element(false, &ignored);
        }
        while (!m_xml.atEnd())
            m_xml.readNext();
    }

    void readTitlePage()
    {
        while (m_xml.readNextStartElement()) {
            if (isAt("Content"))
                readParagraphs(&m_titlePage);
            else
                m_xml.skipCurrentElement();
        }
    }

    void readParagraphs(QVector<Paragraph> *paragraphs)
    {
        while (m_xml.readNextStartElement()) {
            if (isAt("Paragraph"))
                readParagraph(paragraphs);
            else
                m_xml.skipCurrentElement();
        }
    }

    void readParagraph(QVector<Paragraph> *paragraphs)
    {
        Paragraph paragraph;
        QVector<Paragraph> sideBySide;
        bool isWrapper = false;
        paragraph.xml = startTag();
        while (m_xml.readNextStartElement()) {
            if (isAt("DualDialogue")) {
                isWrapper = true;
                readParagraphs(&sideBySide);
            } else if (isAt("ScriptNote")) {
                m_xml.skipCurrentElement(); // goes with its text
            } else {
                const bool isRun = isAt("Text");
                QString text;
                paragraph.xml += element(isRun, &text);
                paragraph.text += isRun ? text : QString();
            }
        }
        paragraph.text.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
        if (!isWrapper || !paragraph.text.trimmed().isEmpty())
            paragraphs->append(paragraph);
        *paragraphs += sideBySide;
    }

    QString startTag() const
    {
        QMap<QString, QString> sorted;
        const QXmlStreamAttributes attributes = m_xml.attributes();
        for (const QXmlStreamAttribute &attribute : attributes)
            sorted.insert(attribute.name().toString(), attribute.value().toString());
        QString tag = QLatin1Char('<') + m_xml.name().toString();
        for (auto it = sorted.cbegin(); it != sorted.cend(); ++it)
            tag += QStringLiteral(" %1=\"%2\"").arg(it.key(), it.value().toHtmlEscaped());
        return tag + QLatin1Char('>');
    }

    QString element(bool keepsBlanks, QString *text)
    {
        QString xml = startTag();
        for (m_xml.readNext(); !m_xml.isEndElement() && !m_xml.atEnd(); m_xml.readNext()) {
            if (m_xml.isStartElement()) {
                xml += element(keepsBlanks || isAt("Text"), text);
            } else if (m_xml.isCharacters() && (keepsBlanks || !m_xml.isWhitespace())) {
                xml += m_xml.text().toString().toHtmlEscaped();
                *text += m_xml.text().toString();
            }
        }
        return xml + QStringLiteral("</>");
    }

    QXmlStreamReader m_xml;
    QString m_rest;
    QVector<Paragraph> m_titlePage;
    QVector<Paragraph> m_script;
};
