#pragma once

#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/TestRecords.h"
#include "tests/support/TreeDump.h"

#include <QAbstractItemModelTester>
#include <QStandardItem>

/// A model under the tester, with its root.
class Tree final
{
public:
    Tree() { m_model.initRoot(); }

    CProcessorTreeModel* operator->() { return &m_model; }
    CProcessorTreeModel& operator*() { return m_model; }
    QString dump() const { return dumpTree(m_model); }
    QStandardItem* root() { return m_model.item(0); }
    QModelIndex index(quint32 n) { return m_model.getItem(testId(n))->index(); }

    ProcessorNode processor(quint32 n) { return index(n).data(259).value<ProcessorNode>(); }
    ProcessorGroupNode group(quint32 n) { return index(n).data(259).value<ProcessorGroupNode>(); }

private:
    CProcessorTreeModel m_model;
    QAbstractItemModelTester m_tester{&m_model};
};

inline QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}
