// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QColor>
#include <QFont>
#include <QString>
#include <QVariant>

#include <memory>
#include <mutex>
#include <optional>

class QSettings;

/*!
    The settings that the library asks for, kept in a QSettings file and read by number.

    A setting that is not stored has its built-in default. A stored value of a type that cannot be
    converted reads as false, the default font or an invalid colour.

    All threads may read at the same time, and one may change settings meanwhile.
*/
class MVRCORE_EXPORT MVRSettings
{
public:
    /*! Settings that are on or off. */
    enum BoolSetting {
        WordSearchSetting = 6 /*!< a note may look for its word in other paragraphs */
    };
    /*! Settings that are fonts. */
    enum FontSetting {
        CommentFontSetting = 10, /*!< text of inspector comments */
        FootnoteFontSetting = 11 /*!< text of inspector footnotes */
    };
    /*! Settings that are colours. */
    enum ColorSetting {
        CommentColorSetting = 20 /*!< colour of inspector comments that have none of their own */
    };

    /*! Settings in the application's own file (see QSettings::QSettings(QObject *)). */
    MVRSettings();
    /*! Settings in the INI file \a fileName. */
    explicit MVRSettings(const QString &fileName);
    ~MVRSettings();
    Q_DISABLE_COPY_MOVE(MVRSettings)

    /*! Goes over to the INI file \a fileName; to the application's own file when it is empty. */
    void setFileName(const QString &fileName);

    /*! The key that a setting is stored under. */
    QString key(int setting) const;

    /*! The stored value, else the default. */
    bool value(BoolSetting setting) const;
    /*! \overload */
    QFont value(FontSetting setting) const;
    /*! \overload */
    QColor value(ColorSetting setting) const;

    /*! What counts where nothing is stored. */
    bool defaultValue(BoolSetting setting) const;
    /*! \overload */
    QFont defaultValue(FontSetting setting) const;
    /*! \overload */
    QColor defaultValue(ColorSetting setting) const;

    /*! Tells whether a value is stored for the setting. */
    bool contains(int setting) const;
    /*! The stored value; an invalid variant when there is none. */
    QVariant stored(int setting) const;
    /*! Stores a value; which types a setting takes, its enumeration says. */
    void setValue(int setting, const QVariant &value);
    /*! Goes back to the built-in default. */
    void remove(int setting);

private:
    std::optional<QVariant> find(int setting) const;
    QSettings &file() const;

    mutable std::mutex m_mutex; // for everything below, and for the file itself
    QString m_fileName;
    mutable QString m_openedFor; // what the open file was chosen by
    mutable std::unique_ptr<QSettings> m_file;
};

/*! The application's settings. */
MVRCORE_EXPORT MVRSettings &mvrOptions();
