// SPDX-License-Identifier: MIT
#pragma once

#include <QTranslator>

/*! The tool's texts in the language of the user (LC_ALL, LC_MESSAGES, LANG), while it lives.
   English where there is no translation. */
class Translation
{
public:
    Translation();
    ~Translation();
    Q_DISABLE_COPY_MOVE(Translation)

private:
    QTranslator m_translator;
};

/*! Takes the bytes of file names for UTF-8, as the system's terminals do; without a locale Qt would
    take them for Latin-1. */
void useUtf8FileNames();
