// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/read/RtfDocumentBuilder.h>
#include <core/rtf/read/RtfNoteReader.h>
#include <core/rtf/read/RtfStory.h>

#include <QTextDocument>
#include <QVariantMap>

#include <memory>

/*!
    Headers and footers (RTF 1.9.1, "Headers and Footers"): the first of each kind, as files of
    their own.
*/
class RtfPageTextReader
{
public:
    /*! \param write  called at the end of each text; without it none is wanted */
    explicit RtfPageTextReader(RtfContentWriter write)
        : m_write(std::move(write))
    {
    }

    bool isOpen() const { return m_open != nullptr; }
    /*! \param word  the destination's, for example "headerf" */
    bool canBegin(const QString &word) const;
    /*!
        \param story       becomes that of the text
        \param isInHeader  what finish() gives back
    */
    void begin(const QString &word, const RtfDocumentBuilder &model, RtfStory *story,
               bool isInHeader);
    /*! \param story  becomes what it was around the text */
    bool finish(RtfStory *story);
    /*! The content by word, each an RTF file. */
    const QVariantMap &texts() const { return m_texts; }

private:
    struct OpenText
    {
        QString word;
        QTextDocument content;
        std::unique_ptr<RtfDocumentBuilder> builder;
        RtfStory outer;
        bool isInHeader = false;
    };

    RtfContentWriter m_write;
    std::unique_ptr<OpenText> m_open;
    QVariantMap m_texts;
};
