// SPDX-License-Identifier: MIT
// What most sources include; compiled once for each library and once for the tests.
#pragma once

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QDebug>
#include <QDomDocument>
#include <QFile>
#include <QHash>
#include <QList>
#include <QMap>
#include <QMimeData>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextList>
#include <QTextTable>
#include <QVariant>
#include <QVector>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
