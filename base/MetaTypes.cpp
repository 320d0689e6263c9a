#include "base/MetaTypes.h"

#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"
#include "base/RecordCell.h"

#include <QList>
#include <QMetaType>
#include <QUuid>

namespace {

ProcessorNode loadRecord(const CRecordHandle& handle)
{
    return handle.cell() ? handle.cell()->load() : ProcessorNode();
}

bool registerAll()
{
    qRegisterMetaType<EPrcTreeNodeType>("EPrcTreeNodeType");
    qRegisterMetaType<ProcessorNode>("ProcessorNode");
    qRegisterMetaType<ProcessorGroupNode>("ProcessorGroupNode");
    qRegisterMetaType<GUID>("GUID");
    qRegisterMetaType<SDeviceSetInfo>("SDeviceSetInfo");
    qRegisterMetaType<QList<SDeviceSetInfo>>("QList<SDeviceSetInfo>");
    qRegisterMetaType<QUuid>("QUuid");
    qRegisterMetaType<QList<QUuid>>("QList<QUuid>");
    qRegisterMetaType<CRecordHandle>("CRecordHandle");
    // Registering a converter twice warns, and another copy of this code may live in the process.
    if (!QMetaType::hasRegisteredConverterFunction<CRecordHandle, ProcessorNode>())
        QMetaType::registerConverter<CRecordHandle, ProcessorNode>(loadRecord);
    return true;
}

} // namespace

void RegisterMetaTypes()
{
    [[maybe_unused]] static const bool once = registerAll();
}
