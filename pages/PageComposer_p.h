// SPDX-License-Identifier: MIT
#pragma once

#include <pages/PageFlow_p.h>

/*! Puts the units of a screenplay on pages. */
class PageComposer
{
public:
    PageComposer(const MVRScreenplay &screenplay, QVector<MVRScreenplayPage> *pages,
                 QVector<MVRScreenplayScene> *scenes);

    void compose();

private:
    /*! Where each column of a unit breaks; nothing for one that stays whole. */
    using Cuts = QVector<std::optional<FlowCut>>;

    void composeTitlePage();
    void place(FlowUnit unit, bool sceneGoesOn);
    std::optional<Cuts> cutsOf(const FlowUnit &unit, double room, CutRule rule) const;
    std::optional<Cuts> chooseCuts(const FlowUnit &unit, double room) const;
    FlowUnit split(const FlowUnit &unit, const Cuts &cuts);
    FlowColumn restOf(const FlowColumn &column, const FlowCut &cut) const;

    double spaceBefore(const FlowParagraph &paragraph) const;
    double heightOf(const FlowUnit &unit) const;
    double headHeight(const FlowUnit &unit) const;
    double bottomSpace() const;
    double roomInScene() const;
    double room() const { return m_bottom - m_y; }

    void startPage(bool isTitlePage);
    void breakPage(bool isInScene);
    void put(const FlowParagraph &paragraph, int lines, int end, int column);
    void putColumn(const FlowColumn &column, const std::optional<FlowCut> &cut, int side);
    void putLine(const FlowParagraph &paragraph, const TextSpan &span, int column);
    void putSceneNumbers(const FlowParagraph &paragraph, const QString &number,
                         const MVRScreenplayLine &line);
    void putRevisionMark(const FlowParagraph &paragraph, const TextSpan &span,
                         const MVRScreenplayLine &line);
    void putAside(const QString &text, double inches, MVRScreenplayLine::Kind kind,
                  const MVRScreenplayLine &line);
    void putSceneBottom();
    void putSceneTop();
    FlowParagraph sceneLine(const QString &text, Qt::Alignment alignment,
                            MVRScreenplayLine::Kind kind) const;

    const MVRScreenplay &m_screenplay;
    const MVRScreenplaySettings &m_settings;
    PageFlow m_flow;
    QVector<MVRScreenplayPage> *m_pages;
    QVector<MVRScreenplayScene> *m_scenes;
    MVRScreenplayParagraph m_sceneLine; /*!< the look of "CONTINUED:" */
    double m_top = 0.0;
    double m_bottom = 0.0;
    double m_y = 0.0;
    bool m_isAtTop = true; /*!< nothing stands on the page */
    bool m_isBehindSceneTop = false;
    int m_scene = -1; /*!< of the last unit */
    int m_sceneBreaks = 0; /*!< how often it went on on a new page */
};

/*! Adds header and footer to a page; \a index of them are before it among title or script. */
void addFurniture(const MVRScreenplay &screenplay, const QVector<MVRScreenplayScene> &scenes,
                  int index, MVRScreenplayPage &page);

/*! The line of \a paragraph that \a span is, at height \a y. */
MVRScreenplayLine lineOf(const FlowParagraph &paragraph, const TextSpan &span, double y);
