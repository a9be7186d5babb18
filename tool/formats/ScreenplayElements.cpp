// SPDX-License-Identifier: MIT
#include <tool/formats/ScreenplayElements.h>

#include <QXmlStreamWriter>

#include <algorithm>

using namespace MVRFinalDraft;

namespace {

// Final Draft reads and shows "Cast List"; the vocabulary's own keyword for it has no blank.
QString standardName(ElementType type)
{
    return type == CastList ? QStringLiteral("Cast List") : toString(type);
}

ElementSettings standardSettings(ElementType type)
{
    ElementSettings settings;
    settings.applyFdxAppDefaults(type);
    settings.type = standardName(type);
    return settings;
}

bool isInCapitals(const ElementSettings &settings)
{
    const ElementSettings standard = standardSettings(toElementType(settings.type));
    return settings.fontSpec.style.testFlag(AllCaps)
        || standard.paragraphSpec.style.testFlag(AllCaps);
}

// Files count indents from the paper's edge; Final Draft's margin is one inch.
QString paperInches(double indent)
{
    return QString::number(indent + 1.0, 'f', 2);
}

void writeSettings(QXmlStreamWriter &xml, const ElementSettings &settings)
{
    const ParagraphAttr &paragraph = settings.paragraphSpec;
    const auto attribute = [&xml](const char *name, const QString &value) {
        xml.writeAttribute(QLatin1String(name), value);
    };
    xml.writeStartElement(QStringLiteral("ElementSettings"));
    attribute("Type", settings.type);
    xml.writeStartElement(QStringLiteral("ParagraphSpec"));
    attribute("Alignment", toString(paragraph.alignment));
    attribute("FirstIndent", QString::number(paragraph.firstIndent, 'f', 2));
    attribute("LeftIndent", paperInches(paragraph.leftIndent));
    attribute("RightIndent", paperInches(paragraph.rightIndent));
    attribute("SpaceBefore", QString::number(paragraph.spaceBefore));
    attribute("Spacing", QStringLiteral("1"));
    xml.writeEndElement();
    // A type that paginated as another one would be read as that one.
    xml.writeEmptyElement(QStringLiteral("Behavior"));
    attribute("PaginateAs", settings.type);
    attribute("ReturnKey", toString(settings.returnKey));
    xml.writeEndElement();
}

bool standsBefore(const QString &one, const QString &other)
{
    const int first = toElementType(one);
    const int second = toElementType(other);
    if (first == second)
        return one < other;
    return second == NoElement || (first != NoElement && first < second);
}

}

ElementSettingsMap standardSettings()
{
    ElementSettingsMap settings;
    for (int type = General; type <= CastList; ++type) {
        const ElementSettings entry = standardSettings(static_cast<ElementType>(type));
        settings.insert(entry.type, entry);
    }
    return settings;
}

QByteArray withStandardSettings(const QByteArray &fdx, const ElementSettingsMap &known)
{
    QByteArray added;
    QXmlStreamWriter xml(&added);
    const ElementSettingsMap standard = standardSettings();
    for (const ElementSettings &settings : standard) {
        if (!known.contains(settings.type))
            writeSettings(xml, settings);
    }
    const int rootEnd = fdx.lastIndexOf("</FinalDraft");
    QByteArray result = fdx;
    return rootEnd < 0 || added.isEmpty() ? result : result.insert(rootEnd, added);
}

QList<MVRScriptElement> elementsForReading(const ElementSettingsMap &settings, bool capitals)
{
    QList<MVRScriptElement> elements;
    for (auto entry = settings.cbegin(); entry != settings.cend(); ++entry) {
        MVRScriptElement element(entry.key());
        if (capitals && isInCapitals(entry.value()))
            element.setFlags(MVRScriptElement::AllCapsFlag);
        elements.append(element);
    }
    return elements;
}

QList<MVRScriptElement> elementsForWriting(const ElementSettingsMap &settings)
{
    QStringList names = settings.keys();
    std::sort(names.begin(), names.end(), standsBefore);
    QList<MVRScriptElement> elements;
    for (const QString &name : qAsConst(names)) {
        const ElementSettings entry = settings.value(name);
        MVRScriptElement element(name);
        element.setBlockFormat(entry.parBlockFormat());
        element.setCharFormat(entry.textCharFormat());
        elements.append(element);
    }
    return elements;
}
