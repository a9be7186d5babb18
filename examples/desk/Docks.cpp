// SPDX-License-Identifier: MIT
#include "Docks.h"

#include "Editor.h"

#include <finaldraft/MVRFinalDraftFile.h>
#include <text/MVRNotesFilter.h>

#include <QCheckBox>
#include <QComboBox>
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
{
    setObjectName(QStringLiteral("NotesDock"));
    auto *page = new QWidget(this);
    auto *layout = new QFormLayout(page);
    addChoice(layout, tr("&Kind"), MVRNotesModel::KindColumn);
    addChoice(layout, tr("&Author"), MVRNotesModel::AuthorColumn);
    addChoice(layout, tr("Co&lor"), MVRNotesModel::ColorColumn);
    auto *resolved = new QCheckBox(tr("Resol&ved notes"));
    resolved->setChecked(true);
    connect(resolved, &QCheckBox::toggled, editor->filter(), &MVRNotesFilter::setShowsResolved);
    layout->addRow(resolved);
    auto *list = new QTreeView(this);
    list->setAccessibleName(tr("List of notes"));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setModel(editor->filter());
    list->hideColumn(MVRNotesModel::ColorColumn);
    list->hideColumn(MVRNotesModel::DateColumn);
    connect(list, &QTreeView::activated, editor, [editor](const QModelIndex &index) {
        editor->jumpTo(index.data(MVRNotesModel::StartRole).toInt());
        editor->setFocus();
    });
    layout->addRow(list);
    setWidget(page);
}

void NotesDock::addChoice(QFormLayout *layout, const QString &name, MVRNotesModel::Column column)
{
    auto *choice = new LateBox;
    layout->addRow(name, choice);
    choice->setAccessibleName(QString(name).remove(QLatin1Char('&')));
    choice->addItem(tr("All"));
    MVRNotesFilter *filter = m_editor->filter();
    choice->fill = [choice, column, filter] {
        const QString wanted = choice->currentData().toString();
        choice->clear();
        choice->addItem(tr("All"), QString());
        for (const QString &value : filter->values(column)) {
            choice->addItem(value, value);
            if (column == MVRNotesModel::ColorColumn)
                choice->setItemData(choice->count() - 1, QColor(value), Qt::DecorationRole);
        }
        choice->setCurrentIndex(qMax(0, choice->findData(wanted)));
    };
    connect(choice, QOverload<int>::of(&QComboBox::activated), filter, [choice, column, filter] {
        filter->setWanted(column, choice->currentData().toString());
    });
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
