// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <finaldraft/MVRFinalDraft.h>
#include <text/MvrTextExport.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QTextFrame>

#include <memory>

class MVRDomDoc;
class QIODevice;
class QTextBlock;
class QTextDocument;
class QTextFragment;
class QTextTable;

/*!
    Writes a screenplay document as Final Draft XML (FDX).

    One Paragraph per text block, typed by the element that its format belongs to, one Text per
    run; inline annotations and footnotes become script notes, and each named element's settings
    are appended. Inspector notes are not written. A writer belongs to one thread.
*/
class MVRTEXT_EXPORT MVRFinalDraftWriter
{
public:
    /*! The note that a run of text belongs to. */
    struct FragmentState
    {
        /*! What the run is. */
        enum Kind {
            PlainText = 0,
            InlineAnnotation = 1,
            InlineFootnote = 2,
            InspectorComment = 3,
            InspectorFootnote = 4
        };

        Kind kind = PlainText; /*!< what the run is */
        QByteArray noteData; /*!< RTF content of an inspector note, else empty */

        /*! Equal in kind and content. */
        bool operator==(const FragmentState &other) const
        {
            return kind == other.kind && noteData == other.noteData;
        }
        /*! Different in kind or content. */
        bool operator!=(const FragmentState &other) const { return !(*this == other); }
    };

    /*! What decides which element a paragraph belongs to. */
    enum ElementChoice {
        /*!
            Its shape: the first element whose paragraph format it has. Elements of one shape all
            become the first of them, and a paragraph with a shape of its own loses its element.
        */
        ChooseByShape,
        /*!
            Its MVRScriptElement::NameProperty: the element of that name, if the paragraph has its
            shape or the shape of none; else its shape. A paragraph that an editor gave another
            shape, but left the name, can keep an element that it no longer looks like.
        */
        ChooseByName
    };

    MVRFinalDraftWriter();
    ~MVRFinalDraftWriter();
    Q_DISABLE_COPY(MVRFinalDraftWriter)

    /*! Drops the XML tree, if there is one. */
    void clear();

    /*!
        Says how many paragraphs at the start of the document are its title page, as
        MVRFinalDraftReader::titlePageBlockCount() counts them. They go where the format has title
        pages, each with its own alignment and indents; 0, as it is at first, leaves them in the
        script.
    */
    void setTitlePageBlockCount(int count) { m_titlePageBlockCount = count; }

    /*! Sets how elements are chosen; ChooseByShape at first. */
    void setElementChoice(ElementChoice choice) { m_elementChoice = choice; }

    /*!
        Writes a document to a file.

        \param fileName  overwritten in place; to replace a file in one step, write to a
                         QSaveFile with the other form
        \param document  the screenplay
        \param elements  the application's elements; their order decides where formats are equal
        \return false when the file cannot be opened, the document is null or not all was written
    */
    bool write(const QString &fileName, const QTextDocument *document,
               const QList<MVRScriptElement> &elements);
    /*! The same for a device that is open for writing; false when it is null. */
    bool write(QIODevice *device, const QTextDocument *document,
               const QList<MVRScriptElement> &elements);

    /*! Writes the blocks and tables of a frame; true. A step of write(), like the next ones, which
        do nothing outside of it, where there is no tree. */
    bool processFrame(const QTextFrame &frame);
    /*! Writes the block or the frame that \a it is at; true. */
    bool processFrameIterator(QTextFrame::iterator it);
    /*! Writes the cells of a table, column by column; true. */
    bool processTable(const QTextTable &table);
    /*! Writes one paragraph with its runs; false for none and without a tree. */
    bool processBlock(const QTextBlock &block);

    /*! The element of a paragraph of that format, or a nameless one (see setElementChoice()). */
    MVRScriptElement findScriptElement(const QTextBlockFormat &format) const;
    /*! That element's name, "Action" when there is none. */
    QString findScriptElementName(const QTextBlockFormat &format) const;

    /*! The note that text of this format belongs to. */
    FragmentState toFragmentState(const QTextCharFormat &format);
    /*! Opens what the runs of \a state stand in; a step of write(). */
    void startFragmentState(FragmentState state, const QTextBlockFormat &blockFormat);
    /*! Closes what the runs of \a previous stood in, when \a next is another; a step of write(). */
    void finalizeFragmentState(FragmentState previous, FragmentState next);

    /*! Appends the settings of every named element; false when there is no tree. */
    bool writeElementSettings();
    /*!
        Appends the page layout; write() does not. Margins in points come from the document's
        dynamic properties "topMargin" and "bottomMargin", else they are 72.
    */
    void writePageLayout();
    /*! Writes nothing: the format's header and footer are left to Final Draft. */
    void writeHeaderFooter();

    /*! The background of text that says nothing else, where a host knows no other: white. */
    QColor docDefaultBackground() const;
    /*! The colour of text that says nothing else, where a host knows no other: black. */
    QColor docDefaultForeground() const;

private:
    void enterState(const FragmentState &state, const QTextBlockFormat &blockFormat);
    void writeTitlePage();
    void writeTitleParagraph(const QTextBlock &block);
    void writeRuns(const QTextBlock &block);
    MVRFinalDraft::TextAttr run(const QTextFragment &fragment);
    const MVRScriptElement *elementOfName(const QString &name,
                                          const QTextBlockFormat &format) const;
    QString typeName(const QTextBlock &block);

    std::unique_ptr<MVRDomDoc> m_dom;
    const QTextDocument *m_textDocument = nullptr;
    int m_titlePageBlockCount = 0;
    ElementChoice m_elementChoice = ChooseByShape;
    QList<MVRScriptElement> m_elements;
    FragmentState m_state; // of the run written last, also of the write before
    QHash<int, MVRFinalDraft::TextAttr> m_runs; // by index of their character format
    QHash<int, QString> m_typeNames; // by index of their block format
};
