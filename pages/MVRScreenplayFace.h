// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

#include <QString>

/*! The typeface of screenplays. */
class MVRTEXT_EXPORT MVRScreenplayFace
{
public:
    /*!
        The family that screenplays are drawn in: Courier Prime, with a bold and an italic face.

        The first call registers the faces where their files do not say what they are. Call it
        after the application object was made. Without Courier Prime the system chooses a face for
        the name.
    */
    static QString family();

    /*! Whether a name stands for that face: those of Courier's relatives do, and no name at all. */
    static bool isAlias(const QString &family);
};
