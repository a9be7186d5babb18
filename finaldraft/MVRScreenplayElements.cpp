// SPDX-License-Identifier: MIT
#include <finaldraft/MVRScreenplayElements.h>

#include <core/MVRParagraphView.h>
#include <core/MVRScriptElement.h>
#include <core/document/EditBlock_p.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/file/FdxStandards_p.h>

#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>

using namespace MVRFinalDraft;

namespace {

QHash<QString, ElementSettings> standardSettings()
{
    constexpr double margin = 72.0; // of the settings of files too
    QHash<QString, ElementSettings> all;
    for (ElementSettings &settings : fdxStandardSettings()) {
        fdxCountFromMargin(&settings, margin);

        settings.shortcut = QString::number(all.size());
        all.insert(settings.type, settings);
    }
    return all;
}

} // namespace

MVRScreenplayElements::MVRScreenplayElements(QHash<QString, ElementSettings> settings)
    : m_settings(settings.isEmpty() ? standardSettings() : std::move(settings))
    , m_names(m_settings.keys())
{
    std::sort(m_names.begin(), m_names.end(), [this](const QString &a, const QString &b) {
        const QString first = shortcut(a);
        const QString second = shortcut(b);
        if (first.isEmpty() != second.isEmpty())
            return second.isEmpty();
        return first != second ? first < second : a < b;
    });
}

QString MVRScreenplayElements::elementOf(const QTextBlock &block)
{
    return block.blockFormat().stringProperty(MVRScriptElement::NameProperty);
}

bool MVRScreenplayElements::isScene(const QTextBlock &block)
{
    return elementOf(block) == toString(SceneHeading);
}

QTextBlockFormat MVRScreenplayElements::blockFormat(const QString &name) const
{
    QTextBlockFormat format = m_settings.value(name).parBlockFormat();
    format.setProperty(MVRScriptElement::NameProperty, name);
    return format;
}

QTextCharFormat MVRScreenplayElements::charFormat(const QString &name) const
{
    const ElementSettings settings = m_settings.value(name);
    QTextCharFormat format = settings.textCharFormat();
    if (settings.fontSpec.style.testFlag(AllCaps))
        format.setFontCapitalization(QFont::AllUppercase);
    return format;
}

void MVRScreenplayElements::apply(QTextCursor cursor, const QString &name) const
{
    if (!m_settings.contains(name))
        return;
    const QTextBlock block = cursor.block();
    QTextBlockFormat format = blockFormat(name);
    // What the paragraph remembers of its file stays.
    const QMap<int, QVariant> old = MVRParagraphView::ownFormat(block.blockFormat()).properties();
    for (auto it = old.lowerBound(MVRFinalDraftFile::SourceParagraphProperty); it != old.end();
         ++it)
        format.setProperty(it.key(), it.value());
    const QTextCharFormat text = charFormat(name);
    QTextCharFormat look; // of what stands there: notes and emphasis stay
    look.setFontCapitalization(text.fontCapitalization());
    const EditBlock undoStep(cursor);
    cursor.setBlockFormat(format);
    cursor.setPosition(block.position());
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(look);
    cursor.setBlockCharFormat(text);
}

void MVRScreenplayElements::cycle(const QTextCursor &cursor, int steps) const
{
    const int count = m_names.size();
    const int at = m_names.indexOf(elementOf(cursor.block()));
    if (at >= 0)
        apply(cursor, m_names[(at + steps % count + count) % count]);
}

bool MVRScreenplayElements::startNext(QTextCursor *cursor) const
{
    if (!cursor)
        return false;
    const QTextBlock block = cursor->block();
    const QString name = elementOf(block);
    if (!m_settings.contains(name) || !cursor->atBlockEnd())
        return false;
    const ElementType type = m_settings.value(name).returnKey;
    const QString next = type == CastList ? QStringLiteral("Cast List") : toString(type);
    const QString known = m_settings.contains(next) ? next : name;
    QTextBlockFormat format = blockFormat(known);
    const QVariant dual = block.blockFormat().property(MVRFinalDraftFile::DualDialogueProperty);
    if (dual.isValid() && (type == Dialogue || type == Parenthetical))
        format.setProperty(MVRFinalDraftFile::DualDialogueProperty, dual);
    cursor->insertBlock(format, charFormat(known));
    return true;
}
