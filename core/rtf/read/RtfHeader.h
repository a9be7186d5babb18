// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfResources.h>

/*! Collects the entries of \fonttbl (RTF 1.9.1, "Font Table") into the tables. */
class RtfFontTable
{
public:
    explicit RtfFontTable(RtfResources *tables)
        : m_tables(tables)
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
    RtfResources *m_tables;
    RtfFont m_font;
    int m_number = -1;
    bool m_faces = false;
};

/*! Collects the entries of \colortbl (RTF 1.9.1, "Color Table") into the tables. */
class RtfColorTable
{
public:
    explicit RtfColorTable(RtfResources *tables)
        : m_tables(tables)
    {
    }

    void begin();
    /*! \param component  0: red, 1: green, 2: blue */
    void setComponent(int component, int value);
    void addText(const QString &text);

private:
    RtfResources *m_tables;
    int m_components[3] = {};
    bool m_automatic = true;
};
