#pragma once

#include "Interface/ProcessorNode.h"

#include <QStandardItemModel>

/// Creates a row of a processor tree with the roles that the host's widgets read.
QStandardItem* groupRow(const QString& name);
QStandardItem* rootRow(const QString& name);
QStandardItem* processorRow(const ProcessorNode& record);

ProcessorNode namedProcessor(const QString& name);

/// "All(5)[A[1,2],B[3],4,5]"
struct SampleTree
{
    SampleTree();

    QStandardItemModel model;
    QStandardItem* root = rootRow(QStringLiteral("All(5)"));
    QStandardItem* groupA = groupRow(QStringLiteral("A"));
    QStandardItem* groupB = groupRow(QStringLiteral("B"));
    QList<QStandardItem*> processors;

    QModelIndex all() const { return root->index(); }
    QModelIndex a() const { return groupA->index(); }
    QModelIndex b() const { return groupB->index(); }
    /// `number` starts at 1.
    QModelIndex processor(int number) const { return processors.at(number - 1)->index(); }
};

/// Returns the sorted names of `rows` as one text.
QString names(const QModelIndexList& rows);
