// SPDX-License-Identifier: MIT
#include <tool/UserSettings.h>

#include <QFile>
#include <QSettings>
#include <QStandardPaths>

namespace {

// Others say for one file what it is or where it goes.
constexpr const char *names[] = {"author", "jobs", "notes", "paper"};

}

QString userSettingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QLatin1String("/mvrtext.ini");
}

QHash<QString, QString> userSettings()
{
    QHash<QString, QString> settings;
    const QString path = userSettingsFile();
    if (!QFile::exists(path))
        return settings;
    const QSettings file(path, QSettings::IniFormat);
    for (const char *const name : names) {
        const QString key = QLatin1String(name);
        if (file.contains(key))
            settings.insert(key, file.value(key).toString());
    }
    return settings;
}
