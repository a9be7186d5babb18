// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplayPages.h>
#include <pages/ShapedText_p.h>

#include <QVector>

#include <memory>
#include <optional>

/*! A paragraph, or the rest of one, in lines. */
struct FlowParagraph
{
    const MVRScreenplayParagraph *source = nullptr;
    int index = -1; /*!< in the screenplay */
    int scene = -1;
    MVRScreenplayLine::Kind kind = MVRScreenplayLine::Text;
    std::shared_ptr<const ShapedText> text;
    LineBox box;
    double spaceBefore = 0.0; /*!< points */
    double lineHeight = 0.0;
    QVector<TextSpan> lines;
    bool hasMore = false; /*!< there are more lines than a page could hold */

    double height() const { return lines.size() * lineHeight; }
    bool isOf(MVRFinalDraft::ElementType type) const { return source->paginateAs == type; }
};

/*! A speech with its name, or any other paragraph: what breaks at places of its own choice. */
struct FlowColumn
{
    QVector<FlowParagraph> paragraphs;
    FlowParagraph name; /*!< of a speech */
    bool isSpeech = false; /*!< (MORE) is for its like */
    bool isNamed = false; /*!< begins with its name, or the rest of that */
};

/*! What page breaks keep together: headings, with the paragraph or the speeches behind them. */
struct FlowUnit
{
    QVector<FlowParagraph> heads;
    QVector<FlowColumn> columns; /*!< one; two for a dual dialogue; none for headings alone */
    bool startsPage = false;
    bool startsScene = false;
    int scene = -1;

    bool isEmpty() const { return heads.isEmpty() && columns.isEmpty(); }
};

/*! Where a column breaks. */
struct FlowCut
{
    int paragraph = 0; /*!< the first one that goes to the next page, in part or whole */
    int offset = -1; /*!< where it is cut; -1 when it goes whole */
    int lines = 0; /*!< of it, that stay */
    double height = 0.0; /*!< of what stays, without the first paragraph's space before it */
};

/*! How much a break may spoil. */
enum class CutRule {
    Sentence, /*!< between sentences */
    Line, /*!< between lines, two on each side */
    Any /*!< between any lines */
};

/*! Makes units of a screenplay's body one by one. */
class PageFlow
{
public:
    PageFlow(const MVRScreenplay &screenplay, QVector<MVRScreenplayScene> *scenes);

    /*! The next unit; empty at the end. */
    FlowUnit next();

    /*! A paragraph in lines; \a width of 0 takes the whole of its indents. */
    FlowParagraph paragraph(const MVRScreenplayParagraph &source, int index) const;
    /*! The paragraph again, without the text before \a offset. */
    FlowParagraph rest(const FlowParagraph &paragraph, int offset) const;
    /*! A line that the page brings along, where \a model stands. */
    FlowParagraph added(const FlowParagraph &model, const QString &text,
                        MVRScreenplayLine::Kind kind) const;
    /*! The name above the rest of a speech, in its own look. */
    FlowParagraph continuedName(const FlowParagraph &name) const;
    double bodyHeight() const { return m_bodyHeight; }

    /*! How high a column is, all of it; infinite when it is more than a page. */
    static double heightOf(const FlowColumn &column);
    /*!
        The last place for a break with at most \a room points above it.

        The space before the first paragraph is not counted.
    */
    std::optional<FlowCut> findCut(const FlowColumn &column, double room, CutRule rule) const;

private:
    bool isAtEnd() const { return m_next >= m_screenplay.body.size(); }
    const MVRScreenplayParagraph &at(int index) const { return m_screenplay.body[index]; }
    bool isName(int index) const;
    bool keepsWithNext(const FlowParagraph &paragraph) const;
    FlowParagraph take();
    FlowColumn takeSpeech();
    void takeDual(FlowUnit &unit);
    void noteScene(const MVRScreenplayParagraph &source);
    void continueSpeaker(FlowParagraph &name);
    void setRuns(FlowParagraph &paragraph, const QVector<MVRScreenplayRun> &runs) const;
    std::optional<FlowCut> cutInside(const FlowParagraph &paragraph, double room,
                                     CutRule rule) const;

    const MVRScreenplay &m_screenplay;
    QVector<MVRScreenplayScene> *m_scenes;
    double m_bodyHeight = 0.0;
    int m_next = 0;
    int m_scene = -1;
    QString m_speaker;
};

/*!
    What stands between two indents, in points. A right one that is not above 0 counts from the
    right edge of the paper. An inch of it stands on the paper, wherever a file has it begin, also
    where indents are no numbers.

    \param paperWidth  points, an inch at least
*/
LineBox boxOnPaper(double leftInches, double rightInches, double paperWidth);
/*! A name without what stands in brackets behind it. */
QString speakerOf(const QString &cue);
/*! Whether a name says already that it continues. */
bool saysContinued(const QString &cue, const QString &continuedText);
