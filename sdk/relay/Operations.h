#pragma once

#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"
#include "Interface/TargetSelectInterfaceHandler.h"

#include <QList>
#include <QMenu>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <iterator>

Q_DECLARE_METATYPE(SGroupSelection)
Q_DECLARE_METATYPE(SPrjProcessor)

/// The operations of ITargetSelectInterfaceHandler as a table, for code that treats calls as
/// values: each with its name and the types of its arguments and its answer.
namespace Operations {

/// What a call is for.
enum class Kind {
    Question, ///< Reads. How often it comes depends on what is painted.
    Request,  ///< Changes something, or tells the host what the user did. Comes once.
};

/// A named value of a call.
struct Value
{
    const char* name = nullptr; ///< Null ends a list.
    int (*typeId)() = nullptr;  ///< qMetaTypeId of the type.
};

constexpr int kMostArguments = 4; ///< No operation has more arguments.
constexpr int kMostOuts = 2;      ///< No operation has more out parameters.

/// One operation. `arguments` are the parameters that go to the host, `outs` those that the host
/// sets.
struct Operation
{
    const char* name;
    Kind kind;
    int (*answerType)(); ///< qMetaTypeId of the result; that of void if there is none.
    Value arguments[kMostArguments];
    Value outs[kMostOuts];
};

/// Returns the identifier of `Type`. Has an address, unlike a template of QMetaType.
template <typename Type>
int idOf()
{
    return qMetaTypeId<Type>();
}

/// As above, for operations without a result.
template <>
inline int idOf<void>()
{
    return QMetaType::Void;
}

/// All operations, in the order of their declaration.
inline constexpr Operation kOperations[] = {
    {"SetObserver", Kind::Request, &idOf<void>, {}, {}},
    {"AppendContextMenu",
     Kind::Question,
     &idOf<void>,
     {{"type", &idOf<EPrcTreeNodeType>},
      {"id", &idOf<QUuid>},
      {"readOnly", &idOf<bool>},
      {"menu", &idOf<QMenu*>}},
     {}},
    {"DetectAllDevices", Kind::Request, &idOf<quint32>, {}, {}},
    {"DetectProcessorsOnly", Kind::Request, &idOf<void>, {}, {}},
    {"GetDeviceSetText", Kind::Question, &idOf<QString>, {{"set", &idOf<SDeviceSetInfo>}}, {}},
    {"ConfirmDeviceSetChange",
     Kind::Request,
     &idOf<bool>,
     {{"set", &idOf<SDeviceSetInfo>}, {"index", &idOf<int>}},
     {}},
    {"CheckIPAddress",
     Kind::Question,
     &idOf<bool>,
     {{"address", &idOf<quint32>}, {"processorMode", &idOf<bool>}},
     {{"code", &idOf<int>}}},
    {"GetIPCount", Kind::Question, &idOf<int>, {{"kind", &idOf<int>}}, {}},
    {"AddIPAddress",
     Kind::Request,
     &idOf<void>,
     {{"ip", &idOf<QString>}, {"name", &idOf<QString>}},
     {}},
    {"SaveIPList", Kind::Request, &idOf<void>, {}, {}},
    {"RefreshIPList", Kind::Request, &idOf<void>, {}, {}},
    {"ModifyIPAddress",
     Kind::Request,
     &idOf<void>,
     {{"row", &idOf<int>}, {"ip", &idOf<QString>}, {"name", &idOf<QString>}},
     {}},
    {"IpListChanged",
     Kind::Request,
     &idOf<bool>,
     {{"before", &idOf<QStringList>}, {"after", &idOf<QStringList>}},
     {}},
    {"GetDeviceSetTexts", Kind::Question, &idOf<int>, {}, {{"texts", &idOf<QStringList>}}},
    {"ShowProcessorMoreButton", Kind::Question, &idOf<bool>, {}, {}},
    {"ShowNodeMoreButton", Kind::Question, &idOf<bool>, {}, {}},
    {"GetAllProcessorNodes", Kind::Question, &idOf<QList<ProcessorNode>>, {}, {}},
    {"GetAllGroupNodes", Kind::Question, &idOf<QList<ProcessorGroupNode>>, {}, {}},
    {"GetGroupNode", Kind::Question, &idOf<ProcessorGroupNode>, {{"id", &idOf<QUuid>}}, {}},
    {"AddProcessors",
     Kind::Request,
     &idOf<void>,
     {{"group", &idOf<QUuid>}, {"count", &idOf<int>}},
     {}},
    {"AddProcessorsWithIps",
     Kind::Request,
     &idOf<void>,
     {{"group", &idOf<QUuid>}, {"addresses", &idOf<QList<quint32>>}},
     {}},
    {"DeleteProcessors", Kind::Request, &idOf<void>, {{"processors", &idOf<QList<QUuid>>}}, {}},
    {"SetProcessorGroup",
     Kind::Request,
     &idOf<void>,
     {{"group", &idOf<ProcessorGroupNode>},
      {"groupId", &idOf<QUuid>},
      {"processors", &idOf<QList<QUuid>>}},
     {}},
    {"GetProcessorNode", Kind::Question, &idOf<ProcessorNode>, {{"id", &idOf<QUuid>}}, {}},
    {"CanRenameProcessor", Kind::Question, &idOf<bool>, {{"id", &idOf<QUuid>}}, {}},
    {"CanAddProcessors", Kind::Question, &idOf<bool>, {{"first", &idOf<ProcessorNode>}}, {}},
    {"IsAddProcessorsEnabled", Kind::Question, &idOf<bool>, {{"first", &idOf<ProcessorNode>}}, {}},
    {"RenameProcessor",
     Kind::Request,
     &idOf<bool>,
     {{"id", &idOf<QUuid>}, {"name", &idOf<QString>}},
     {}},
    {"SetNewProcessorOutputs", Kind::Request, &idOf<void>, {{"outputs", &idOf<int>}}, {}},
    {"CreateGroup", Kind::Request, &idOf<QUuid>, {{"group", &idOf<ProcessorGroupNode>}}, {}},
    {"Ungroup", Kind::Request, &idOf<void>, {{"id", &idOf<QUuid>}}, {}},
    {"RenameGroup",
     Kind::Request,
     &idOf<void>,
     {{"id", &idOf<QUuid>}, {"name", &idOf<QString>}},
     {}},
    {"ReportSelection",
     Kind::Request,
     &idOf<void>,
     {{"focus", &idOf<QUuid>},
      {"processors", &idOf<QList<QUuid>>},
      {"groups", &idOf<QList<SGroupSelection>>},
      {"previous", &idOf<QUuid>}},
     {}},
    {"IsRestrictedMode", Kind::Question, &idOf<bool>, {}, {}},
    {"IsDeleteBlocked", Kind::Question, &idOf<bool>, {{"id", &idOf<QUuid>}}, {}},
    {"CheckProcessor", Kind::Question, &idOf<bool>, {{"processor", &idOf<ProcessorNode>}}, {}},
    {"UsesIpAddressing", Kind::Question, &idOf<bool>, {}, {}},
    {"IsLanUsbMode", Kind::Question, &idOf<bool>, {}, {}},
    {"GetLanUsbProcessorIps", Kind::Question, &idOf<QList<quint32>>, {}, {}},
    {"GetNameMaxBytes", Kind::Question, &idOf<int>, {}, {}},
    {"IsNameUtf8", Kind::Question, &idOf<bool>, {}, {}},
    {"GetCurrentProcessorId", Kind::Question, &idOf<QUuid>, {}, {}},
    {"ReadOnlineIPAddresses", Kind::Request, &idOf<quint32>, {}, {}},
    {"GetIPNameLists",
     Kind::Question,
     &idOf<void>,
     {},
     {{"ips", &idOf<QStringList>}, {"names", &idOf<QStringList>}}},
    {"GetIPList", Kind::Question, &idOf<void>, {}, {{"entries", &idOf<QStringList>}}},
    {"ClearIPList", Kind::Request, &idOf<void>, {}, {}},
    {"DeleteIPAddress", Kind::Request, &idOf<void>, {{"networkAddress", &idOf<quint32>}}, {}},
    {"ImportIPFile", Kind::Request, &idOf<quint32>, {{"path", &idOf<QString>}}, {}},
    {"GetIPEntry", Kind::Question, &idOf<QString>, {{"row", &idOf<int>}}, {}},
    {"GetFixedOutputCount", Kind::Question, &idOf<int>, {}, {}},
    {"GetSelectionMode", Kind::Question, &idOf<int>, {}, {}},
    {"GetSelectedProcessors", Kind::Question, &idOf<QList<QUuid>>, {}, {}},
    {"IsIpManagementAvailable", Kind::Question, &idOf<bool>, {}, {}},
    {"AddProcessorsFromIpList",
     Kind::Request,
     &idOf<void>,
     {{"group", &idOf<QUuid>}, {"entries", &idOf<QStringList>}},
     {}},
    {"PreDeleteProcessors", Kind::Request, &idOf<void>, {{"processors", &idOf<QList<QUuid>>}}, {}},
    {"AcceptProcessorForSnapshot",
     Kind::Question,
     &idOf<bool>,
     {{"processor", &idOf<ProcessorNode>}},
     {}},
    {"ShowTipMessage", Kind::Request, &idOf<void>, {{"text", &idOf<QString>}}, {}},
    {"IsFrontPanelHighlightAvailable", Kind::Question, &idOf<bool>, {}, {}},
    {"IsFrontPanelHighlighted", Kind::Question, &idOf<bool>, {{"id", &idOf<QUuid>}}, {}},
    {"SetFrontPanelHighlight", Kind::Request, &idOf<void>, {{"on", &idOf<bool>}}, {}},
};

/// Returns the operation with this name, or null if there is none.
inline const Operation* find(const char* name)
{
    const auto* const found =
        std::find_if(std::begin(kOperations), std::end(kOperations),
                     [&](const Operation& known) { return qstrcmp(known.name, name) == 0; });
    return found == std::end(kOperations) ? nullptr : found;
}

/// Returns how many of the values of a list are used.
template <std::size_t Size>
constexpr int count(const Value (&values)[Size])
{
    int used = 0;
    while (used < static_cast<int>(Size) && values[used].name)
        ++used;
    return used;
}

} // namespace Operations
