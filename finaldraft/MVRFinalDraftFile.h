// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <core/MVRTextRange.h>
#include <finaldraft/MVRFinalDraft.h>
#include <text/MvrTextExport.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class QIODevice;
class QTextDocument;

/*!
    A Final Draft file (FDX) that stays itself while its script is edited.

    The file is the truth, a document the view of it: load() keeps all of the file, read() shows its
    title page and script as a document whose paragraphs know which element they came from, write()
    puts what was changed in the document back and leaves every other byte as it was. What a
    document cannot show (revisions, tags, headers, alternates, the beat board, …) stays in the
    file.

    An object that nothing was loaded into writes whole files of its own, in version 5 of the
    format. An object belongs to one thread. Every version is read, templates (.fdxt) too.

    MVRFinalDraftReader and MVRFinalDraftWriter go through a document alone instead: what that does
    not hold is lost.
*/
class MVRTEXT_EXPORT MVRFinalDraftFile
{
public:
    /*!
        Ids of the properties by which a document remembers its file.

        All but the last two belong to paragraph formats. A paragraph's type is
        MVRScriptElement::NameProperty; paragraphs of the title page have none. What says something
        of number, label, bookmark and scene is written for paragraphs that are new to the file; of
        the others number and label are written back.
    */
    enum Property : int {
        SourceParagraphProperty = 0x100200, /*!< int: index of the paragraph's element; in a script
                                                 of more than 8192 paragraphs modulo 512 */
        SourceFileProperty = 0x100201, /*!< int: the object that it was read from */
        TitlePageProperty = 0x100202, /*!< bool: the paragraph stands on the title page */
        DualDialogueProperty = 0x100203, /*!< int: touching paragraphs of one number stand side by
                                              side; the number has no other meaning */
        SceneNumberProperty = 0x100204, /*!< string: Number; written back */
        LabelProperty = 0x100205, /*!< string: Label */
        BookmarkProperty = 0x100206, /*!< string: Bookmark */
        SceneTitleProperty = 0x100207, /*!< string: SceneProperties Title */
        SceneColorProperty = 0x100208, /*!< string: SceneProperties Color, as the file writes it */
        SceneLengthProperty = 0x100209, /*!< string: SceneProperties Length, in eighths: "1 3/8" */
        ScenePageProperty = 0x10020a, /*!< string: SceneProperties Page */
        SceneSummaryProperty = 0x10020b, /*!< string: SceneProperties Summary, a line a paragraph */
        WordUnderlineProperty = 0x100210, /*!< bool, of text: words are underlined, blanks not */
        HiddenTextProperty = 0x100211 /*!< bool, of text: Final Draft may hide it */
    };

    /*! How a file keeps a note. */
    enum NoteShape {
        NoteAmongRuns, /*!< at a place between the runs of a paragraph (version 1) */
        NoteOfParagraph, /*!< in a paragraph, of all of it (versions 2 and 3) */
        NoteUnanchored, /*!< attached to nothing */
        NoteOfRange /*!< beside the script, with a range (from version 5 on) */
    };

    /*! A script note. Texts are as the file writes them, empty where it says nothing. */
    struct Note
    {
        NoteShape shape = NoteUnanchored; /*!< how the file keeps it */
        QString id; /*!< by which the file tells it from others */
        QString name; /*!< its title */
        QString type; /*!< kind of note, a word that the writer chose */
        QString author; /*!< who wrote it */
        QString date; /*!< of making: "20200102T030405", UTC */
        QString dateModified; /*!< of the last change, as date */
        QString color; /*!< "#RRRRGGGGBBBB" */
        QStringList paragraphs; /*!< of the content, plain */
        /*!
            The text that the note is about, as positions in the document that read() makes: the
            range, the word at a point, the word before a note among runs, the first word of a
            note's paragraph. Empty where there is none; then start is the place, -1 for none.
        */
        MVRTextRange range;
        QString text; /*!< of the range, a line a paragraph */

        /*! The content with its paragraphs joined by line feeds. */
        QString content() const { return paragraphs.join(QLatin1Char('\n')); }
    };

