// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraft.h>

#include <QString>
#include <QVector>

/*!
    The settings of an element in a new script, indents from the paper's edge; those of
    \a otherwise for a type that is none of the nine standard ones.

    These are what pages look like. ElementSettings::applyFdxAppDefaults() differs: it parts a name
    from what is said.
*/
MVRFinalDraft::ElementSettings fdxStandardSettings(const QString &type,
                                                   MVRFinalDraft::ElementType otherwise);

/*! All of them, in the order in which Final Draft lists them. */
QVector<MVRFinalDraft::ElementSettings> fdxStandardSettings();

/*! Lets indents that count from the paper's edge count from a margin of so many points. */
void fdxCountFromMargin(MVRFinalDraft::ElementSettings *settings, double margin);
