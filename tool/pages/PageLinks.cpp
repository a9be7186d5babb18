// SPDX-License-Identifier: MIT
#include <tool/pages/PageLinks.h>

#include <core/document/FormatEdits_p.h>

namespace {

constexpr int TargetProperty = QTextFormat::UserProperty + 0x3503; // of characters: string

}

void takeLinks(QTextDocument &text)
{
    changeAllFormats(&text, [](QTextCharFormat &format) {
        const QString target = format.anchorHref();
        if (!target.isEmpty())
            format.setProperty(TargetProperty, target);
        format.clearProperty(QTextFormat::AnchorHref);
        format.clearProperty(QTextFormat::IsAnchor);
    });
}

QVector<TextLink> linksOf(const QTextDocument &text)
{
    QVector<TextLink> links;
    TextPlaces places(text);
    for (FragmentWalker walker(&text, 0); walker.isValid(); walker.next()) {
        const QString target = walker.format().stringProperty(TargetProperty);
        if (target.isEmpty())
            continue;
        const QVector<QRectF> rects = places.rects(walker.start(), walker.end());
        for (const QRectF &rect : rects)
            links.append({rect, target});
    }
    return links;
}
