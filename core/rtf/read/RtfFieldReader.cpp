// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfFieldReader.h>

#include <core/rtf/read/RtfFields.h>

#include <utility>

void RtfFieldReader::begin(RtfGroup *group, int textLength)
{
    m_fields.push_back({{}, group->field, 0, 0, textLength, {}, {}});
    group->field = static_cast<int>(m_fields.size()) - 1;
}

void RtfFieldReader::addInstruction(const RtfGroup &group, const QString &text)
{
    constexpr int maxInstructionLength = 64 * 1024;
    if (group.field < 0)
        return;
    QString &instruction = m_fields[group.field].instruction;
    if (instruction.size() < maxInstructionLength)
        instruction += text;
}

void RtfFieldReader::finishInstruction(const RtfGroup &group)
{
    if (group.field < 0)
        return;
    Field &field = m_fields[group.field];
    const QString target = RtfFields::linkTarget(field.instruction);
    if (!target.isEmpty())
        field.link = m_resources.linkNumber(target);
    if (RtfFields::isPageNumber(field.instruction))
        field.kept = m_resources.linkNumber(field.instruction.simplified());
    field.shown = RtfFields::shownText(field.instruction);
    field.withoutResult = RtfFields::textWithoutResult(field.instruction);
    field.instruction.clear();
}

QString RtfFieldReader::beginResult(RtfGroup *group)
{
    if (group->field < 0)
        return {};
    Field &field = m_fields[group->field];
    if (group->isIn(RtfDestination::FieldInstruction))
        group->field = field.parent; // the result is part of the instruction around it
    else if (field.link > 0)
        group->chars.link = field.link;
    else if (field.kept > 0)
        group->chars.field = field.kept;
    group->charsChanged();
    return group->isBody() ? field.shown : QString();
}

QString RtfFieldReader::finish(RtfGroup *group, int textLength)
{
    if (group->field < 0)
        return {};
    Field &field = m_fields[group->field];
    const bool isEmpty = textLength <= field.start;
    if (field.kept > 0 && isEmpty) { // programs leave it to the reader to count
        group->chars.field = field.kept;
        group->charsChanged();
        return QStringLiteral("1");
    }
    return textLength == field.start ? std::exchange(field.withoutResult, {}) : QString();
}
