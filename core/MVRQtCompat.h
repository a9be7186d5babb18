// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>
#include <QtGlobal>

/*!
    \file
    What has another name, or is not there, in Qt 5 or Qt 6. This header and MVRToolkit are the
    only places that ask which Qt it is.
*/

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
/*! Set where the toolkit still has QRegExp, and so the operations that take one. */
#define MVR_HAS_QREGEXP
#endif

/*! Spellings that both Qt 5 and Qt 6 understand. */
namespace MVRQt {

/*! How the HTML writer at hand declares bold text. */
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
constexpr const char *boldDeclaration = "font-weight:600";
#else
constexpr const char *boldDeclaration = "font-weight:700";
#endif

/*! Appends \a part to \a text; Qt 5 has no QString::append() for it. */
inline void append(QString *text, QStringView part)
{
    text->append(part.data(), int(part.size()));
}

}
