// SPDX-License-Identifier: MIT
#include "ScenesDock.h"

#include "Editor.h"

#include <finaldraft/MVRFinalDraftFile.h>

#include <QListWidget>
#include <QTextBlock>

ScenesDock::ScenesDock(Editor *editor, QWidget *parent)
    : QDockWidget(tr("Scenes"), parent)
    , m_editor(editor)
    , m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("ScenesDock"));
    m_list->setObjectName(QStringLiteral("Scenes"));
    m_list->setAccessibleName(tr("List of scenes"));
    m_list->setUniformItemSizes(true);
    setWidget(m_list);
    const auto jump = [editor](QListWidgetItem *item) {
        editor->jumpTo(item->data(Qt::UserRole).toInt());
        editor->setFocus();
    };
    connect(m_list, &QListWidget::itemActivated, editor, jump);
    connect(m_list, &QListWidget::itemClicked, editor, jump);
}

void ScenesDock::refresh()
{
    const int row = m_list->currentRow();
    m_list->clear();
    for (QTextBlock block = m_editor->document()->begin(); block.isValid(); block = block.next()) {
        if (!MVRScreenplayElements::isScene(block))
            continue;
        const QString number
            = block.blockFormat().stringProperty(MVRFinalDraftFile::SceneNumberProperty);
        auto *item = new QListWidgetItem((number + QLatin1Char(' ') + block.text()).trimmed());
        item->setData(Qt::UserRole, block.position());
        m_list->addItem(item);
    }
    m_list->setCurrentRow(row);
}
