// SPDX-License-Identifier: MIT
#include <tool/Translation.h>

#include <QCoreApplication>
#include <QLocale>
#include <QTextCodec>

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

void useUtf8FileNames()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}
