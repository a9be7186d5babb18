// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*!
    The family that screenplays are drawn in: Courier Prime, with a bold and an italic face.

    The first call registers the faces where their files do not say what they are. Call it after
    the application object was made. Without Courier Prime the system chooses a face for the name.
*/
QString screenplayFace();
