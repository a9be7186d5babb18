// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplay.h>

/*! A line of a page, or what stands beside one. Lengths in points from the paper's top left. */
struct MVRScreenplayLine
{
    /*! What a line is. */
    enum Kind {
        Text, /*!< of a paragraph */
        More, /*!< below a broken speech */
        Continued, /*!< the name above the rest of one */
        SceneBottom, /*!< below a broken scene */
        SceneTop, /*!< above the rest of one */
        SceneNumber,
        RevisionMark,
        Header,
        Footer
    };
    /*! A stretch of one look. */
    struct Run
    {
        double x = 0.0; /*!< where it begins */
        double width = 0.0; /*!< of its text, blanks included */
        QString text; /*!< in capitals where these were asked for */
        MVRFinalDraft::TextAttr attr; /*!< how it looks */
    };

    Kind kind = Text; /*!< what it is */
    double y = 0.0; /*!< its top */
    double height = 0.0; /*!< of all that belongs to it */
    QVector<Run> runs; /*!< as they are read; empty for an empty line */
    /*! Set where letters join, are wide or run to the left: then the toolkit places them. */
    bool needsShaping = false;
    int column = 0; /*!< 1 for the right one of a dual dialogue */
    int scene = -1; /*!< which of the screenplay's scenes; -1 in front of the first */
    int paragraph = -1; /*!< index in the body or title page; -1 for what no paragraph holds */

    /*! The text of all runs. */
    MVRTEXT_EXPORT QString text() const;
};

/*! One page. */
struct MVRScreenplayPage
{
    bool isTitlePage = false; /*!< whether it stands in front of the script */
    int number = 0; /*!< as printed; 0 for a title page */
    QVector<MVRScreenplayLine> lines; /*!< in the order of reading */
};

/*! What of a scene stands on one page. */
struct MVRScreenplaySceneLength
{
    int page = 0; /*!< index */
    int scene = -1; /*!< -1 in front of the first */
    int firstLine = 0; /*!< of its text; lines, empty ones not, count from 1 on each page */
    int lastLine = 0; /*!< the last of them */
    QString firstText; /*!< what the first line says */
    QString lastText; /*!< what the last line says */
    int eighths = 0; /*!< of a page; no scene is shorter than one */
};

/*! A scene. */
struct MVRScreenplayScene
{
    QString number; /*!< as the file numbers it; its place where it does not */
    QString heading; /*!< its text */
    bool isNumbered = false; /*!< by the file */
    int eighths = 0; /*!< on all its pages together */
};

/*!
    A screenplay on pages, composed line by line.

    A scene heading, shot or character's name never ends a page; a paragraph that breaks leaves two
    lines on each side, and breaks where a sentence ends if one ends near; a parenthetical stays
    with what follows it. The work is linear in the text.
*/
class MVRTEXT_EXPORT MVRScreenplayPages
{
public:
    /*! Composes \a screenplay. An application object must exist: fonts are measured. */
    explicit MVRScreenplayPages(const MVRScreenplay &screenplay);

    /*! Title pages first. There is always a page, an empty one for an empty screenplay. */
    const QVector<MVRScreenplayPage> &pages() const { return m_pages; }
    /*! The scenes in the order of the script, those that keepScenes() took away included. */
    QVector<MVRScreenplayScene> scenes() const { return m_scenes; }
    /*! The paper, in points. */
    QSizeF pageSize() const { return m_pageSize; }

    /*! The parts of scenes page by page. */
    QVector<MVRScreenplaySceneLength> sceneLengths() const;

    /*!
        Leaves only some scenes: their lines stay where they stand, pages without any go.

        \param first  number of the first scene, as MVRScreenplayScene has it
        \param last   number of the last one
        \return false, with nothing changed, when there is no such scene or none between them
    */
    bool keepScenes(const QString &first, const QString &last);
    /*! Leaves the pages with these printed numbers only; false when there are none. */
    bool keepPages(int first, int last);
    /*! Takes the asterisks of revised lines out of the margin. */
    void removeRevisionMarks();

private:
    QVector<MVRScreenplayPage> m_pages;
    QVector<MVRScreenplayScene> m_scenes;
    QSizeF m_pageSize;
    double m_bodyHeight = 0.0;
};
