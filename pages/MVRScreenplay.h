// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraft.h>
#include <text/MvrTextExport.h>

#include <QDate>
#include <QHash>
#include <QSizeF>
#include <QString>
#include <QVector>

class MVRFinalDraftFile;
class QIODevice;
class QTextDocument;

/*! Text of one look. In headers and footers, a label that each page fills in. */
struct MVRScreenplayRun
{
    QString text; /*!< what it says */
    MVRFinalDraft::TextAttr attr; /*!< how it looks */
    QString label; /*!< "Page #", "Date", "Scene #", "Title", …; empty for text */
};

/*! A place that a tab moves to. */
struct MVRScreenplayTabStop
{
    /*! What stands at the place: the beginning, the middle or the end of what follows the tab. */
    enum Kind { Left, Center, Right };

    double position = 0.0; /*!< inches from the paper's left edge */
    Kind kind = Left; /*!< what stands there */
};

/*! A paragraph of a screenplay, with all that its place on a page depends on. */
struct MVRScreenplayParagraph
{
    QString type; /*!< as the file names it */
    MVRFinalDraft::ElementType paginateAs = MVRFinalDraft::Action; /*!< what page breaks go by */
    /*! Indents count from the paper's left edge; a right one of 0 or less, from its right edge. */
    MVRFinalDraft::ParagraphAttr attr;
    QVector<MVRScreenplayRun> runs; /*!< "\n" is a line break */
    QVector<MVRScreenplayTabStop> tabStops; /*!< every half inch where there are none */
    QString sceneNumber; /*!< of a scene heading; empty for none */
    int dualDialogue = 0; /*!< paragraphs of one number stand side by side; 0 for none */
    int source = -1; /*!< which paragraph of the file or document this is, counted from 0 */
};

/*! What stands at the top, or at the foot, of pages. */
struct MVRScreenplayHeader
{
    bool isVisible = false; /*!< whether it stands on any page */
    bool isOnFirstPage = false; /*!< whether it stands on the first one too */
    QVector<MVRScreenplayParagraph> paragraphs; /*!< its lines, from above */
};

/*! A set of revisions. */
struct MVRScreenplayRevision
{
    QString name; /*!< of the set: "Blue" */
    QString mark = QStringLiteral("*"); /*!< what stands in the margin */
};

/*! How a screenplay's pages look. As constructed: US Letter as Final Draft sets it up. */
struct MVRTEXT_EXPORT MVRScreenplaySettings
{
    QSizeF pageSize = QSizeF(612.0, 792.0); /*!< points, like all margins */
    double topMargin = 72.0; /*!< above the text */
    double bottomMargin = 72.0; /*!< below the text */
    double headerMargin = 36.0; /*!< from the paper's edge to the header's first line */
    double footerMargin = 36.0; /*!< from the footer's last line to the paper's edge */
    double lineHeight = 12.0; /*!< of a single-spaced line, points */
    bool breaksAtSentences = true; /*!< pages end where a sentence does, if one ends near */

    double dualLeft = 1.5; /*!< what dual dialogue shares, inches from the paper's left edge */
    double dualRight = 7.5; /*!< where it ends */

    bool marksBrokenSpeech = true; /*!< whether moreText stands below it */
    bool namesBrokenSpeech = true; /*!< whether name and continuedText stand above its rest */
    bool continuesSpeakers = false; /*!< continuedText where the same character speaks again */
    QString moreText = QStringLiteral("(MORE)"); /*!< below a speech that goes on overleaf */
    QString continuedText = QStringLiteral("(CONT'D)"); /*!< behind the name of who speaks on */
    MVRFinalDraft::TextAttr continuedLook; /*!< of the texts that breaks bring along */

    bool marksBrokenScene = false; /*!< whether sceneBottomText stands below it */
    bool continuesBrokenScene = false; /*!< whether sceneTopText stands above its rest */
    bool countsContinueds = false; /*!< from a scene's third page on: "CONTINUED: (2)" */
    QString sceneBottomText
        = QStringLiteral("(CONTINUED)"); /*!< below a scene that goes on overleaf */
    QString sceneTopText = QStringLiteral("CONTINUED:"); /*!< above the rest of a scene */

    MVRScreenplayHeader header; /*!< as constructed: the page number from the second page on */
    MVRScreenplayHeader footer; /*!< of the script; empty as constructed */
    MVRScreenplayHeader titleHeader; /*!< of the title page */
    MVRScreenplayHeader titleFooter; /*!< of the title page */
    int startingPage = 1; /*!< the number of the first page */

    bool showsNumbersLeft = true; /*!< numbers of scenes that have one */
    bool showsNumbersRight = true; /*!< the same in the other margin */
    double numberLeft = 0.75; /*!< where they begin, inches from the paper's left edge */
    double numberRight = 7.38; /*!< the same for the other margin */
    MVRFinalDraft::TextAttr numberLook; /*!< of both */

    QHash<int, MVRScreenplayRevision> revisions; /*!< by the id that runs carry */
    int activeRevision = 0; /*!< 0 for none */
    bool showsActiveRevisionOnly = false; /*!< whether marks of other sets are left out */
    double revisionMark = 7.75; /*!< where marks stand, inches from the paper's left edge */

    MVRScreenplaySettings();
};

/*! A screenplay as far as its pages go: plain values, filled by a reader or by hand. */
struct MVRTEXT_EXPORT MVRScreenplay
{
    MVRScreenplaySettings settings; /*!< how its pages look */
    QVector<MVRScreenplayParagraph> titlePage; /*!< may be empty */
    QVector<MVRScreenplayParagraph> body; /*!< the script */
    QString title; /*!< what the label "Title" stands for */
    QDate date; /*!< what the label "Date" stands for; today where it is invalid */

    /*!
        Reads a Final Draft file, its page layout and all: capitals, scene numbers, dual dialogue,
        revisions, title page, header and footer. Hidden text and outlines are left out.

        \param device      open for reading
        \param screenplay  replaced; left alone on failure
        \param error       receives the reason of a failure; may be null
        \return false when the file is not well-formed XML or holds no script
    */
    static bool fromFinalDraft(QIODevice *device, MVRScreenplay *screenplay, QString *error);

    /*!
        Reads a file as it would be saved now: what an application prints while its user edits.

        \param file      the file that filled the document, or one that nothing was loaded into
        \param document  the document
        \return false as the other one does, and when the file cannot be written
    */
    static bool fromFinalDraft(MVRFinalDraftFile *file, const QTextDocument *document,
                               MVRScreenplay *screenplay, QString *error);

    /*!
        Takes a screenplay from a document alone, as MVRFinalDraftReader and MVRFinalDraftFile make
        them.

        The element of a paragraph is the one that MVRScriptElement::NameProperty names, Action
        where it names none. Scene numbers, dual dialogue, hidden text and outlines are those that
        MVRFinalDraftFile notes in the document. Settings are the default ones, there are no
        revisions: the file has those.
        \param document         its documentMargin() is what indents count from, in points
        \param titlePageBlocks  so many blocks at the start are the title page
    */
    static MVRScreenplay fromDocument(const QTextDocument &document, int titlePageBlocks);

    /*!
        The settings that Final Draft gives an element in a new script, indents from the paper's
        edge; those of Action for a name that it does not know.
    */
    static MVRFinalDraft::ElementSettings standardElement(const QString &name);
};
