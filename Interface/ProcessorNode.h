#pragma once

#include <QDebug>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QUuid>
#include <QtGlobal>

#include <array>

/// The type of a row in the processor tree. The values are part of the contract: values below 2 are
/// not processors.
enum EPrcTreeNodeType : qint32 {
    NodeRoot = 0,
    NodeGroup = 1,
    NodeProcessor = 2,
};

/// Item data roles of the processor tree, in addition to Qt::DisplayRole and Qt::SizeHintRole.
enum ProcessorTreeRole {
    /// QUuid: identity of the row; null on the root.
    UuidRole = Qt::UserRole + 1,
    /// EPrcTreeNodeType of the row.
    NodeTypeRole = Qt::UserRole + 2,
    /// ProcessorGroupNode on groups, ProcessorNode on processors, invalid on the root. Read it with
    /// QVariant::value(), which converts the model's internal form.
    NodeDataRole = Qt::UserRole + 3,
    /// bool: the handler's result of CheckProcessor for the record of the row. Each read asks the
    /// host.
    HostCheckRole = Qt::UserRole + 4,
};

/// The IPv4 address that stands for "no address": 127.0.0.1.
constexpr quint32 kNoProcessorAddress = 0x7F000001;

/// A processor as the host describes it.
///
/// The order and defaults of the fields are part of the binary contract between host and panel.
struct ProcessorNode
{
    QUuid id;          ///< Identity, the tree row's UuidRole.
    QString name;      ///< Display name, the tree row's text.
    qint32 number = 0; ///< 0-based; displayed as number + 1.
    QUuid groupId;     ///< The group of the processor; null directly under the root.
    /// Host data, passed on unchanged.
    /// @{
    qint32 hostAttribute5 = -1;
    qint32 hostAttribute6 = -1;
    qint32 hostAttribute7 = 4;
    qint64 hostAttribute8 = 0;
    /// @}
    qint32 redundancyMode = 0; ///< 2 for a backup; any value except 0 is a redundancy marker.
    /// Host data, passed on unchanged.
    /// @{
    std::array<quint32, 4> hostAttribute10{};
    qint32 hostAttribute11 = 8;
    float hostAttribute12 = 60.0F;
    /// @}
    bool hostFlag13 = false; ///< Gates "Rename" and "Delete".
    /// Host data, passed on unchanged.
    /// @{
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
    /// @}
    quint32 ipAddress = kNoProcessorAddress;     ///< In host byte order.
    quint32 secondAddress = kNoProcessorAddress; ///< Host data, passed on unchanged.
    bool online = false;                         ///< The processor is connected.
    bool reachedByIp = false;                    ///< Addressed by IP, otherwise by number.
};

/// A group of processors as the host describes it.
///
/// The order and defaults of the fields are part of the binary contract between host and panel.
struct ProcessorGroupNode
{
    QUuid id;     ///< Identity, the groupId of the group's processors.
    QString name; ///< Display name, the tree row's text.
    /// Host data, passed on unchanged.
    /// @{
    qint32 hostAttribute3 = -1;
    qint32 hostAttribute4 = 1;
    /// @}
    QList<ProcessorNode> processors; ///< Updated by moves. The position in the tree depends only on
                                     ///< each processor's groupId.
};

/// Writes what identifies a processor: `ProcessorNode({…}, "Left", number 3, group {…}, 10.0.0.7,
/// online)`. The group, the address and the state are left out where there is none.
inline QDebug operator<<(QDebug debug, const ProcessorNode& processor)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "ProcessorNode(" << qUtf8Printable(processor.id.toString()) << ", "
                    << processor.name << ", number " << processor.number;
    if (!processor.groupId.isNull())
        debug << ", group " << qUtf8Printable(processor.groupId.toString());
    if (processor.ipAddress != kNoProcessorAddress) {
        const quint32 address = processor.ipAddress;
        debug << ", " << (address >> 24) << '.' << ((address >> 16) & 0xFF) << '.'
              << ((address >> 8) & 0xFF) << '.' << (address & 0xFF);
    }
    return debug << (processor.online ? ", online)" : ")");
}

/// Writes what identifies a group, and how many processors its record names:
/// `ProcessorGroupNode({…}, "Wall", 12 processors)`.
inline QDebug operator<<(QDebug debug, const ProcessorGroupNode& group)
{
    const QDebugStateSaver saver(debug);
    return debug.nospace() << "ProcessorGroupNode(" << qUtf8Printable(group.id.toString()) << ", "
                           << group.name << ", " << group.processors.size() << " processors)";
}

Q_DECLARE_METATYPE(EPrcTreeNodeType)
Q_DECLARE_METATYPE(ProcessorNode)
Q_DECLARE_METATYPE(ProcessorGroupNode)
