#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QUuid>

class CProcessorTreeModel;

/// Waits for the rows that the host was asked for. It may add them before it returns, or a while
/// later; and one by one, or all at once with a reset of the model. GUI thread.
class CArrivalWatch final : public QObject
{
    Q_OBJECT

public:
    explicit CArrivalWatch(QObject* parent = nullptr);

    /// Looks at `model` from now on, and expects nothing.
    void setModel(CProcessorTreeModel* model);

    /// Expects up to `count` processors that are not there yet. Call it before the host is asked.
    void expectProcessors(int count);

    /// Expects the group of this identity.
    void expectGroup(const QUuid& id);

    /// Expects nothing any more: the user has turned to something else.
    void stop();

signals:
    /// Processors arrived; this one is the newest.
    void processorArrived(const QUuid& newest);

    void groupArrived(const QUuid& id);

private:
    void noteArrivals();

    QPointer<CProcessorTreeModel> m_model;
    QSet<QUuid> m_known; // processors that were there, or have been told of
    int m_expected = 0;
    QUuid m_group;
};
