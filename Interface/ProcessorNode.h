#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QUuid>
#include <QtGlobal>

#include <array>

/// Kind of a row in the processor tree. The numbers are part of the contract: a processor is 2, a
/// group is 1, and everything below 2 is no processor.
enum EPrcTreeNodeType : qint32 {
    NodeRoot = 0,
    NodeGroup = 1,
    NodeProcessor = 2,
};

/// Item data roles of the processor tree, beside Qt::DisplayRole and Qt::SizeHintRole.
enum ProcessorTreeRole {
    /// QUuid: identity of the row; null on the root.
    UuidRole = Qt::UserRole + 1,
    /// EPrcTreeNodeType of the row.
    NodeTypeRole = Qt::UserRole + 2,
    /// ProcessorGroupNode on groups, ProcessorNode on processors, invalid on the root. Read it with
    /// QVariant::value, which converts whatever form the model keeps the record in.
    NodeDataRole = Qt::UserRole + 3,
    /// bool: the handler's answer to CheckProcessor for the row's record. Never stored; every read
    /// asks the host again.
    HostCheckRole = Qt::UserRole + 4,
};

/// IPv4 address of a processor that has none: 127.0.0.1.
constexpr quint32 kNoProcessorAddress = 0x7F000001;

/// A processor as the host describes it. A value: copied whole, never compared whole. The fields
/// named host… and secondAddress belong to the host; the panel carries them unchanged.
///
/// Field order and defaults are binary contract between host and panel.
struct ProcessorNode
{
    QUuid id;          ///< Identity, the tree row's UuidRole.
    QString name;      ///< Display name, the tree row's text.
    qint32 number = 0; ///< 0-based; shown to the user as number + 1.
    QUuid groupId;     ///< Owning group; null for a processor directly under the root.
    qint32 hostAttribute5 = -1;
    qint32 hostAttribute6 = -1;
    qint32 hostAttribute7 = 4;
    qint64 hostAttribute8 = 0;
    qint32 redundancyMode = 0; ///< 2 marks a backup; any value but 0 is a redundancy marker.
    std::array<quint32, 4> hostAttribute10{};
    qint32 hostAttribute11 = 8;
    float hostAttribute12 = 60.0F;
    bool hostFlag13 = false; ///< Gates "Rename" and "Delete".
    QString hostText14;
    qint32 hostAttribute15 = 100;
    qint32 hostAttribute16 = 0;
    bool hostFlag17 = false;
    qint32 hostAttribute18 = 0;
    qint32 hostAttribute19 = 65535;
    quint32 hostAttribute20 = 0;
    quint16 hostAttribute21 = 0;
    qint32 hostAttribute22 = 0;
    bool hostFlag23 = false;
    QString hostText24;
    quint32 ipAddress = kNoProcessorAddress; ///< Most significant byte first when printed.
    quint32 secondAddress = kNoProcessorAddress;
    bool online = false;      ///< The processor is connected.
    bool reachedByIp = false; ///< Addressed by IP; otherwise by number.
};

/// A group of processors as the host describes it.
///
/// Field order and defaults are binary contract between host and panel.
struct ProcessorGroupNode
{
    QUuid id;     ///< Identity, the groupId of the group's processors.
    QString name; ///< Display name, the tree row's text.
    qint32 hostAttribute3 = -1;
    qint32 hostAttribute4 = 1;
    QList<ProcessorNode> processors; ///< Kept up to date by moves; placement follows groupId alone.
};

Q_DECLARE_METATYPE(EPrcTreeNodeType)
Q_DECLARE_METATYPE(ProcessorNode)
Q_DECLARE_METATYPE(ProcessorGroupNode)
