// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/*!
    Makes the XML of a screenplay like those that writers have: nine paragraph types, words cut by
    the spelling mark, bold and italic runs, a script note now and then.

    \param bytes  the size to reach; the text is the same for the same size
*/
QByteArray sampleScreenplay(int bytes);
