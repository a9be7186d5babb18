// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QColor>
#include <QHash>
#include <QStringList>
#include <QTextOption>
#include <QVariant>
#include <QVector>

#include <limits>

/*! One exact property of a format; an invalid value says that the format does not have it. */
struct RtfExactProperty
{
    int id = 0;
    QVariant value;
};
using RtfExactProperties = QVector<RtfExactProperty>;

struct RtfFont
{
    static constexpr int maxNameLength = 256;

    QString family;
    int codePage = 0; /*!< of its text; 0: the document's */
};

/*!
    What formats refer to by number: fonts, colours, link targets, tab stops, exact properties.

    The reader fills it from the file and the writer while it goes through the document, so that
    the same conversions between RTF's properties and Qt's formats serve both.
*/
class RtfResources
{
public:
    QHash<int, RtfFont> fonts; /*!< by the number behind \f */
    QVector<QColor> colors; /*!< by the number behind \cf; invalid: automatic */
    QStringList links; /*!< by number; 0: none */
    QVector<QList<QTextOption::Tab>> tabs; /*!< by number; 0: none */
    QVector<RtfExactProperties> exact; /*!< by the number behind \mvrx, \mvrp and their kin */
    int headings = 0; /*!< levels of headings that are used, a bit each */
    double baseSize = 12; /*!< in points: what sizes that are relative count from */

    /*! Number 0 is the automatic colour whatever the table says, as nothing else can say it. */
    QColor color(int number) const { return number > 0 ? colors.value(number) : QColor(); }

    /*!
        How many sets of tabs, tables' widths or names a file may have. Qt tells formats
        apart by all other properties first; those that differ in nothing else take it ever longer.
    */
    static constexpr int maxLookAlikes = 2000;

    /*!
        The number of a font, colour, link target …, added when it is new. For a font -1 when its
        name has nothing that the font table could hold.
    */
    int fontNumber(const QString &family);
    int colorNumber(const QColor &color);
    int linkNumber(const QString &target);
    /*! Adds a stop where it belongs; of two at one place the new one counts. */
    static void addTab(QList<QTextOption::Tab> *stops, const QTextOption::Tab &stop);
    /*! \param max  0 is the number of a new set when there are so many */
    int tabsNumber(const QList<QTextOption::Tab> &stops, int max = std::numeric_limits<int>::max());
    int exactNumber(const RtfExactProperties &properties);

    /*! The exact properties as the content of their destination, in the order of numbers. */
    QByteArray exactText() const { return m_exactText; }

private:
    QHash<QString, int> m_fontNumbers;
    QHash<QRgb, int> m_colorNumbers;
    QHash<QString, int> m_linkNumbers;
    QHash<QByteArray, int> m_tabsNumbers;
    QHash<QByteArray, int> m_exactNumbers;
    QByteArray m_exactText;
};
