#pragma once

#include "processortree/model/ProcessorTreeModel.h"

#include <exception>

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
        // Rows whose removal was announced may stand in the tree still.
        if (std::uncaught_exceptions() > m_exceptions) {
            m_model->m_removals = 0;
            m_model->onRestructured();
        }
        if (--m_model->m_changes == 0 && m_model->m_onChanged)
            m_model->m_onChanged();
    }

private:
    CProcessorTreeModel* m_model;
    const int m_exceptions = std::uncaught_exceptions();
};

/// A stretch in which the row of `id` is removed, to come again at another place.
class CProcessorTreeModel::Move final
{
public:
    Move(CProcessorTreeModel* model, const QUuid& id)
        : m_change(model)
        , m_model(model)
        , m_id(id)
    {
        m_model->m_moves.begin(id);
    }

    Move(const Move&) = delete;
    Move& operator=(const Move&) = delete;

    /// Those who hear of the end may throw.
    ~Move() noexcept(false) { m_model->m_moves.end(m_id); }

private:
    const Change m_change;
    CProcessorTreeModel* m_model;
    const QUuid m_id;
};