    /*! A scene of the script. Texts are as the file writes them. */
    struct Scene
    {
        int block = 0; /*!< number of its heading's block in the document that read() makes */
        QString heading; /*!< its text, without the number */
        QString number; /*!< as printed beside the heading: "12A" */
        QString title; /*!< what the file calls it beside its heading */
        QString color; /*!< "#RRRRGGGGBBBB" */
        QString length; /*!< pages and eighths, "1 3/8" */
        QString page; /*!< number of the page that it begins on */
        QString summary; /*!< a line a paragraph */
    };

    MVRFinalDraftFile();
    ~MVRFinalDraftFile();
    Q_DISABLE_COPY(MVRFinalDraftFile)

    /*! Drops the file. */
    void clear();

    /*!
        Parses a file in place of the one loaded before.

        \param device  open for reading
        \return false when it cannot be read, is no well-formed XML or no Final Draft file;
                errorString() says why, and nothing is loaded then
    */
    bool load(QIODevice *device);
    /*! The same for a file name. */
    bool load(const QString &fileName);
    /*! Whether a file is loaded. */
    bool isLoaded() const;
    /*! Why the last load() or read() failed; else empty. */
    QString errorString() const;

    /*!
        Replaces the content of a document by title page and script of the loaded file.

        Every Paragraph becomes one block, the paragraphs of dual dialogue one each. A line break
        within a paragraph is a line separator. Notes become inspector comments; where two are
        about the same characters, one gives way in the document, and notes() lists both. Undo
        recording is off meanwhile and restored afterwards.
        \param document  cleared first
        \param elements  the application's elements; their formats win over the file's
        \return false for null and when nothing is loaded
    */
    bool read(QTextDocument *document, const QList<MVRScriptElement> &elements = {});

    /*!
        Writes the file as the document has it.

        A paragraph is the element that it came from, whatever was done to its text; what is copied
        or new gets an element of its own. An element that is no longer in the document goes, with
        its notes. Without changes the bytes are those that were loaded.
        \param device    open for writing
        \param document  the one that read() filled, or a clone of it; any document when nothing is
                         loaded
        \return false for null and when not all was written
    */
    bool write(QIODevice *device, const QTextDocument *document);

    /*!
        Names elements of the application for write().

        A paragraph without a type becomes one of the first element that has its shape. A file that
        has no settings for a type gets those of the element when a paragraph of it is written.
    */
    void setElements(const QList<MVRScriptElement> &elements);

    /*!
        Names settings for types that the file has none of; a paragraph of one of them brings them
        along. They go before those that elements make, and hold more.

        \param settings  by type, as settingsXml() of another file gives them
    */
    void setSettingsXml(const QHash<QString, QByteArray> &settings);
    /*! The ElementSettings of the loaded file by type, as XML in UTF-8. */
    QHash<QString, QByteArray> settingsXml() const;

    /*! All notes of the loaded file, in its order. */
    QVector<Note> notes() const;
    /*!
        Takes out of the file the notes that the document of read() does not show: those without a
        place, on text that has another note, behind the end of the script. The others go when
        they are removed from the document.

        \return how many; notes() no longer has them, and write() leaves them out
    */
    int removeHiddenNotes();
    /*! The scenes of the loaded file. */
    QVector<Scene> scenes() const;

    /*! What of the file's text the document of read() does not show: it stays in the file. */
    MVRFinalDraft::LeftOut leftOut() const;

    /*! The settings of the file by paragraph type; indents count from a margin of 72 points. */
    QHash<QString, MVRFinalDraft::ElementSettings> elementSettings() const;

    /*! The version that the file says it has; empty when it says none. */
    QString version() const;
    /*! How many blocks at the start of a document come from the title page. */
    int titlePageBlockCount() const;
    /*! The file's text scaling in percent; 100 when it names none. */
    double scaling() const;
    /*! Whether the file asks to show invisible characters. */
    bool showInvisibles() const;

    /*!
        The XML of a child of the file's root, in UTF-8, for what no other operation tells: page
        layout, headers and footers, revisions, …

        \param name  of the element: "PageLayout", "HeaderAndFooter", "MoresAndContinueds", …; its
                     own children by a path: "TitlePage/HeaderAndFooter"
        \return the first such element with its tags; empty when there is none
    */
    QByteArray elementXml(const QString &name) const;

private:
    struct Private;
    std::unique_ptr<Private> m_d;
};
