// SPDX-License-Identifier: MIT
#include <tool/Translation.h>

#include <QCoreApplication>
#include <QLocale>

Translation::Translation()
{
    if (m_translator.load(QLocale(), QStringLiteral("mvrtext"), QStringLiteral("_"),
                          QStringLiteral(":/translations")))
        QCoreApplication::installTranslator(&m_translator);
}

Translation::~Translation()
{
    QCoreApplication::removeTranslator(&m_translator);
}
