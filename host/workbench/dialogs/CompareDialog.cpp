#include "host/workbench/dialogs/CompareDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr QSize kDialogSize(720, 400);

} // namespace

CompareDialog::CompareDialog(const QList<ProjectDifference>& differences, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Compare with the file"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* count = new QLabel(tr("Differences: %1").arg(differences.size()), this);
    auto* list = new QTreeWidget(this);
    list->setRootIsDecorated(false);
    list->setAlternatingRowColors(true);
    list->setUniformRowHeights(true);
    list->setHeaderLabels({tr("Record"), tr("Field"), tr("Here"), tr("In the file")});
    list->setAccessibleName(tr("Differences"));
    for (const ProjectDifference& difference : differences)
        new QTreeWidgetItem(
            list, {difference.record, difference.field, difference.one, difference.other});
    list->header()->setSectionResizeMode(QHeaderView::Stretch);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setText(tr("Close"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addWidget(count);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
    resize(kDialogSize);
}
