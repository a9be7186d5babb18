// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfHeaderReader.h>

#include <core/rtf/lex/RtfSymbolFonts.h>
#include <core/rtf/model/RtfFontNames.h>

namespace {

// macOS writes the name of a face ("Helvetica-BoldOblique", "ArialMT") and \b and \i beside it.
QString familyOfFace(const QString &face)
{
    const int hyphen = face.lastIndexOf(QLatin1Char('-'));
    static const QLatin1String styles[]
        = {QLatin1String("Bold"),     QLatin1String("BoldMT"),      QLatin1String("Italic"),
           QLatin1String("ItalicMT"), QLatin1String("BoldItalic"),  QLatin1String("BoldItalicMT"),
           QLatin1String("Oblique"),  QLatin1String("BoldOblique"), QLatin1String("Regular"),
           QLatin1String("Roman")};
    if (hyphen <= 0)
        return face;
    for (const QLatin1String &style : styles) {
        if (QStringView(face).mid(hyphen + 1) == style)
            return face.left(hyphen);
    }
    return face;
}

} // namespace

void RtfFontTable::begin(int number)
{
    finish();
    m_number = number;
}

void RtfFontTable::addText(const QString &text)
{
    for (const QChar &character : text) {
        if (character == QLatin1Char(';'))
            finish();
        else if (m_font.family.size() < RtfFont::maxNameLength)
            m_font.family.append(character);
    }
}

void RtfFontTable::finish()
{
    m_font.family = m_font.family.trimmed();
    if (m_faces)
        m_font.family = familyOfFace(m_font.family);
    if (m_font.codePage == 0) {
        if (const int script = RtfFontNames::charset(m_font.family))
            m_font.codePage = RtfCodePages::fromCharset(script);
    }
    if (m_font.codePage == RtfCodePages::Symbol) {
        if (const int symbols = RtfSymbolFonts::codePage(m_font.family))
            m_font.codePage = symbols;
    }
    if (m_font.codePage == RtfCodePages::SymbolFont) // other fonts have these characters too
        m_font.family.clear();
    if (m_number >= 0 && !m_families.take(m_font.family))
        m_font.family.clear();
    if (m_number >= 0)
        m_resources->fonts.insert(m_number, m_font);
    m_font = RtfFont();
    m_number = -1;
}

void RtfColorTable::begin()
{
    m_resources->colors.clear();
    m_automatic = true;
}

void RtfColorTable::setComponent(int component, int value)
{
    if (m_automatic)
        m_components[0] = m_components[1] = m_components[2] = 0;
    m_automatic = false;
    m_components[component] = qBound(0, value, 255);
}

void RtfColorTable::addText(const QString &text)
{
    for (const QChar &character : text) {
        if (character != QLatin1Char(';'))
            continue;
        m_resources->colors.append(
            m_automatic ? QColor() : QColor(m_components[0], m_components[1], m_components[2]));
        m_automatic = true;
    }
}

void RtfHeaderReader::setCodePage(RtfGroup *group, int codePage)
{
    m_codePage = codePage > 0 ? codePage : int(RtfCodePages::Western);
    m_fromMac = m_fromMac || RtfCodePages::isMac(m_codePage);
    group->codePage = -1;
}

void RtfHeaderReader::setFromMac()
{
    m_fromMac = true;
    m_fonts.setFaces();
}

void RtfHeaderReader::setPage(int RtfPage::*length, int twips)
{
    if (!m_page)
        m_page.emplace();
    (*m_page).*length = qBound(0, twips, rtfMaxTwips);
}

void RtfHeaderReader::setCharset(int charset)
{
    // Charset 0 is Windows' 1252 whatever the file's code page is, but programs of the Macintosh
    // mean the file's.
    const int page = charset == 0 && m_fromMac ? 0 : RtfCodePages::fromCharset(charset);
    m_fonts.setCodePage(page);
}

int RtfHeaderReader::lookUpCodePage(const RtfGroup &group) const
{
    int page = 0;
    if (group.isIn(RtfDestination::FontTable)) {
        page = m_fonts.codePage();
    } else {
        const auto font = m_resources.fonts.constFind(group.chars.font);
        page = font != m_resources.fonts.constEnd() ? font->codePage : 0;
    }
    return page > 0 ? page : m_codePage;
}
