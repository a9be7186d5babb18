// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/BoundedNames_p.h>
#include <core/rtf/lex/RtfCodePages.h>
#include <core/rtf/model/RtfNoteWords.h>
#include <core/rtf/model/RtfPage.h>
#include <core/rtf/model/RtfResources.h>
#include <core/rtf/read/RtfGroups.h>

#include <optional>

/*! Collects the entries of \fonttbl (RTF 1.9.1, "Font Table") into the resources. */
class RtfFontTable
{
public:
    explicit RtfFontTable(RtfResources *resources)
        : m_resources(resources)
    {
    }

    /*! The names are those of faces, as macOS writes them. */
    void setFaces() { m_faces = true; }
    void begin(int number);
    void setCodePage(int codePage) { m_font.codePage = codePage; }
    /*! The code page that the name of the current entry is written in; 0: the document's. */
    int codePage() const { return m_font.codePage; }
    void addText(const QString &text);
    /*! Stores the current entry, also one that lacks its semicolon. */
    void finish();

private:
    RtfResources *m_resources;
    RtfFont m_font;
    BoundedNames m_families;
    int m_number = -1;
    bool m_faces = false;
};

/*! Collects the entries of \colortbl (RTF 1.9.1, "Color Table") into the resources. */
class RtfColorTable
{
public:
    explicit RtfColorTable(RtfResources *resources)
        : m_resources(resources)
    {
    }

    void begin();
    /*! \param component  0: red, 1: green, 2: blue */
    void setComponent(int component, int value);
    void addText(const QString &text);

private:
    RtfResources *m_resources;
    int m_components[3] = {};
    bool m_automatic = true;
};

/*! What a file says about itself (RTF 1.9.1, "Header", "Information Group"). */
class RtfHeaderReader
{
public:
    /*! \param resources  receive the entries of the tables */
    explicit RtfHeaderReader(RtfResources *resources)
        : m_resources(*resources)
        , m_fonts(resources)
        , m_colors(resources)
    {
    }

    RtfFontTable &fonts() { return m_fonts; }
    RtfColorTable &colors() { return m_colors; }
    RtfInfo &info() { return m_info; }

    /*! One length of the page that the file says, in twips. */
    void setPage(int RtfPage::*length, int twips);
    /*! The page, where the file says one; else nothing. */
    const std::optional<RtfPage> &page() const { return m_page; }

    /*! \ansicpg and its kin: the code page of text whose font has none. */
    void setCodePage(RtfGroup *group, int codePage);
    /*! \fcharset */
    void setCharset(int charset);
    /*! The file comes from a program of macOS. */
    void setFromMac();

    /*! The code page of text in \a group. */
    int codePage(RtfGroup *group) const
    {
        if (group->isIn(RtfDestination::FontTable))
            return lookUpCodePage(*group);
        if (group->codePage < 0)
            group->codePage = lookUpCodePage(*group);
        return group->codePage;
    }

private:
    int lookUpCodePage(const RtfGroup &group) const;

    const RtfResources &m_resources;
    RtfFontTable m_fonts;
    RtfColorTable m_colors;
    RtfInfo m_info;
    std::optional<RtfPage> m_page;
    int m_codePage = RtfCodePages::Western;
    bool m_fromMac = false;
};
