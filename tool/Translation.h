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
