#include "processortree/RecordCell.h"

#include <atomic>
#include <utility>

namespace {

std::atomic<quint32> placeChangeCount{0};

} // namespace

CRecordCell::CRecordCell(ProcessorNode record)
    : m_record(std::move(record))
    , m_placedAddress(m_record.ipAddress)
{
}

ProcessorNode CRecordCell::load() const
{
    const std::lock_guard guard(m_mutex);
    return m_record;
}

CRecordCell::Key CRecordCell::key() const
{
    const std::lock_guard guard(m_mutex);
    return recordKey(m_record);
}

void CRecordCell::store(const ProcessorNode& record)
{
    const std::lock_guard guard(m_mutex);
    assign(record);
    m_placedAddress = record.ipAddress;
}

void CRecordCell::modify(const std::function<void(ProcessorNode&)>& change)
{
    const std::lock_guard guard(m_mutex);
    ProcessorNode record = m_record;
    change(record);
    assign(record);
}

quint32 CRecordCell::placedAddress() const
{
    const std::lock_guard guard(m_mutex);
    return m_placedAddress;
}

quint32 CRecordCell::version() const
{
    const std::lock_guard guard(m_mutex);
    return m_version;
}

bool CRecordCell::replace(const ProcessorNode& record, quint32 version)
{
    const std::lock_guard guard(m_mutex);
    if (m_version != version)
        return false;
    assign(record);
    return true;
}

quint32 CRecordCell::placeChanges()
{
    return placeChangeCount;
}

bool CRecordCell::isOf(const QStandardItem* item)
{
    if (!m_item)
        m_item = item;
    return m_item == item;
}

void CRecordCell::assign(const ProcessorNode& record)
{
    const bool mayMove =
        m_record.ipAddress != record.ipAddress || m_record.reachedByIp != record.reachedByIp;
    m_record = record;
    ++m_version;
    if (mayMove)
        ++placeChangeCount;
}

CRecordHandle::CRecordHandle(const ProcessorNode& record)
    : m_cell(new CRecordCell(record))
{
}

CRecordHandle recordHandle(const QVariant& stored)
{
    return stored.userType() == qMetaTypeId<CRecordHandle>() ? stored.value<CRecordHandle>()
                                                             : CRecordHandle();
}

ProcessorNode processorRecord(const QVariant& stored)
{
    return stored.value<ProcessorNode>();
}

CRecordCell::Key recordKey(const QVariant& stored)
{
    if (stored.userType() == qMetaTypeId<CRecordHandle>()) {
        const auto* handle = static_cast<const CRecordHandle*>(stored.constData());
        return handle->cell() ? handle->cell()->key() : CRecordCell::Key();
    }
    return recordKey(stored.value<ProcessorNode>());
}

CRecordCell::Key recordKey(const ProcessorNode& record)
{
    return {record.ipAddress, record.number, record.reachedByIp};
}
