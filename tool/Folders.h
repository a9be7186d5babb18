// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/*! Folders whose names are bytes, as those of files are; see FileName.h. */
namespace Folders {

bool isFolder(const QString &path);

/*! The path from the root, without "." and ".."; of what need not be there. */
QString absolutePath(const QString &path);

/*! Makes a folder and those that it lies in. \return whether it is there then */
bool make(const QString &path);

/*!
    All files below a folder, sorted, but hidden ones and those in hidden folders; links to folders
    are not followed.

    \param closed  receives the folders that cannot be looked into
*/
QStringList filesBelow(const QString &folder, QStringList *closed);

}
