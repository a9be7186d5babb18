// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QString>

class QImage;

/*! Small services around pictures. */
class MVRCORE_EXPORT MVRGuiUtil
{
public:
    /*!
        A name for \a image, made of its size and colours, so that equal images have the same.

        It is a URL with a scheme of its own, and serves as the name of a document's resource; no
        base URL of the document changes it.
        \return an empty string for a null image
    */
    static QString resourceId(const QImage &image);
};
