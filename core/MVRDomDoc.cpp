// SPDX-License-Identifier: MIT
#include <core/MVRDomDoc.h>

#include <core/document/Devices_p.h>
#include <core/xml/XmlText_p.h>
#include <core/xml/XmlTreeReader_p.h>
#include <core/xml/XmlTreeWriter_p.h>

#include <QIODevice>
#include <QLocale>
#include <QObject>

#include <algorithm>
#include <cmath>

namespace {

bool isXmlName(const QString &name)
{
    const auto isNameStart
        = [](QChar c) { return c.isLetter() || c == QLatin1Char('_') || c == QLatin1Char(':'); };
    const auto isNameCharacter = [&](QChar c) {
        return isNameStart(c) || c.isDigit() || c == QLatin1Char('-') || c == QLatin1Char('.');
    };
    return !name.isEmpty() && isNameStart(name.at(0))
        && std::all_of(name.cbegin(), name.cend(), isNameCharacter);
}

QDomElement followPath(QDomNode node, const QString &path)
{
    const QStringList steps = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString &step : steps) {
        node = node.firstChildElement(step);
        if (node.isNull())
            break;
    }
    return node.toElement();
}

}

bool MVRDomDoc::setContent(QIODevice *device)
{
    XmlTree tree;
    if (device && device->isReadable())
        tree = readXmlTree(device->readAll(), maxDepth);
    else
        tree.errorString = QObject::tr("The file cannot be read.");
    return setTree(tree);
}

bool MVRDomDoc::setContent(const QString &text)
{
    return setTree(readXmlTree(text, maxDepth));
}

bool MVRDomDoc::setTree(const XmlTree &tree)
{
    m_document = tree.document;
    m_current = m_document.documentElement();
    m_errorString = tree.errorString;
    return m_errorString.isNull();
}

bool MVRDomDoc::cd(const QString &path)
{
    const QDomElement element = find(path);
    setWorkElement(element);
    return !element.isNull();
}

bool MVRDomDoc::cdNext(const QString &tag)
{
    const QDomElement next = m_current.nextSiblingElement(tag);
    setWorkElement(next);
    return !next.isNull();
}

bool MVRDomDoc::cdUp(int levels)
{
    for (; levels > 0; --levels) {
        const QDomElement parent = m_current.parentNode().toElement();
        if (parent.isNull())
            return false;
        m_current = parent;
    }
    return true;
}

void MVRDomDoc::setWorkElement(const QDomElement &element)
{
    if (!element.isNull())
        m_current = element;
}

QDomElement MVRDomDoc::find(const QString &path) const
{
    if (path.isEmpty())
        return m_current;
    if (path.startsWith(QLatin1Char('/')))
        return followPath(m_document, path);
    if (path.contains(QLatin1Char('/')))
        return followPath(m_current, path);
    return m_current.firstChildElement(path);
}

bool MVRDomDoc::create(const QString &tag)
{
    if (!isXmlName(tag))
        return false;
    const QDomElement element = m_document.createElement(tag);
    QDomNode parent = m_current.isNull() ? QDomNode(m_document) : QDomNode(m_current);
    if (parent.appendChild(element).isNull())
        return false;
    m_current = element;
    return true;
}

bool MVRDomDoc::set(const QString &path, const QString &value)
{
    QDomElement element = path == QLatin1String(".") ? m_current : find(path);
    if (element.isNull())
        return false;
    while (element.hasChildNodes())
        element.removeChild(element.lastChild());
    const QString text = xmlText(value);
    if (!text.isEmpty())
        element.appendChild(m_document.createTextNode(text));
    return true;
}

bool MVRDomDoc::getAttr(const QString &name, QString *value, const QDomElement &element)
{
    const QString text = element.attribute(name);
    if (text.isNull() && !element.hasAttribute(name))
        return false;
    *value = text;
    return true;
}

bool MVRDomDoc::getAttr(const QString &name, bool *value, const QDomElement &element)
{
    static constexpr struct
    {
        const char *word;
        bool value;
    } words[] = {{"Yes", true},    {"No", false}, {"True", true},
                 {"False", false}, {"1", true},   {"0", false}};

    const QString text = element.attribute(name).trimmed();
    for (const auto &row : words) {
        if (text.compare(QLatin1String(row.word), Qt::CaseInsensitive) == 0) {
            *value = row.value;
            return true;
        }
    }
    return false;
}

bool MVRDomDoc::getAttr(const QString &name, double *value, const QDomElement &element)
{
    bool isNumber = false;
    const double number = element.attribute(name).toDouble(&isNumber);
    if (isNumber && std::isfinite(number)) {
        *value = number;
        return true;
    }
    return false;
}

bool MVRDomDoc::getAttr(const QString &name, int *value, const QDomElement &element)
{
    bool isNumber = false;
    const int number = element.attribute(name).toInt(&isNumber);
    if (isNumber)
        *value = number;
    return isNumber;
}

bool MVRDomDoc::setAttr(const QString &name, const QString &value, const QString &path,
                        bool writeEmpty)
{
    QDomElement element = find(path);
    if (element.isNull() || !isXmlName(name))
        return false;
    if (value.isEmpty() && !writeEmpty)
        element.removeAttribute(name);
    else
        element.setAttribute(name, xmlText(value));
    return true;
}

bool MVRDomDoc::setAttr(const QString &name, const char *value, const QString &path,
                        bool writeEmpty)
{
    return setAttr(name, QString::fromUtf8(value), path, writeEmpty);
}

bool MVRDomDoc::setAttr(const QString &name, double value, const QString &path, bool writeEmpty)
{
    return setAttr(name, QString::number(value, 'g', QLocale::FloatingPointShortest), path,
                   writeEmpty);
}

bool MVRDomDoc::setAttr(const QString &name, int value, const QString &path, bool writeEmpty)
{
    return setAttr(name, QString::number(value), path, writeEmpty);
}

bool MVRDomDoc::save(QIODevice &device) const
{
    const QByteArray text = xmlTreeText(m_document);
    return device.write(text) == text.size() && isFlushed(device);
}
