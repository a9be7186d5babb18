// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfFieldReader.h>

#include <core/rtf/read/RtfFields.h>

#include <utility>

void RtfFieldReader::begin(RtfGroup *group)
{
    m_fields.push_back({{}, group->field, 0, {}, {}});
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
    field.shown = RtfFields::shownText(field.instruction);
    field.withoutResult = RtfFields::textWithoutResult(field.instruction);
    field.instruction.clear();
}

QString RtfFieldReader::beginResult(RtfGroup *group)
{
    if (group->field < 0)
        return {};
    Field &field = m_fields[group->field];
    field.withoutResult.clear();
    if (group->isIn(RtfDestination::FieldInstruction))
        group->field = field.parent; // the result is part of the instruction around it
    else if (field.link > 0)
        group->chars.link = field.link;
    group->charsChanged();
    return group->isBody() ? field.shown : QString();
}

QString RtfFieldReader::finish(const RtfGroup &group)
{
    return group.field < 0 ? QString() : std::exchange(m_fields[group.field].withoutResult, {});
}
