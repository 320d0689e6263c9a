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

QUuid testId(quint32 n)
{
    return n == 0 ? QUuid() : QUuid(n, 0x1, 0x2, 3, 4, 5, 6, 7, 8, 9, 10);
}

ProcessorGroupNode testGroup(quint32 n, const QString& name)
{
    ProcessorGroupNode group;
    group.id = testId(n);
    group.name = name.isEmpty() ? QStringLiteral("G%1").arg(n) : name;
    return group;
}

ProcessorNode testProcessor(quint32 n, quint32 group)
{
    ProcessorNode processor;
    processor.id = testId(n);
    processor.name = QString::number(n);
    processor.number = static_cast<qint32>(n) - 1;
    processor.groupId = testId(group);
    return processor;
}

ProcessorNode testIpProcessor(quint32 n, quint32 address, quint32 group)
{
    ProcessorNode processor = testProcessor(n, group);
    processor.reachedByIp = true;
    processor.ipAddress = address;
    return processor;
}

SDeviceSetInfo deviceSet(quint32 n)
{
    SDeviceSetInfo set{};
    set.id.Data1 = n;
    return set;
}
