#pragma once

#include "Interface/ProcessorNode.h"

#include <QExplicitlySharedDataPointer>
#include <QMetaType>
#include <QSharedData>
#include <QVariant>

#include <functional>
#include <mutex>

class QStandardItem;

/// A processor's record, shared by the one tree item that shows it and by whoever rewrites it.
///
/// The host's monitor states arrive on the work thread and are written there.
/// QStandardItem::setData off the GUI thread would emit model signals on that thread, so the item
/// keeps a handle to a cell under NodeDataRole from its beginning on, and the work thread replaces
/// the content of the cell.
class CRecordCell final : public QSharedData
{
public:
    /// What ordering looks at, cheaper to take than the whole record.
    struct Key
    {
        quint32 ipAddress = kNoProcessorAddress;
        qint32 number = 0;
        bool reachedByIp = false;
    };

    explicit CRecordCell(ProcessorNode record);

    /// A copy of the record. Any thread.
    ProcessorNode load() const;

    /// Any thread.
    Key key() const;

    /// Replaces the record of a row that stands at the place that `record` gives it. Any thread;
    /// tells nobody.
    void store(const ProcessorNode& record);

    /// Lets `change` change the record in place, so that no replacement of another thread is lost.
    /// Any thread; `change` calls nobody.
    void modify(const std::function<void(ProcessorNode&)>& change);

    /// The key by which the row stands where it is. A record that replace() brings leaves it, so
    /// that the rows of a parent stay in order until the row moves. Any thread.
    Key placedKey() const;

    /// Makes the key of the record that of the row's place, and returns it. Any thread.
    Key settle();

    /// Counts the replacements. Any thread.
    quint32 version() const;

    /// Returns whether the cell belongs to `item`. A cell without an item is given to it. GUI
    /// thread.
    bool isOf(const QStandardItem* item);

    /// Replaces the record, and not the place, unless the record was replaced since `version`;
    /// returns whether it did.
    bool replace(const ProcessorNode& record, quint32 version);

private:
    void assign(const ProcessorNode& record);

    mutable std::mutex m_mutex;
    ProcessorNode m_record;
    Key m_placedKey;
    quint32 m_version = 0;
    const QStandardItem* m_item = nullptr; // told apart by its place in memory, never read
};

/// What an item holds under NodeDataRole; QVariant::value<ProcessorNode>() reads through it.
class CRecordHandle final
{
public:
    CRecordHandle() = default;
    explicit CRecordHandle(const ProcessorNode& record);

    CRecordCell* cell() const { return m_cell.data(); }

private:
    QExplicitlySharedDataPointer<CRecordCell> m_cell;
};

Q_DECLARE_TYPEINFO(CRecordHandle, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CRecordHandle)

/// The handle in `stored`; null inside when it holds none.
CRecordHandle recordHandle(const QVariant& stored);

/// The record in `stored`, whether it is kept in a cell or plainly; a default one otherwise.
ProcessorNode processorRecord(const QVariant& stored);

/// The ordering key of the record in `stored`, likewise.
CRecordCell::Key recordKey(const QVariant& stored);

/// The key by which the row that holds `stored` stands where it is.
CRecordCell::Key placedKey(const QVariant& stored);

/// The ordering key of a record at hand.
CRecordCell::Key recordKey(const ProcessorNode& record);
