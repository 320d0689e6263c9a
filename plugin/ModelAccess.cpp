#include "plugin/ModelAccess.h"

#include "processortree/model/ProcessorTreeModel.h"

CModelAccess::CModelAccess(CProcessorTreeModel& model)
    : m_model(&model)
{
}

void CModelAccess::end()
{
    const std::unique_lock guard(m_lock);
    m_model = nullptr;
}

std::optional<CIdentityIndex::Row> CModelAccess::find(const QUuid& id) const
{
    const std::shared_lock guard(m_lock);
    return m_model ? m_model->findRow(id) : std::nullopt;
}

bool CModelAccess::replaceRecord(const QUuid& id, const CRecordCell* cell, quint32 version,
                                 const ProcessorNode& record)
{
    const std::unique_lock guard(m_lock);
    const auto row = m_model ? m_model->findRow(id) : std::nullopt;
    return row && row->record.cell() == cell && row->record.cell()->replace(record, version);
}
