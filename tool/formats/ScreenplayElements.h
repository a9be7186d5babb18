// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <finaldraft/MVRFinalDraft.h>

#include <QHash>
#include <QList>
#include <QString>

struct Document;

/*! Settings of paragraph types by name, as a reader hands them out. */
using ElementSettingsMap = QHash<QString, MVRFinalDraft::ElementSettings>;

/*!
    Final Draft's own settings of the nine standard types, indents counted from the text margin.
*/
ElementSettingsMap standardSettings();

/*! The same for a reader, for what files are silent about: capitals are left to its elements. */
ElementSettingsMap fallbackSettings();

/*! Gives a document that is no screenplay margins of an inch, and the elements to write it as one.
 */
void giveStandards(Document &document);

/*!
    Elements that let a reader keep the formats of the file.

    \param settings  the file's settings
    \param capitals  whether the text of all-capitals elements is to be put in capitals; not when
                     it goes back into a screenplay file, which keeps the letters as typed
*/
QList<MVRScriptElement> elementsForReading(const ElementSettingsMap &settings, bool capitals);

/*! Elements with their formats, standard types first, for a writer. */
QList<MVRScriptElement> elementsForWriting(const ElementSettingsMap &settings);
