// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>

#include <QByteArray>
#include <QStringList>

/*! A whole file in version 5 of the format, with the standard settings and an empty script. */
QByteArray fdxSkeleton();

/*!
    ElementSettings for a type of an application.

    \param margin  the text margin that the element's indents count from, in points
*/
QByteArray fdxElementSettings(const MVRScriptElement &element, double margin);
