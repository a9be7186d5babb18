// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>

struct Document;

/*! The notes of a Final Draft file, as the file has them; a note without a place has none here. */
QJsonArray scriptNotes(const Document &document);

/*! What a Final Draft file says of its script: version, scenes, characters, revisions, notes. */
QJsonObject scriptFigures(const Document &document);
