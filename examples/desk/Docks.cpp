// SPDX-License-Identifier: MIT
#include "Docks.h"

#include "Editor.h"
#include "NoteFilter.h"

#include <finaldraft/MVRFinalDraftFile.h>

#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHeaderView>
#include <QListWidget>
#include <QTextBlock>
#include <QTreeView>

#include <functional>

namespace {

/*! A box whose entries are gathered when somebody looks at them. */
class LateBox : public QComboBox
{
public:
    std::function<void()> fill;

    void showPopup() override
    {
        fill();
        QComboBox::showPopup();
    }
};

} // namespace

NotesDock::NotesDock(Editor *editor, QWidget *parent)
    : QDockWidget(tr("Notes"), parent)
    , m_editor(editor)
    , m_list(new QTreeView(this))
{
    setObjectName(QStringLiteral("NotesDock"));
    auto *page = new QWidget(this);
    auto *layout = new QFormLayout(page);
    layout->addRow(tr("&Kind"), addChoice(MVRNotesModel::KindColumn, tr("Kind of notes")));
    layout->addRow(tr("&Author"), addChoice(MVRNotesModel::AuthorColumn, tr("Author of notes")));
    layout->addRow(tr("Co&lor"), addChoice(MVRNotesModel::ColorColumn, tr("Color of notes")));
    m_list->setAccessibleName(tr("List of notes"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setModel(editor->filter());
    m_list->header()->setStretchLastSection(true);
    for (const int column : {int(MVRNotesModel::ColorColumn), int(MVRNotesModel::DateColumn)})
        m_list->hideColumn(column);
    connect(m_list, &QTreeView::activated, editor, [editor](const QModelIndex &index) {
        editor->jumpTo(index.data(MVRNotesModel::StartRole).toInt());
        editor->setFocus();
    });
    layout->addRow(m_list);
    setWidget(page);
}

QComboBox *NotesDock::addChoice(int column, const QString &name)
{
    auto *choice = new LateBox;
    choice->setAccessibleName(name);
    choice->addItem(tr("All"));
    choice->fill = [this, choice, column] { fill(choice, column); };
    connect(choice, QOverload<int>::of(&QComboBox::activated), this, [this, choice, column] {
        m_editor->filter()->setWanted(MVRNotesModel::Column(column),
                                      choice->currentData().toString());
    });
    return choice;
}

void NotesDock::fill(QComboBox *choice, int column)
{
    const QVariant wanted = choice->currentData();
    choice->clear();
    const QStringList values = m_editor->filter()->values(MVRNotesModel::Column(column));
    for (const QString &value : values) {
        choice->addItem(value.isEmpty() ? tr("All") : value, value);
        if (column == MVRNotesModel::ColorColumn && !value.isEmpty())
            choice->setItemData(choice->count() - 1, QColor(value), Qt::DecorationRole);
    }
    choice->setCurrentIndex(qMax(0, choice->findData(wanted)));
}

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
    const int numberProperty = MVRFinalDraftFile::SceneNumberProperty;
    for (QTextBlock block = m_editor->document()->begin(); block.isValid(); block = block.next()) {
        if (!Elements::isScene(block))
            continue;
        const QString number = block.blockFormat().stringProperty(numberProperty);
        auto *item = new QListWidgetItem((number + QLatin1Char(' ') + block.text()).trimmed());
        item->setData(Qt::UserRole, block.position());
        m_list->addItem(item);
    }
    m_list->setCurrentRow(row);
}
