// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <core/document/OfflineDocument_p.h>
#include <finaldraft/MVRFinalDraftFile.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

/*! The distance of text from the paper's edge where a document does not give one, in points. */
constexpr double defaultMargin = 72.0;

/*! A document in memory, its lengths in points, and what its file said about it. */
struct Document
{
    OfflineDocument text;
    QString title;
    bool isScreenplay = false;
    int titlePageBlocks = 0; /*!< paragraphs at the start that belong on a page of their own */
    QList<MVRScriptElement> elements; /*!< for writing it as a screenplay */
    QHash<QString, QByteArray> settings; /*!< more of them, as a screenplay's file has them */
    double scaling = 100.0; /*!< percent */
    bool showInvisibles = false;
    QByteArray source; /*!< of a screenplay: the file that it was read from */
    QByteArray sourceMark; /*!< tells whether the text is still the one of source */
    std::shared_ptr<MVRFinalDraftFile> script; /*!< the file that it is a view of; may be null */
    int notePictures = 0; /*!< that notes only name */
    QStringList losses; /*!< what its file holds and it does not, in words */
};
