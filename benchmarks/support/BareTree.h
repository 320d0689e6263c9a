#pragma once

#include "benchmarks/support/Project.h"

#include <QStandardItemModel>

/// What the tree would be if nobody had to find rows, keep order or write records from elsewhere:
/// equal items in a plain model. The measure of what the product adds.
class BareTree final
{
public:
    BareTree();

    QStandardItemModel& model() { return m_model; }

    /// Takes the former content out, then appends row by row.
    void refill(const Project& project);

private:
    QStandardItemModel m_model;
    QStandardItem* m_root; // owned by the model
};

/// Whether both models hold the same rows in the same order, with equal text, identity, type, size,
/// flags and record.
bool sameTree(const QAbstractItemModel& left, const QAbstractItemModel& right);
