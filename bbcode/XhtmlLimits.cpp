// SPDX-License-Identifier: MIT
#include <bbcode/XhtmlLimits_p.h>

#include <core/html/HtmlTokens_p.h>

#include <QObject>

#include <algorithm>
#include <bitset>
#include <iterator>

namespace {

// QDomDocument, its destructor and QDomElement::text() call themselves for each level.
constexpr int maxDepth = 256;
// QDomDocument steps through the attributes of an element for each one that it adds.
constexpr int maxAttributes = 256;
// A text comes again for each span, list and bare anchor around it; real ones nest a few times.
constexpr qint64 maxGrowth = 16;
constexpr qint64 growthAllowance = 65536;

/*! Goes through the tags of a text and remembers which elements are open. */
class LimitCheck
{
public:
    explicit LimitCheck(const QString &xhtml)
        : m_xhtml(xhtml)
    {
    }

    /*! Returns what is wrong with the text; null when nothing is. */
    QString run();
    /*! Where run() stopped. */
    int position() const { return m_position; }

private:
    QString enter(const HtmlTag &tag);
    void leave();

    const QString &m_xhtml;
    int m_position = 0;
    int m_depth = 0;
    std::bitset<maxDepth + 1> m_copies; // by depth
    int m_copyDepth = 0;
    qint64 m_copied = 0; // characters
};

QString LimitCheck::run()
{
    HtmlTag tag;
    for (int next = 0; next < m_xhtml.size();) {
        const int textStart = next;
        const int markup = m_xhtml.indexOf(QLatin1Char('<'), textStart);
        m_position = markup < 0 ? m_xhtml.size() : markup;
        next = markup < 0 ? m_position : htmlPassageEnd(m_xhtml, markup);
        const bool isTag = next < 0 && isHtmlTagStart(m_xhtml, markup);
        if (isTag && !readHtmlTag(m_xhtml, markup, &tag))
            return QString(); // the parser sees the end of the text, too
        if (next < 0)
            next = isTag ? tag.end : markup + 1;
        // A CDATA section is text as well.
        m_copied += qint64((isTag ? m_position : next) - textStart) * m_copyDepth;
        if (m_copied > maxGrowth * m_xhtml.size() + growthAllowance)
            return QObject::tr("Elements in each other make the text grow too much.");
        if (isTag && tag.isEnd) {
            leave();
        } else if (isTag) {
            const QString fault = enter(tag);
            if (!fault.isNull())
                return fault;
        }
    }
    return QString();
}

QString LimitCheck::enter(const HtmlTag &tag)
{
    if (tag.attributes.size() > maxAttributes)
        return QObject::tr("An element has more than %1 attributes.").arg(maxAttributes);
    if (tag.isSelfClosed)
        return QString();
    if (m_depth == maxDepth)
        return QObject::tr("Elements are nested more than %1 levels deep.").arg(maxDepth);
    ++m_depth;
    m_copies[size_t(m_depth)]
        = copiesText(QStringView(m_xhtml).mid(tag.nameStart, tag.nameEnd - tag.nameStart));
    m_copyDepth += int(m_copies[size_t(m_depth)]);
    return QString();
}

void LimitCheck::leave()
{
    if (m_depth == 0)
        return;
    m_copyDepth -= int(m_copies[size_t(m_depth)]);
    --m_depth;
}

}

bool copiesText(QStringView name)
{
    constexpr const char *elements[] = {"span", "ul", "ol", "a"};
    return std::any_of(std::begin(elements), std::end(elements),
                       [&](const char *element) { return name == QLatin1String(element); });
}

bool beginsLine(QStringView name)
{
    return name == QLatin1String("p") || name == QLatin1String("br");
}

std::optional<XhtmlFault> findXhtmlFault(const QString &xhtml)
{
    LimitCheck check(xhtml);
    const QString message = check.run();
    if (message.isNull())
        return std::nullopt;
    const QStringView before = QStringView(xhtml).left(check.position());
    const int line = before.count(QLatin1Char('\n')) + 1;
    const int column = before.size() - before.lastIndexOf(QLatin1Char('\n'));
    return XhtmlFault {message, line, column};
}
