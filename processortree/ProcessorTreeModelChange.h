#pragma once

#include "processortree/ProcessorTreeModel.h"

/// A stretch in which rows come or go, and who hears of it has not heard of all.
class CProcessorTreeModel::Change final
{
public:
    explicit Change(CProcessorTreeModel* model)
        : m_model(model)
    {
        ++m_model->m_changes;
    }

    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

    ~Change()
    {
        if (--m_model->m_changes == 0 && m_model->m_onChanged)
            m_model->m_onChanged();
    }

private:
    CProcessorTreeModel* m_model;
};
