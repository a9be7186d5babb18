// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QByteArray;

/*!
    What in a text, whose markup is in ASCII, would cost the XML parser more than the text's length,
    with line and column; null when there is nothing.
*/
QString findXmlExcess(const QByteArray &text);
