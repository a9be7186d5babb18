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

/*! Gives a document that is no screenplay margins of an inch, and the elements to write it as one.
 */
void giveStandards(Document &document);

/*! Elements with their formats, standard types first, for a writer. */
QList<MVRScriptElement> elementsForWriting(const ElementSettingsMap &settings);
