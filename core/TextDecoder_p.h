// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct UConverter;

/*! Turns the bytes of one encoding into text, by the tables of ICU. */
class TextDecoder
{
public:
    /*! The mark that a text of a Unicode encoding may begin with. */
    struct Mark
    {
        const char *encoding; /*!< null where there is none */
        int size; /*!< in bytes */
    };

    /*! \param name  of the encoding, as IANA or a common system spells it, in any case */
    explicit TextDecoder(const char *name);

    /*! Whether the encoding is known; all text of an unknown one is empty. */
    bool isValid() const { return m_converter != nullptr; }

    /*!
        Reads \a bytes from their start to their end.

        \param hasErrors  is set when bytes stand for no character; each such sequence is read as
                          U+FFFD. May be null.
    */
    QString decode(const QByteArray &bytes, bool *hasErrors = nullptr);

    /*! The mark that \a bytes begin with. */
    static Mark mark(const QByteArray &bytes);

    /*! The text of \a bytes by their mark, which is left out; as UTF-8 when they have none. */
    static QString decodeUnicode(const QByteArray &bytes, bool *hasErrors = nullptr);

private:
    struct Closer
    {
        void operator()(UConverter *converter) const;
    };

    std::unique_ptr<UConverter, Closer> m_converter;
};
