// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QDomDocument>
#include <QString>

class QIODevice;
struct XmlTree;

/*!
    An XML tree with a cursor.

    The cursor stands on the current element; paths are relative to it ("Content/Paragraph") or,
    with a leading slash, to the document ("/FinalDraft/Content"). Every step of a path is the
    first child element of that name.

    Reading is safe for files from anywhere: nesting deeper than maxDepth elements and entities
    that grow are refused, nothing outside the text is opened. Text of blanks only is kept; line
    breaks that lay out elements are not.
*/
class MVRCORE_EXPORT MVRDomDoc
{
public:
    /*! Elements may be nested this deep. */
    static constexpr int maxDepth = 256;

    MVRDomDoc() = default;
    Q_DISABLE_COPY(MVRDomDoc)

    /*!
        Parses XML and puts the cursor on its root element.

        \param device  open for reading; read to its end
        \return false when the text is not well-formed, nested too deep or grows by its entities:
                the tree is empty then and errorString() says why, with line and column
    */
    bool setContent(QIODevice *device);
    /*! The same for text; an encoding named in it is ignored. */
    bool setContent(const QString &text);

    /*! What the last setContent() found wrong; null when it succeeded. */
    QString errorString() const { return m_errorString; }

    /*! The tree itself. */
    QDomDocument document() const { return m_document; }

    /*!
        Moves the cursor along \a path.

        \return false, with the cursor where it was, when a step is missing
    */
    bool cd(const QString &path);
    /*! Moves the cursor to its next sibling element named \a tag; false when there is none. */
    bool cdNext(const QString &tag);
    /*! Moves the cursor \a levels elements up; false, at the root element, when there are fewer. */
    bool cdUp(int levels = 1);
    /*! Puts the cursor on \a element of this tree; a null element is ignored. */
    void setWorkElement(const QDomElement &element);

    /*! The element under the cursor; null for an empty tree. */
    QDomElement currentElement() const { return m_current; }
    /*! The first child node of the current element, of any kind; null when it has none. */
    QDomNode currentChild() const { return m_current.firstChild(); }
    /*! The element at \a path, the current one for an empty path; null when there is none. */
    QDomElement find(const QString &path = QString()) const;

    /*!
        Appends a child element to the current element, or a root element to an empty tree, and
        moves the cursor to it.

        \return false when \a tag is not the name of an XML element
    */
    bool create(const QString &tag);
    /*!
        Makes \a value the whole content of the element at \a path ("." for the current one).

        Characters that XML cannot hold are left out.
        \return false when there is no such element
    */
    bool set(const QString &path, const QString &value);

    /*!
        Reads an attribute.

        \param name     the attribute
        \param value    receives the value; left alone when the attribute is absent or is not of
                        this type. "Yes" and "No" (in any case), "true", "false", "1" and "0" are
                        truth values; numbers are decimal and finite.
        \param element  the element that has it
        \return whether \a value was written
    */
    static bool getAttr(const QString &name, QString *value, const QDomElement &element);
    /*! \overload */
    static bool getAttr(const QString &name, bool *value, const QDomElement &element);
    /*! \overload */
    static bool getAttr(const QString &name, double *value, const QDomElement &element);
    /*! \overload */
    static bool getAttr(const QString &name, int *value, const QDomElement &element);

    /*!
        Sets an attribute.

        Characters that XML cannot hold are left out. Doubles are written in their shortest exact
        form ("12", "12.5").
        \param name        the attribute
        \param value       its value
        \param path        the element; the current one when empty
        \param writeEmpty  whether an empty text is written; when not, the attribute is removed
        \return false when there is no such element or \a name is no attribute's name
    */
    bool setAttr(const QString &name, const QString &value, const QString &path = QString(),
                 bool writeEmpty = true);
    /*! \overload */
    bool setAttr(const QString &name, const char *value, const QString &path = QString(),
                 bool writeEmpty = true);
    /*! \overload */
    bool setAttr(const QString &name, double value, const QString &path = QString(),
                 bool writeEmpty = true);
    /*! \overload */
    bool setAttr(const QString &name, int value, const QString &path = QString(),
                 bool writeEmpty = true);

    /*!
        Writes the tree as UTF-8.

        Elements that hold only elements are indented by one blank a level, text is written as it
        is, attributes come sorted by name so that equal trees give equal files.
        \param device  open for writing
        \return whether the device took the whole text
    */
    bool save(QIODevice &device) const;

private:
    bool setTree(const XmlTree &tree);

    QDomDocument m_document;
    QDomElement m_current;
    QString m_errorString;
};
