// SPDX-License-Identifier: MIT
#include <core/MVRSettings.h>

#include <QCoreApplication>
#include <QSettings>

namespace {

struct SettingKey
{
    int setting;
    const char *key;
};

constexpr SettingKey settingKeys[] = {
    {MVRSettings::WordSearchSetting, "Notes/WordSearchLeavesParagraph"},
    {MVRSettings::CommentFontSetting, "Notes/CommentFont"},
    {MVRSettings::FootnoteFontSetting, "Notes/FootnoteFont"},
    {MVRSettings::CommentColorSetting, "Notes/CommentColor"},
};

} // namespace

MVRSettings::MVRSettings() = default;

MVRSettings::MVRSettings(const QString &fileName)
    : m_fileName(fileName)
{
}

MVRSettings::~MVRSettings() = default;

void MVRSettings::setFileName(const QString &fileName)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_fileName = fileName;
    m_file.reset();
}

QString MVRSettings::key(int setting) const
{
    for (const SettingKey &row : settingKeys) {
        if (row.setting == setting)
            return QLatin1String(row.key);
    }
    return QStringLiteral("Settings/%1").arg(setting);
}

bool MVRSettings::value(BoolSetting setting) const
{
    const std::optional<QVariant> value = find(setting);
    return value ? value->toBool() : defaultValue(setting);
}

QFont MVRSettings::value(FontSetting setting) const
{
    const QVariant font = stored(setting);
    return font.canConvert<QFont>() ? font.value<QFont>() : defaultValue(setting);
}

QColor MVRSettings::value(ColorSetting setting) const
{
    const std::optional<QVariant> value = find(setting);
    return value ? value->value<QColor>() : defaultValue(setting);
}

bool MVRSettings::defaultValue(BoolSetting) const
{
    return false;
}

QFont MVRSettings::defaultValue(FontSetting setting) const
{
    return setting == FootnoteFontSetting ? QFont(QStringLiteral("Serif"), 10)
                                          : QFont(QStringLiteral("Sans Serif"), 10);
}

QColor MVRSettings::defaultValue(ColorSetting) const
{
    return QColor(0xff, 0xf2, 0xa8);
}

bool MVRSettings::contains(int setting) const
{
    return find(setting).has_value();
}

QVariant MVRSettings::stored(int setting) const
{
    return find(setting).value_or(QVariant());
}

void MVRSettings::setValue(int setting, const QVariant &value)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    file().setValue(key(setting), value);
}

void MVRSettings::remove(int setting)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    file().remove(key(setting));
}

/*! The stored value; none when nothing is stored. */
std::optional<QVariant> MVRSettings::find(int setting) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QString name = key(setting);
    if (!file().contains(name))
        return std::nullopt;
    return file().value(name);
}

// Opens the file at the first call; the caller holds the lock.
QSettings &MVRSettings::file() const
{
    // An application may get its names after the first look at its settings.
    const QString chosenBy = !m_fileName.isEmpty() ? m_fileName
                                                   : QCoreApplication::organizationName()
            + QLatin1Char('\n') + QCoreApplication::organizationDomain() + QLatin1Char('\n')
            + QCoreApplication::applicationName();
    if (!m_file || chosenBy != m_openedFor) {
        m_openedFor = chosenBy;
        m_file = m_fileName.isEmpty()
            ? std::make_unique<QSettings>()
            : std::make_unique<QSettings>(m_fileName, QSettings::IniFormat);
    }
    return *m_file;
}

MVRSettings &mvrOptions()
{
    static MVRSettings options;
    return options;
}
