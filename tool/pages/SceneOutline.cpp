// SPDX-License-Identifier: MIT
#include <tool/pages/SceneOutline.h>

QVector<PdfHeading> sceneOutline(const MVRScreenplayPages &pages)
{
    QVector<PdfHeading> outline;
    const QVector<MVRScreenplayScene> scenes = pages.scenes();
    const QVector<MVRScreenplayPage> &all = pages.pages();
    int last = -1;
    for (int page = 0; page < all.size(); ++page) {
        for (const MVRScreenplayLine &line : all[page].lines) {
            if (line.kind != MVRScreenplayLine::Text || line.scene <= last)
                continue;
            last = line.scene;
            const MVRScreenplayScene &scene = scenes[last];
            const QString number
                = scene.isNumbered ? scene.number + QStringLiteral(". ") : QString();
            outline.append(
                {number + scene.heading, 1, {page, QRectF(0.0, line.y, 1.0, line.height)}});
        }
    }
    return outline;
}
