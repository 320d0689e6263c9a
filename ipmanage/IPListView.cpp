#include "ipmanage/IPListView.h"

#include "ipmanage/IPListModel.h"

#include <QEvent>
#include <QHeaderView>

CIPListView::CIPListView(QWidget* parent)
    : CTableView(parent)
    , m_model(new CIPListModel)
{
    setModel(m_model);
    setMinimumHeight(326);
    setEditTriggers(NoEditTriggers);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setObjectName(QStringLiteral("IPManage"));
    retranslate();
    setPaintAlternatingRowColorsForEmptyArea(true);
    horizontalHeader()->setSectionsClickable(false);
    setColumnWidth(0, 238);
    setColumnWidth(1, 406);
    // The columns fill the dialog. A vertical scroll bar and the row numbers cover a few pixels,
    // which do not justify a horizontal scroll bar.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

CIPListView::~CIPListView()
{
    delete m_model;
}

void CIPListView::reload()
{
    m_model->reload();
}

void CIPListView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        horizontalHeader()->viewport()->update();
    }
    CTableView::changeEvent(event);
}

void CIPListView::retranslate()
{
    setAccessibleName(tr("IP addresses"));
    m_model->setHeaderData(0, Qt::Horizontal, tr("IP address"), Qt::DisplayRole);
    m_model->setHeaderData(1, Qt::Horizontal, tr("Name"), Qt::DisplayRole);
}
