#pragma once

#include <QList>
#include <QStandardItemModel>
#include <QUuid>

/// A model whose slot does what the product's does with an empty list.
class EqualSlot final : public QStandardItemModel
{
    Q_OBJECT

public slots:
    void appendProcessors(const QList<QUuid>& processors)
    {
        Q_UNUSED(processors)
        beginResetModel();
        endResetModel();
    }
};
