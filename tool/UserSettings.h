// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

/*!
    What the user has set for all commands in the file mvrtext.ini of the configuration folder
    (XDG_CONFIG_HOME, else ~/.config): lines such as "paper=a4", by the names of options.
*/
QHash<QString, QString> userSettings();

/*! The path of that file. */
QString userSettingsFile();
