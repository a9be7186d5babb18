// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfResources.h>
#include <core/rtf/read/RtfGroups.h>

#include <QString>

#include <vector>

/*! The fields that are open, and what their results show (RTF 1.9.1, "Fields"). */
class RtfFieldReader
{
public:
    /*! \param resources  receive the targets of links */
    explicit RtfFieldReader(RtfResources *resources)
        : m_resources(*resources)
    {
    }

    /*! \a group is a field in a paragraph that has \a textLength characters so far. */
    void begin(RtfGroup *group, int textLength);
    void addInstruction(const RtfGroup &group, const QString &text);
    void finishInstruction(const RtfGroup &group);
    /*!
        \a group is the field's result; a link's target becomes a property of it.
        \return what is shown in its place; empty for a result that counts
    */
    QString beginResult(RtfGroup *group);
    /*!
        \a group is the field, whose end is reached.
        \return what is shown of a field that had no result, or an empty one
    */
    QString finish(RtfGroup *group, int textLength);

private:
    struct Field
    {
        QString instruction;
        int parent = -1;
        int link = 0;
        int kept = 0; // instruction that is part of the document, see FieldProperty
        int start = 0;
        QString shown; // in place of its result
        QString withoutResult; // what is shown then
    };

    RtfResources &m_resources;
    std::vector<Field> m_fields;
};
