// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <core/document/BoundedNames_p.h>
#include <finaldraft/file/FdxLook_p.h>
#include <finaldraft/file/FdxTree_p.h>

#include <QHash>
#include <QList>
#include <QString>
#include <QTextDocument>
#include <QVector>

#include <memory>

/*! A run of a paragraph. */
struct FdxRun
{
    FdxElement node;
    int textStart = 0; // place of its character data in the source; [n, n) for an empty tag
    int textEnd = 0;
};

/*! How runs with the same attributes look in paragraphs of one type. */
struct FdxRunStyle
{
    QTextCharFormat format;
    FdxLook look;
};

/*! How paragraphs with the same attributes of shape look. */
struct FdxParagraphStyle
{
    QTextBlockFormat format;
    MVRFinalDraft::ParagraphAttr shape;
};

/*! How paragraphs of one type look. */
struct FdxType
{
    QString name; // as the document has it; null on a title page
    FdxLook look; // of runs that say nothing
    MVRFinalDraft::ParagraphAttr shape;
    MVRScriptElement element; // the application's
    FdxRunStyle plain;
    FdxParagraphStyle plainParagraph;
    QHash<QByteArray, std::shared_ptr<FdxRunStyle>> runs; // by their attributes
    QHash<QByteArray, std::shared_ptr<FdxParagraphStyle>>
        paragraphs; // by their attributes of shape
};

/*! What holds paragraphs: Content, or DualDialogue. */
struct FdxContainer
{
    FdxElement node;
    int wrapper = -1; // of DualDialogue: index of the paragraph that it stands in
    bool isTitlePage = false;
};

/*! A Paragraph of title page or script. */
struct FdxParagraph
{
    FdxElement node;
    int container = 0;
    bool isWrapper = false; // holds dual dialogue
    bool hasBlock = true; // a wrapper seldom has text of its own
};

/*!
    The script of a file: its paragraphs in document order, and how they look as a document.

    A paragraph's index counts wrappers of dual dialogue too; they stand before what they hold.
*/
class FdxScript
{
public:
    /*! Collects the paragraphs; the tree must live as long as this. */
    explicit FdxScript(const FdxTree &tree);

    const FdxTree &tree() const { return m_tree; }
    const QVector<FdxParagraph> &paragraphs() const { return m_paragraphs; }
    const QVector<FdxContainer> &containers() const { return m_containers; }
    const FdxContainer &containerOf(int paragraph) const
    {
        return m_containers[m_paragraphs[paragraph].container];
    }
    /*! What a paragraph's block is marked by: its index, in a large script what that leaves. */
    int mark(int paragraph) const { return hasOwnMarks() ? paragraph : paragraph % markRing; }
    /*!
        Whether each paragraph has a mark of its own. That gives each block a format of its own,
        which takes as much time and memory as the rest of the block.
    */
    bool hasOwnMarks() const { return m_paragraphs.size() <= mostOwnMarks; }
    static constexpr int mostOwnMarks = 8192; // the longest scripts have half as many paragraphs
    static constexpr int markRing = 512;

    bool isTitlePage(int paragraph) const { return containerOf(paragraph).isTitlePage; }

    /*! The runs of a paragraph in order. */
    QVector<FdxRun> runs(int paragraph) const;
    QVector<FdxRun> runs(const FdxElement &paragraph) const;
    QString text(const FdxRun &run) const;
    QString text(int paragraph) const;
    /*! Whether that is the text of a paragraph. */
    bool hasText(int paragraph, QStringView text) const;
    /*! The same with the file's own breaks; see fdxPlainText(). */
    QString plainText(int paragraph) const;

    /*! Sets what the paragraphs are shown by; what is known of looks is forgotten. */
    void setView(const QList<MVRScriptElement> &elements, double margin);
    double margin() const { return m_margin; }
    const QList<MVRScriptElement> &elements() const { return m_elements; }

    /*! The type of a paragraph, as it stands in the file; "" for none. */
    QByteArray typeName(int paragraph) const;
    FdxType &type(const QByteArray &name, bool isTitlePage);
    FdxType &typeOf(int paragraph) { return type(typeName(paragraph), isTitlePage(paragraph)); }
    const FdxRunStyle &runStyle(FdxType &type, const FdxElement &run) const;
    const FdxParagraphStyle &paragraphStyle(FdxType &type, const FdxElement &paragraph) const;

    /*! The settings that the file has. */
    QHash<QString, MVRFinalDraft::ElementSettings> settings() const;

private:
    struct Settings
    {
        FdxLook look;
        MVRFinalDraft::ParagraphAttr shape;
    };

    void addContainer(const FdxElement &node, int wrapper, bool isTitlePage);
    Settings settings(const QByteArray &type, bool isTitlePage) const;
    QTextBlockFormat blockFormat(const FdxType &type,
                                 const MVRFinalDraft::ParagraphAttr &shape) const;
    QTextCharFormat charFormat(const FdxLook &look, const FdxLook &base,
                               const MVRScriptElement &element) const;

    const FdxTree &m_tree;
    QVector<FdxParagraph> m_paragraphs;
    QVector<FdxContainer> m_containers;
    QHash<QByteArray, FdxElement> m_settings; // ElementSettings by type
    QList<MVRScriptElement> m_elements;
    double m_margin = 72.0;
    QHash<QByteArray, std::shared_ptr<FdxType>> m_types;
    QHash<QByteArray, std::shared_ptr<FdxType>> m_titleTypes;
    mutable BoundedNames m_fonts; // of runs
    mutable QVector<QTextCharFormat> m_charFormats; // the first ones that were made
};

/*! The paragraphs of a note or summary, plain, with the file's own breaks. */
QStringList fdxParagraphTexts(const FdxTree &tree, const FdxElement &element);
/*! The same in one text, a line a paragraph. */
QString fdxParagraphsText(const FdxTree &tree, const FdxElement &element);
