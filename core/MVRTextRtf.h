#pragma once

#include <core/MvrCoreExport.h>

#include <QByteArray>
#include <QString>

class QFont;
class QTextDocument;

/*! Rich text as RTF and back. */
class MVRCORE_EXPORT MVRTextRtf
{
public:
    static bool fromRtfCData(const QByteArray &rtf, QTextDocument *document);
    static QByteArray toRtfCData(const QTextDocument *document, bool withDefaults);
    static QByteArray textToRtf(const QString &text, const QFont *font);
};
