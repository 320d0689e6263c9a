#include "host/workbench/window/TableLook.h"

#include <QHeaderView>
#include <QTableView>

void applyTableLook(QTableView& view, int rowHeight)
{
    view.setShowGrid(false);
    view.setAlternatingRowColors(true);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setTabKeyNavigation(false);
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.verticalHeader()->setDefaultSectionSize(rowHeight);
    view.horizontalHeader()->setStretchLastSection(true);
    view.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    view.horizontalHeader()->setHighlightSections(false);
}
