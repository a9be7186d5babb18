// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

class FdxTree;

/*! An attribute where it stands in the source of a file; one that is not there says nothing. */
class FdxSourceAttribute
{
public:
    FdxSourceAttribute() = default;
    /*! The first attribute at or behind \a place, which is in a start tag. */
    FdxSourceAttribute(const QByteArray *source, int place);

    explicit operator bool() const { return m_source; }
    bool isNamed(const char *name) const;
    QByteArray name() const;
    /*! References resolved, white space as blanks; "" when there is none. */
    QByteArray value() const;
    int toInt() const { return value().toInt(); }
    /*! Where the value stands, without the quotes. */
    int valueStart() const { return m_valueStart; }
    int valueEnd() const { return m_valueEnd; }

    FdxSourceAttribute next() const { return FdxSourceAttribute(m_source, m_valueEnd + 1); }
    bool operator!=(const FdxSourceAttribute &other) const { return m_source != other.m_source; }

private:
    QByteArray resolvedValue() const;

    const QByteArray *m_source = nullptr; // null: there is none
    int m_nameStart = 0;
    int m_nameEnd = 0;
    int m_valueStart = 0;
    int m_valueEnd = 0;
};

/*! Goes through what has a next one, up to none; null names take all. */
template <typename Entry> class FdxRange
{
public:
    explicit FdxRange(const Entry &first, const char *name = nullptr)
        : m_first(first)
        , m_name(name)
    {
    }

    class Iterator
    {
    public:
        Iterator(const Entry &entry, const char *name)
            : m_entry(entry)
            , m_name(name)
        {
            skip();
        }
        const Entry &operator*() const { return m_entry; }
        bool operator!=(const Iterator &other) const { return m_entry != other.m_entry; }
        Iterator &operator++()
        {
            m_entry = m_entry.next();
            skip();
            return *this;
        }

    private:
        void skip()
        {
            while (m_name && m_entry && !m_entry.isNamed(m_name))
                m_entry = m_entry.next();
        }

        Entry m_entry;
        const char *m_name;
    };

    Iterator begin() const { return Iterator(m_first, m_name); }
    Iterator end() const { return Iterator(Entry(), nullptr); }

private:
    Entry m_first;
    const char *m_name;
};

/*! An element of a tree, a handle to be copied. One that is not there has no name, no children. */
class FdxElement
{
public:
    FdxElement() = default;
    FdxElement(const FdxTree *tree, int index)
        : m_tree(tree)
        , m_index(index)
    {
    }

    explicit operator bool() const { return m_tree; }
    bool operator==(const FdxElement &other) const
    {
        return m_tree == other.m_tree && m_index == other.m_index;
    }
    bool operator!=(const FdxElement &other) const { return !(*this == other); }

    /*! By which the tree tells elements: they count in document order. */
    int index() const { return m_index; }
    QByteArray name() const;
    bool isNamed(const char *name) const;

    FdxElement parent() const;
    /*! The next child of its parent. */
    FdxElement next() const;
    FdxElement firstChild() const;
    /*! The first child of that name. */
    FdxElement child(const char *name) const { return *children(name).begin(); }
    FdxRange<FdxElement> children(const char *name = nullptr) const
    {
        return FdxRange<FdxElement>(firstChild(), name);
    }

    FdxSourceAttribute attribute(const char *name) const
    {
        return *FdxRange<FdxSourceAttribute>(firstAttribute(), name).begin();
    }
    FdxSourceAttribute firstAttribute() const;
    FdxRange<FdxSourceAttribute> attributes() const
    {
        return FdxRange<FdxSourceAttribute>(firstAttribute());
    }

private:
    const FdxTree *m_tree = nullptr;
    int m_index = -1;
};

/*! The element's attribute of that name as text; null when it has none. */
inline QString fdxAttribute(const FdxElement &element, const char *name)
{
    const FdxSourceAttribute attribute = element.attribute(name);
    return attribute ? QString::fromUtf8(attribute.value()) : QString();
}
