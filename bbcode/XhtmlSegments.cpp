// SPDX-License-Identifier: MIT
#include <bbcode/XhtmlSegments_p.h>

#include <bbcode/XhtmlLimits_p.h>

QString XhtmlSegments::next()
{
    QString segment;
    for (const QString &name : qAsConst(m_open))
        segment += QLatin1Char('<') + name + QLatin1Char('>');
    m_openLines = 0;
    for (int i = m_open.indexOf(QStringLiteral("body")); i >= 0 && i < m_open.size(); ++i)
        m_openLines += beginsLine(m_open[i]) ? 1 : 0;
    const int start = m_position;
    while (!atEnd() && (m_position - start < m_size || m_copying > 0))
        pass();
    segment += QStringView(m_xhtml).mid(start, m_position - start);
    if (atEnd())
        return segment;
    for (int i = m_open.size() - 1; i >= 0; --i)
        segment += QLatin1String("</") + m_open[i] + QLatin1Char('>');
    return segment;
}

/*! Goes behind the next tag, or whatever else begins with "<". */
void XhtmlSegments::pass()
{
    const int markup = m_xhtml.indexOf(QLatin1Char('<'), m_position);
    m_position = markup < 0 ? m_xhtml.size() : htmlPassageEnd(m_xhtml, markup);
    if (m_position >= 0)
        return;
    if (!isHtmlTagStart(m_xhtml, markup)) {
        m_position = markup + 1;
        return;
    }
    if (!readHtmlTag(m_xhtml, markup, &m_tag)) {
        m_position = m_xhtml.size();
        return;
    }
    m_position = m_tag.end;
    if (m_tag.isSelfClosed)
        return;
    if (!m_tag.isEnd) {
        m_open.append(m_xhtml.mid(m_tag.nameStart, m_tag.nameEnd - m_tag.nameStart));
        m_copying += m_copying > 0 || copiesText(m_open.last()) ? 1 : 0;
    } else if (!m_open.isEmpty()) {
        m_open.removeLast();
        m_copying = qMax(0, m_copying - 1);
    }
}
