#pragma once

#include "base/RecordCell.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "search/ProcessorFilterModel.h"
#include "search/ProcessorFilterProxyModel.h"
#include "tests/support/TestRecords.h"
#include "tests/support/TreeDump.h"

#include <QStandardItem>
#include <QStringList>

constexpr quint32 kGroup = 101;
constexpr quint32 kOtherGroup = 102;

/// A tree with both proxy models. Processors are added under the root unless a group is given.
class SearchTree
{
public:
    SearchTree()
    {
        m_tree.initRoot();
        m_filter.setSourceModel(&m_tree);
        m_list.setSourceModel(&m_filter);
    }

    CProcessorTreeModel& tree() { return m_tree; }
    CProcessorFilterProxyModel& filter() { return m_filter; }
    CProcessorFilterModel& list() { return m_list; }

    void addGroup(quint32 id, const QString& name) { m_tree.AppendGroup(testGroup(id, name)); }

    void addByNumber(quint32 id, const QString& name, int number, quint32 group = 0)
    {
        ProcessorNode processor = testProcessor(id, group);
        processor.name = name;
        processor.number = number;
        m_tree.AppendProcessor(processor);
    }

    void addByAddress(quint32 id, const QString& name, quint32 address, int number,
                      quint32 group = 0)
    {
        ProcessorNode processor = testIpProcessor(id, address, group);
        processor.name = name;
        processor.number = number;
        m_tree.AppendProcessor(processor);
    }

    void renumber(quint32 id, int number)
    {
        ProcessorNode record = processorRecord(item(id)->data(NodeDataRole));
        record.number = number;
        m_tree.updateProcessor(item(id), record);
    }

    QStandardItem* item(quint32 id) { return m_tree.getItem(testId(id)); }

    /// Returns the row of a processor in the list, or -1.
    int rowOf(quint32 id)
    {
        return m_list.mapFromSource(m_filter.mapFromSource(item(id)->index())).row();
    }

    /// Sets the search text and returns the names in the list.
    QString found(const QString& text)
    {
        m_filter.setFilterText(text);
        return listed();
    }

    QString listed()
    {
        QStringList names;
        for (int row = 0; row < m_list.rowCount(); ++row)
            names.append(m_list.index(row, 0).data().toString());
        return names.join(QLatin1Char(','));
    }

private:
    CProcessorTreeModel m_tree;
    CProcessorFilterProxyModel m_filter;
    CProcessorFilterModel m_list;
};
