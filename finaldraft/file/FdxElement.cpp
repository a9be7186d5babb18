// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxElement_p.h>

#include <finaldraft/file/FdxText_p.h>
#include <finaldraft/file/FdxTree_p.h>

#include <algorithm>
#include <cstring>

namespace {

bool endsName(char character)
{
    return fdxIsSpace(character) || character == '=' || character == '>' || character == '/';
}

// Whether a name stands at a place, which is in well-formed source.
bool standsAt(const char *place, const char *name)
{
    const size_t length = std::strlen(name);
    return std::strncmp(place, name, length) == 0 && endsName(place[length]);
}

int nameEnd(const QByteArray &source, int place)
{
    while (!endsName(source[place]))
        ++place;
    return place;
}

int skipSpace(const QByteArray &source, int place)
{
    while (fdxIsSpace(source[place]))
        ++place;
    return place;
}

/*! The end of the reference that begins at \a start; \a start when there is none. */
int referenceEnd(const QByteArray &source, int start, int end)
{
    const auto isPart = [](char character) {
        return character == '#' || (character >= '0' && character <= '9')
            || (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    };
    int place = start + 1;
    while (place < end && isPart(source[place]))
        ++place;
    return place < end && source[place] == ';' ? place + 1 : start;
}

}

// The parser has seen that the tag is well-formed.
FdxSourceAttribute::FdxSourceAttribute(const QByteArray *source, int place)
{
    place = skipSpace(*source, place);
    if (endsName(source->at(place)))
        return;
    m_source = source;
    m_nameStart = place;
    m_nameEnd = nameEnd(*source, place);
    const int equals = skipSpace(*source, m_nameEnd);
    const int quote = skipSpace(*source, equals + 1);
    m_valueStart = quote + 1;
    m_valueEnd = source->indexOf(source->at(quote), m_valueStart);
}

bool FdxSourceAttribute::isNamed(const char *name) const
{
    return m_source && standsAt(m_source->constData() + m_nameStart, name);
}

QByteArray FdxSourceAttribute::name() const
{
    return m_source ? m_source->mid(m_nameStart, m_nameEnd - m_nameStart) : QByteArray();
}

QByteArray FdxSourceAttribute::value() const
{
    if (!m_source)
        return QByteArray();
    const char *start = m_source->constData() + m_valueStart;
    const char *end = m_source->constData() + m_valueEnd;
    const bool isPlain = std::none_of(
        start, end, [](char character) { return character == '&' || uchar(character) < ' '; });
    return isPlain ? QByteArray(start, int(end - start)) : resolvedValue();
}

QByteArray FdxSourceAttribute::resolvedValue() const
{
    QByteArray value;
    for (int place = m_valueStart; place < m_valueEnd;) {
        const char character = m_source->at(place);
        const int end = character == '&' ? referenceEnd(*m_source, place, m_valueEnd) : place;
        if (end > place) {
            value += fdxPlainText(*m_source, place, end).toUtf8();
            place = end;
            continue;
        }
        const bool isFirstOfTwo = character == '\r' && m_source->at(place + 1) == '\n';
        if (!isFirstOfTwo)
            value += fdxIsSpace(character) ? ' ' : character;
        ++place;
    }
    return value;
}

QByteArray FdxElement::name() const
{
    if (!m_tree)
        return QByteArray();
    const int start = m_tree->start(*this) + 1;
    return m_tree->source().mid(start, nameEnd(m_tree->source(), start) - start);
}

bool FdxElement::isNamed(const char *name) const
{
    return m_tree && standsAt(m_tree->source().constData() + m_tree->start(*this) + 1, name);
}

FdxElement FdxElement::parent() const
{
    return m_tree ? m_tree->parent(m_index) : FdxElement();
}

FdxElement FdxElement::next() const
{
    return m_tree ? m_tree->next(m_index) : FdxElement();
}

FdxElement FdxElement::firstChild() const
{
    return m_tree ? m_tree->firstChild(m_index) : FdxElement();
}

FdxSourceAttribute FdxElement::firstAttribute() const
{
    if (!m_tree)
        return FdxSourceAttribute();
    const QByteArray &source = m_tree->source();
    return FdxSourceAttribute(&source, nameEnd(source, m_tree->start(*this) + 1));
}
