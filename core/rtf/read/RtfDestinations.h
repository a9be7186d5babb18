// SPDX-License-Identifier: MIT
#pragma once

class QString;
class RtfReader;

/*!
    Where the text of a group goes (RTF 1.9.1, "Destinations").

    \c text receives decoded text, null drops it; \c close runs at the end of the group that
    opened the destination. Body text has no \c text: the reader takes its short way.
*/
struct RtfDestination
{
    void (*text)(RtfReader &reader, const QString &text) = nullptr;
    void (*close)(RtfReader &reader) = nullptr;
    bool isBody = false; /*!< of the document, a note or a text box */
};

namespace RtfDestinations {

extern const RtfDestination body;
extern const RtfDestination ignored; /*!< dropped, but looked through: the old half of \upr */
extern const RtfDestination fontTable;
extern const RtfDestination colorTable;
extern const RtfDestination styleSheet;
extern const RtfDestination fieldInstruction;
extern const RtfDestination listTable;
extern const RtfDestination list;
extern const RtfDestination listLevel;
extern const RtfDestination levelText;
extern const RtfDestination oldList; /*!< \pn */
extern const RtfDestination nestedRow; /*!< \nesttableprops */
extern const RtfDestination picture;
extern const RtfDestination exactProperties; /*!< \mvrprops */
extern const RtfDestination note; /*!< \footnote, \annotation: body text of its own */
extern const RtfDestination info;
extern const RtfDestination infoTitle;
extern const RtfDestination infoAuthor;
extern const RtfDestination infoTime;
extern const RtfDestination bookmark;
extern const RtfDestination shape;
extern const RtfDestination shapeProperty; /*!< \sn */
extern const RtfDestination shapeValue; /*!< \sv */
extern const RtfDestination textBox; /*!< \shptxt: body text */
extern const RtfDestination noteAuthor;
extern const RtfDestination noteInitials;
extern const RtfDestination noteRangeStart;
extern const RtfDestination noteRangeEnd;
extern const RtfDestination noteReference;
extern const RtfDestination noteDate;
extern const RtfDestination noteTime;
extern const RtfDestination noteData; /*!< \mvrnote */

}
