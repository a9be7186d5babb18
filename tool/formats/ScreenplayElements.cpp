// SPDX-License-Identifier: MIT
#include <tool/formats/ScreenplayElements.h>

#include <tool/Document.h>

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

ElementSettingsMap fallbackSettings()
{
    ElementSettingsMap settings = standardSettings();
    for (ElementSettings &entry : settings)
        entry.paragraphSpec.style = {};
    return settings;
}

void giveStandards(Document &document)
{
    document.text.setDocumentMargin(defaultMargin);
    document.elements = elementsForWriting(standardSettings());
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
