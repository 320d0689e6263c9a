#pragma once

#include <QList>
#include <QObject>
#include <QUuid>

/// The rows of the processor tree that move: each is removed to come again at another place, unless
/// that is gone. The model's signals tell of a removal and an insertion, this of the end. GUI
/// thread.
class CRowMoves final : public QObject
{
    Q_OBJECT

public:
    bool isMoving(const QUuid& id) const { return m_ids.contains(id); }

    void begin(const QUuid& id) { m_ids.append(id); }
    void end(const QUuid& id)
    {
        m_ids.removeOne(id);
        emit ended(id);
    }

signals:
    void ended(const QUuid& id);

private:
    QList<QUuid> m_ids;
};
