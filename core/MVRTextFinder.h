// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>
#include <core/MvrCoreExport.h>

#include <QList>
#include <QTextCursor>

class QTextCharFormat;
class QTextDocument;
class QVariant;

/*!
    Searches a document by the properties of its character formats.

    A format matches when it holds every property of the one searched for with an equal value. All
    searches run forward; a null cursor as result means that nothing (more) was found, and a null
    cursor or document as argument finds nothing.
*/
class MVRCORE_EXPORT MVRTextFinder
{
public:
    /*!
        Finds the next fragment: characters of one paragraph that share one format.

        \param properties  what the format must hold
        \param from   where to search: from its position, or from the end of its selection when it
                      has one
        \param exact  false: a pattern whose MVRTextFormat::ImageLinkProperty is the boolean true
                      finds any non-empty link, one image at a time
        \return the first matching fragment that ends behind the search position, selected whole
                even when it began before, with the position at its end
    */
    static QTextCursor findFragment(const QTextCharFormat &properties, const QTextCursor &from,
                                    bool exact);

    /*!
        Finds the next run: matching fragments that touch, whatever else differs between them.

        A run goes on across a paragraph end when the text on both sides matches, and across empty
        paragraphs whose own character format does; it ends at the border of a table cell.
        Parameters and result are those of findFragment(); the run is selected whole also when the
        search began inside it.
    */
    static QTextCursor findContinuousFragment(const QTextCharFormat &properties,
                                              const QTextCursor &from, bool exact);

    /*!
        The run that the position of \a at lies in: the one around the character before it, else
        the one around the character after it.
    */
    static QTextCursor findFragmentAtPosition(const QTextCharFormat &properties,
                                              const QTextCursor &at);

    /*!
        Tells whether the selection holds the property on any of its characters.

        \param cursor  the selection to look at
        \param id      the property
        \param value   the value that it must have
        \param exact   false: any value will do
        \param atPosition  true: without a selection the format at the position answers, which is
                       that of the character before it (at a paragraph's start, after it)
    */
    static bool hasFormatProperty(const QTextCursor &cursor, int id, const QVariant &value,
                                  bool exact, bool atPosition);

    /*!
        Tells whether the cursor lies inside text with the property: every character selected has
        it, or, without a selection, the text at the position. Parameters as above.
    */
    static bool isInFormatProperty(const QTextCursor &cursor, int id, const QVariant &value,
                                   bool exact);

    /*!
        Tells whether a check mark for the property is to be shown: every character selected has
        it, or, without a selection, the text that would be typed. Parameters as above.
    */
    static bool isFormatCheckedProperty(const QTextCursor &cursor, int id, const QVariant &value,
                                        bool exact);

    /*!
        Lists the anchors (links and named places) in the selection, in document order.

        \param cursor  the selection; parts of anchors outside it are cut off
        \param whole   true: touching fragments with the same target count as one anchor, within
                       one paragraph; false: every fragment is listed
    */
    static QList<MVRTextRange> findAllAnchors(const QTextCursor &cursor, bool whole);

    /*! Counts the runs (see findContinuousFragment()) in which \a property equals \a value. */
    static int formatCount(const QTextDocument *document, int property, const QVariant &value);
};
