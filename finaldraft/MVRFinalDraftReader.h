// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRScriptElement.h>
#include <finaldraft/MVRFinalDraft.h>
#include <text/MVRTextCommentLink.h>
#include <text/MvrTextExport.h>

#include <QHash>
#include <QList>
#include <QString>

#include <memory>

class MVRDomDoc;
class QDomElement;
class QIODevice;
class QTextDocument;

/*!
    Reads a Final Draft screenplay (FDX) into a rich-text document.

    load() a file, then read() and readElements() in any order and as often as wanted. Title page
    and body become one block per paragraph, script notes become inspector comments on the word
    before them. Any version of the format is read. A reader belongs to one thread.
*/
class MVRTEXT_EXPORT MVRFinalDraftReader
{
public:
    MVRFinalDraftReader();
    ~MVRFinalDraftReader();
    Q_DISABLE_COPY(MVRFinalDraftReader)

    /*!
        Settings by paragraph type, for types that files use and say nothing about. Without them
        such paragraphs have Final Draft's look of actions, and those of unknown type are dropped
        where the file has no settings for "Action" either.

        \param settings  kept as they are; indents count from a text margin of 72 points
    */
    void setFallbackSettings(const QHash<QString, MVRFinalDraft::ElementSettings> &settings);

    /*! Drops the loaded file; everything else stays. */
    void clear();

    /*!
        Parses a file in place of the one loaded before.

        \param device  open for reading
        \return false when the text is not well-formed XML; errorString() says why
    */
    bool load(QIODevice *device);
    /*! The same for a file name; false, with errorString() as it was, when it cannot be opened. */
    bool load(const QString &fileName);

    /*!
        Replaces the content of a document by the loaded file.

        Undo recording is off meanwhile and restored afterwards. Notes and element settings of
        earlier reads are kept and attached again.
        \param document  cleared first
        \param elements  the application's elements; their formats win over the file's
        \return false for a null document, when nothing is loaded, or when the file holds no
                script; what was read before the fault stays, errorString() says what it was
    */
    bool read(QTextDocument *document, const QList<MVRScriptElement> &elements);

    /*!
        Gives the file's settings by paragraph type, read() having added those of types that
        the file uses without settings, and the fallback settings of the types that are left.
        Indents count from a text margin of 72 points.

        \return false when \a settings is null or the file is not Final Draft's
    */
    bool readElements(QHash<QString, MVRFinalDraft::ElementSettings> *settings);

    /*! The last fault; empty after a good read(). */
    QString errorString() const { return m_errorString; }
    /*! The file's text scaling in percent; 100 when it names none. */
    double scaling() const { return m_scaling; }
    /*! Whether the file asks to show invisible characters. */
    bool showInvisibles() const { return m_showInvisibles; }
    /*! What the writer said in the file beside the text that read() takes from it; nothing when no
        file is loaded. */
    MVRFinalDraft::LeftOut leftOut() const;
    /*! How many blocks at the start of the document the last read() made of the title page. */
    int titlePageBlockCount() const { return m_titlePageBlockCount; }

private:
    struct Walk;
    struct Look;

    bool parseFile();
    void parsePageLayout();
    bool parseElementSettings();
    void parseParagraphTags(const QString &parentTag);
    void parseParagraph(const QDomElement &element, const QString &parentTag);
    void parseNoteParagraph(const QDomElement &element);
    void parseOtherChild(const QDomElement &child, const QString &parentTag);
    std::shared_ptr<const Look> findLook(const QString &type);
    bool resolveSettings(MVRFinalDraft::ElementSettings *settings);
    bool findFallback(const QString &type, MVRFinalDraft::ElementSettings *settings) const;
    static QTextBlockFormat blockFormat(const MVRFinalDraft::ParagraphAttr &attr, const Look &look);
    MVRScriptElement findScriptElement(const QString &name) const;
    MVRTextRange anchorOrInsertStandIn();
    void addScriptNote(const QTextDocument &note, const MVRTextRange &range);

    std::unique_ptr<MVRDomDoc> m_domDoc;
    Walk *m_walk = nullptr; // what read() works on; null outside it
    QString m_errorString;
    QHash<QString, MVRFinalDraft::ElementSettings> m_elementSettings;
    QHash<QString, MVRFinalDraft::ElementSettings> m_fallbackSettings;
    QList<MVRScriptElement> m_scriptElements;
    MVRTextCommentLinkMap m_scriptNotes;
    double m_scaling = 100.0;
    bool m_showInvisibles = false;
    int m_titlePageBlockCount = 0;
};
