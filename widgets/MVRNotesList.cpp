// SPDX-License-Identifier: MIT
#include <widgets/MVRNotesList.h>

#include <text/MVRNotesFilter.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
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

MVRNotesList::MVRNotesList(MVRNotesFilter *filter, QWidget *parent)
    : QWidget(parent)
    , m_filter(filter)
{
    auto *layout = new QFormLayout(this);
    addChoice(layout, tr("&Kind"), MVRNotesModel::KindColumn);
    addChoice(layout, tr("&Author"), MVRNotesModel::AuthorColumn);
    addChoice(layout, tr("Co&lor"), MVRNotesModel::ColorColumn);
    auto *resolved = new QCheckBox(tr("Resol&ved notes"));
    resolved->setChecked(true);
    connect(resolved, &QCheckBox::toggled, filter, &MVRNotesFilter::setShowsResolved);
    layout->addRow(resolved);
    auto *list = new QTreeView(this);
    list->setAccessibleName(tr("List of notes"));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setModel(filter);
    list->hideColumn(MVRNotesModel::ColorColumn);
    list->hideColumn(MVRNotesModel::DateColumn);
    connect(list, &QTreeView::activated, this, [this](const QModelIndex &index) {
        Q_EMIT chosen(index.data(MVRNotesModel::StartRole).toInt());
    });
    layout->addRow(list);
}

void MVRNotesList::addChoice(QFormLayout *layout, const QString &name, MVRNotesModel::Column column)
{
    auto *choice = new LateBox;
    layout->addRow(name, choice);
    choice->setAccessibleName(QString(name).remove(QLatin1Char('&')));
    choice->addItem(tr("All"));
    MVRNotesFilter *filter = m_filter;
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
