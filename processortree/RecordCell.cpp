#include "processortree/RecordCell.h"

#include <utility>

CRecordCell::CRecordCell(ProcessorNode record)
    : m_record(std::move(record))
    , m_placedKey(recordKey(m_record))
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
    m_placedKey = recordKey(record);
}

void CRecordCell::modify(const std::function<void(ProcessorNode&)>& change)
{
    const std::lock_guard guard(m_mutex);
    ProcessorNode record = m_record;
    change(record);
    assign(record);
}

CRecordCell::Key CRecordCell::placedKey() const
{
    const std::lock_guard guard(m_mutex);
    return m_placedKey;
}

CRecordCell::Key CRecordCell::settle()
{
    const std::lock_guard guard(m_mutex);
    m_placedKey = recordKey(m_record);
    return m_placedKey;
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

bool CRecordCell::isOf(const QStandardItem* item)
{
    if (!m_item)
        m_item = item;
    return m_item == item;
}

void CRecordCell::assign(const ProcessorNode& record)
{
    m_record = record;
    ++m_version;
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

namespace {

/// What `ofCell` says of the cell in `stored`, or the key of the record that `stored` holds
/// plainly.
CRecordCell::Key keyIn(const QVariant& stored, CRecordCell::Key (CRecordCell::*ofCell)() const)
{
    if (stored.userType() != qMetaTypeId<CRecordHandle>())
        return recordKey(stored.value<ProcessorNode>());
    const auto* handle = static_cast<const CRecordHandle*>(stored.constData());
    return handle->cell() ? (handle->cell()->*ofCell)() : CRecordCell::Key();
}

} // namespace

CRecordCell::Key recordKey(const QVariant& stored)
{
    return keyIn(stored, &CRecordCell::key);
}

CRecordCell::Key placedKey(const QVariant& stored)
{
    return keyIn(stored, &CRecordCell::placedKey);
}

CRecordCell::Key recordKey(const ProcessorNode& record)
{
    return {record.ipAddress, record.number, record.reachedByIp};
}
