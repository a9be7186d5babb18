// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraft.h>

#include <core/MVRDomDoc.h>

namespace MVRFinalDraft {

namespace {

/*! How Final Draft treats a paragraph of one type. */
struct BehaviorDefaults
{
    ElementType type;
    ElementType paginateAs;
    ElementType returnKey;
};

constexpr BehaviorDefaults behaviorDefaults[] = {
    {General, General, General},
    {SceneHeading, SceneHeading, Action},
    {Action, Action, Action},
    {Character, Character, Dialogue},
    {Parenthetical, Parenthetical, Dialogue},
    {Dialogue, Dialogue, Action},
    {Transition, Transition, SceneHeading},
    {Shot, SceneHeading, Action},
    {CastList, Action, Action},
};

void readType(const MVRDomDoc &dom, const QString &name, ElementType *type)
{
    QString keyword;
    if (dom.getAttr(name, &keyword, dom.currentElement()) && !keyword.isEmpty())
        *type = toElementType(keyword);
}

}

ElementSettings::ElementSettings() = default;

void ElementSettings::fromCharFormat(const QTextCharFormat &format, const QColor &defaultBackground)
{
    fontSpec.fromCharFormat(format, defaultBackground);
}

void ElementSettings::fromBlockFormat(const QTextBlockFormat &format, double leftMargin)
{
    paragraphSpec.fromBlockFormat(format, leftMargin);
}

bool ElementSettings::fromDomDoc(MVRDomDoc *dom, double leftMargin)
{
    QString name;
    if (!dom || !dom->getAttr(QStringLiteral("Type"), &name, dom->currentElement())
        || name.isEmpty())
        return false;
    type = name;
    if (dom->cd(QStringLiteral("FontSpec"))) {
        fontSpec.fromDomElement(dom->currentElement());
        dom->cdUp(1);
    }
    if (dom->cd(QStringLiteral("ParagraphSpec"))) {
        paragraphSpec.fromDomElement(dom->currentElement(), leftMargin);
        dom->cdUp(1);
    }
    if (dom->cd(QStringLiteral("Behavior"))) {
        readType(*dom, QStringLiteral("PaginateAs"), &paginateAs);
        readType(*dom, QStringLiteral("ReturnKey"), &returnKey);
        dom->getAttr(QStringLiteral("Shortcut"), &shortcut, dom->currentElement());
        dom->cdUp(1);
    }
    return true;
}

bool ElementSettings::toDomDoc(MVRDomDoc *dom)
{
    if (!dom || !dom->create(QStringLiteral("ElementSettings")))
        return false;
    const QString here;
    dom->setAttr(QStringLiteral("Type"), type, here, true);
    fontSpec.toDomDoc(dom, QString(), QStringLiteral("FontSpec"));
    paragraphSpec.toDomDoc(dom, QStringLiteral("ParagraphSpec"));
    dom->create(QStringLiteral("Behavior"));
    dom->setAttr(QStringLiteral("PaginateAs"), toString(paginateAs), here, true);
    dom->setAttr(QStringLiteral("ReturnKey"), toString(returnKey), here, true);
    dom->setAttr(QStringLiteral("Shortcut"), shortcut, here, true);
    dom->cdUp(2);
    return true;
}

void ElementSettings::applyFdxAppDefaults(ElementType elementType)
{
    type = toString(elementType);
    paragraphSpec.applyFdxAppDefaults(elementType);
    for (const BehaviorDefaults &row : behaviorDefaults) {
        if (row.type == elementType) {
            paginateAs = row.paginateAs;
            returnKey = row.returnKey;
        }
    }
}

}
