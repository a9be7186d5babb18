// SPDX-License-Identifier: MIT
#include <core/xml/XmlLimits_p.h>

#include <QByteArray>
#include <QObject>

#include <cctype>

namespace {

// Checking n attributes for duplicates takes the parser n * n steps.
constexpr int maxAttributes = 256;

/*! The position behind \a end, or the end of the text where it does not come. */
int skipPast(const QByteArray &text, int from, const char *end)
{
    const int found = text.indexOf(end, from);
    return found < 0 ? text.size() : found + int(qstrlen(end));
}

bool standsAt(const QByteArray &text, int position, const char *word)
{
    return qstrncmp(text.constData() + position, word, qstrlen(word)) == 0;
}

/*! Where the document type begins, behind comments and instructions; -1 for none. */
int documentTypeStart(const QByteArray &text)
{
    int position = text.indexOf('<');
    while (position >= 0) {
        if (standsAt(text, position, "<!DOCTYPE"))
            return position;
        const bool isComment = standsAt(text, position, "<!--");
        if (!isComment && !standsAt(text, position, "<?"))
            return -1;
        position = text.indexOf('<', skipPast(text, position, isComment ? "-->" : "?>"));
    }
    return -1;
}

bool isParameterEntity(const QByteArray &text, int position)
{
    const char *character = text.constData() + position + qstrlen("<!ENTITY");
    while (std::isspace(uchar(*character)))
        ++character;
    return *character == '%';
}

/*!
    Whether the document type could give attributes to elements, which would then multiply with
    them, or could hold more declarations than stand there: through entities of its own.
*/
bool declaresAttributes(const QByteArray &text)
{
    const int start = documentTypeStart(text);
    int brackets = 0;
    for (int position = start < 0 ? text.size() : start + 1; position < text.size();) {
        const char character = text.at(position);
        if (standsAt(text, position, "<!--")) {
            position = skipPast(text, position, "-->");
        } else if (standsAt(text, position, "<?")) {
            position = skipPast(text, position, "?>");
        } else if (standsAt(text, position, "<!ATTLIST")
                   || (standsAt(text, position, "<!ENTITY") && isParameterEntity(text, position))) {
            return true;
        } else if (character == '"' || character == '\'') {
            position = skipPast(text, position + 1, character == '"' ? "\"" : "'");
        } else if (character == '>' && brackets == 0) {
            return false;
        } else {
            brackets += character == '[' ? 1 : character == ']' ? -1 : 0;
            ++position;
        }
    }
    return false;
}

/*! Counts the attributes of the tag that \a begin stands at. */
int attributeCount(const char *begin, const char *end)
{
    int attributes = 0;
    char quote = 0;
    for (const char *character = begin; character != end; ++character) {
        if (quote != 0) {
            if (*character == quote)
                quote = 0;
        } else if (*character == '"' || *character == '\'') {
            quote = *character;
        } else if (*character == '=') {
            ++attributes;
        } else if (*character == '>') {
            break;
        }
    }
    return attributes;
}

/*! Where an element has too many attributes; -1 when none has. */
int attributeFlood(const QByteArray &text)
{
    // A document type may hold the start of a comment or section in an entity, and so end one
    // where nothing shows it; in such a text all that looks like an element counts as one.
    const bool skipsText = documentTypeStart(text) < 0;
    for (int tag = text.indexOf('<'); tag >= 0;) {
        int from = tag + 1;
        if (skipsText && standsAt(text, tag, "<!--"))
            from = skipPast(text, tag + 4, "-->");
        else if (skipsText && standsAt(text, tag, "<![CDATA["))
            from = skipPast(text, tag, "]]>");
        else if (skipsText && standsAt(text, tag, "<?"))
            from = skipPast(text, tag, "?>");
        const int next = text.indexOf('<', from);
        const int end = next < 0 ? text.size() : next;
        if (end - tag > maxAttributes && text.at(tag + 1) != '!' && text.at(tag + 1) != '?'
            && attributeCount(text.constData() + tag, text.constData() + end) > maxAttributes)
            return tag;
        tag = next;
    }
    return -1;
}

QString atPosition(const QByteArray &text, int position, const QString &message)
{
    const QByteArray before = text.left(position);
    const int column = QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1)).size() + 1;
    return QObject::tr("Line %1, column %2: %3")
        .arg(before.count('\n') + 1)
        .arg(column)
        .arg(message);
}

} // namespace

QString findXmlExcess(const QByteArray &text)
{
    if (declaresAttributes(text))
        return atPosition(text, documentTypeStart(text),
                          QObject::tr("The document type declares attributes."));
    const int flood = attributeFlood(text);
    if (flood < 0)
        return QString();
    return atPosition(text, flood,
                      QObject::tr("An element has more than %1 attributes.").arg(maxAttributes));
}
