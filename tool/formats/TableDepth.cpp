// SPDX-License-Identifier: MIT
#include <tool/formats/TableDepth.h>

#include <QPair>
#include <QTextDocument>
#include <QTextFrame>
#include <QVector>

namespace {

// Qt measures a table once for itself and once more for the one around it, so that each level
// doubles the time: this many take a second.
constexpr int maxTableDepth = 15;

}

bool hasDeepTables(const QTextDocument &document)
{
    QVector<QPair<const QTextFrame *, int>> open {{document.rootFrame(), 0}};
    while (!open.isEmpty()) {
        const auto [frame, depth] = open.takeLast();
        if (depth > maxTableDepth)
            return true;
        const QList<QTextFrame *> children = frame->childFrames();
        for (const QTextFrame *child : children)
            open.append({child, depth + 1});
    }
    return false;
}
