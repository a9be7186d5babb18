// SPDX-License-Identifier: MIT
#include <tool/formats/ScreenplayElements.h>

#include <tool/Document.h>

#include <pages/MVRScreenplay.h>

#include <algorithm>

using namespace MVRFinalDraft;

namespace {

constexpr double pointsPerInch = 72.0;

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
        // Final Draft reads and shows "Cast List"; the vocabulary's own keyword has no blank.
        const QString name = type == CastList ? QStringLiteral("Cast List")
                                              : toString(static_cast<ElementType>(type));
        ElementSettings entry = MVRScreenplay::standardElement(name);
        entry.paragraphSpec.leftIndent -= defaultMargin / pointsPerInch;
        entry.paragraphSpec.rightIndent -= defaultMargin / pointsPerInch;
        settings.insert(name, entry);
    }
    return settings;
}

void giveStandards(Document &document)
{
    document.text.setDocumentMargin(defaultMargin);
    document.elements = elementsForWriting(standardSettings());
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
