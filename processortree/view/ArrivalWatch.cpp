#include "processortree/view/ArrivalWatch.h"

#include "processortree/model/ProcessorTreeModel.h"

#include <QStandardItem>

namespace {

QList<QUuid> processorsIn(const CProcessorTreeModel* model)
{
    return model ? model->getChildProcessor(model->index(0, 0)) : QList<QUuid>();
}

qint32 numberOf(const CProcessorTreeModel& model, const QUuid& id)
{
    const QStandardItem* item = model.getItem(id);
    return item ? item->data(NodeDataRole).value<ProcessorNode>().number : -1;
}

} // namespace

CArrivalWatch::CArrivalWatch(QObject* parent)
    : QObject(parent)
{
}

void CArrivalWatch::setModel(CProcessorTreeModel* model)
{
    stop();
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (!model)
        return;
    connect(model, &QAbstractItemModel::rowsInserted, this, &CArrivalWatch::noteArrivals);
    connect(model, &QAbstractItemModel::modelReset, this, &CArrivalWatch::noteArrivals);
}

void CArrivalWatch::expectProcessors(int count)
{
    const QList<QUuid> present = processorsIn(m_model);
    m_known = QSet<QUuid>(present.begin(), present.end());
    m_expected = count;
}

void CArrivalWatch::expectGroup(const QUuid& id)
{
    m_group = id;
    noteArrivals();
}

void CArrivalWatch::stop()
{
    m_expected = 0;
    m_known.clear();
    m_group = QUuid();
}

void CArrivalWatch::noteArrivals()
{
    if (!m_model || (m_expected <= 0 && m_group.isNull()))
        return;
    if (!m_group.isNull() && m_model->getItem(m_group)) {
        const QUuid group = m_group;
        m_group = QUuid();
        const QPointer<CArrivalWatch> alive(this);
        emit groupArrived(group);
        if (!alive)
            return;
    }
    if (!m_model || m_expected <= 0)
        return;
    QUuid newest;
    qint32 highest = -1;
    const QList<QUuid> present = processorsIn(m_model);
    for (const QUuid& id : present) {
        if (m_known.contains(id))
            continue;
        m_known.insert(id);
        --m_expected;
        const qint32 number = numberOf(*m_model, id);
        if (number >= highest) {
            highest = number;
            newest = id;
        }
    }
    if (!newest.isNull())
        emit processorArrived(newest);
}
