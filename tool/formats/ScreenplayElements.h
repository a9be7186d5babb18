// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <finaldraft/MVRFinalDraft.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

/*! Settings of paragraph types by name, as a reader hands them out. */
using ElementSettingsMap = QHash<QString, MVRFinalDraft::ElementSettings>;

/*!
    Final Draft's own settings of the nine standard types, indents counted from the text margin.
*/
ElementSettingsMap standardSettings();

/*!
    Adds Final Draft's own settings for each standard type that a file is silent about.

    Without them such paragraphs would all stand at the left margin, and those of unknown type
    would be dropped.
    \param fdx    the file; returned as it is when its root element has no end tag
    \param known  the settings that the file has
*/
QByteArray withStandardSettings(const QByteArray &fdx, const ElementSettingsMap &known);

/*!
    Elements that let a reader keep the formats of the file.

    \param settings  the file's settings
    \param capitals  whether the text of all-capitals elements is to be put in capitals; not when
                     it goes back into a screenplay file, which keeps the letters as typed
*/
QList<MVRScriptElement> elementsForReading(const ElementSettingsMap &settings, bool capitals);

/*! Elements with their formats, standard types first, for a writer. */
QList<MVRScriptElement> elementsForWriting(const ElementSettingsMap &settings);
