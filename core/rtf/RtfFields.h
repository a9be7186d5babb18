#pragma once

#include <QString>

class QByteArray;

/*! Field instructions (RTF 1.9.1, "Fields"). */
namespace RtfFields {

/*!
    \return what a HYPERLINK instruction links to, its bookmark (\l) behind a '#'; empty for
            other fields and for a link to nothing
*/
QString linkTarget(const QString &instruction);

/*!
    \return the sign that a SYMBOL instruction names, in Unicode where its font is one that is known;
            empty for other fields
*/
QString symbolText(const QString &instruction);

/*! The instruction, not yet as RTF, whose linkTarget() is \a target. */
QString linkInstruction(const QString &target);

}
