// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplay.h>

#include <QDomElement>

/*! An element of the file: its settings, and whether its text is printed. */
struct FdxElement
{
    MVRFinalDraft::ElementSettings settings; /*!< indents from the paper's edge */
    bool isHidden = false;
};
using FdxElements = QHash<QString, FdxElement>;

/*! Whether an element is no part of the pages, whatever its settings. */
bool isFdxOutline(const QString &type);

/*! The settings that the file has for its elements. */
FdxElements readFdxElements(const QDomElement &root);

/*! The page layout: paper, margins, mores and continueds, headers, scene numbers, revisions. */
MVRScreenplaySettings readFdxSettings(const QDomElement &root);

/*! A paragraph with attributes of its own, as those of headers and title pages are. */
MVRScreenplayParagraph readFdxParagraph(const QDomElement &element, const FdxElement &model);

/*! Takes over what a FontSpec, or a run of text, says of its look. */
void readFdxLook(const QDomElement &element, MVRFinalDraft::TextAttr *look);

/*! The element of a paragraph; the standard one for a type that has no settings. */
FdxElement findFdxElement(const FdxElements &elements, const QString &type);
