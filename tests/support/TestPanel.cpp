#include "tests/support/TestPanel.h"

#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/TreeDump.h"

// The library does this when it is loaded; here its code is part of the test.
static CTargetSelectArea* panelWithResources()
{
    Q_INIT_RESOURCE(TargetSelectAreaImages);
    Q_INIT_RESOURCE(TargetSelectAreaTranslations);
    return CTargetSelectArea::Instance();
}

TestPanel::TestPanel()
    : m_area(panelWithResources())
{
    m_widget = m_area;
    m_area->m_controlHandler = m_host;
    m_area->Initialize();
    m_host->clearCalls();
}

TestPanel::~TestPanel()
{
    delete m_widget;
}

CTargetSelectData& TestPanel::data()
{
    return *CTargetSelectData::Instance();
}

CProcessorTreeModel& TestPanel::model()
{
    return *data().GetModel();
}

QString TestPanel::dump()
{
    return dumpTree(model());
}

QModelIndex TestPanel::index(quint32 n)
{
    const QStandardItem* item = model().getItem(testId(n));
    return item ? item->index() : QModelIndex();
}
