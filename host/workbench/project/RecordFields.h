#pragma once

#include "host/workbench/project/Project.h"
#include "sdk/relay/NodeFields.h"

#include <type_traits>

/// The fields of the records, by name and in their order, for code that processes all of them: the
/// project file, the list of fields in the window, the tests.
///
/// `visit(name, field)` is called for each field; addresses go to `visit.visitAddress(name,
/// field)`.

template <typename Node, typename Visitor>
void visitProcessorFields(Node& node, Visitor& visit)
{
    visitProcessor(node, [&](const char* name, auto& field) {
        if constexpr (std::is_same_v<decltype(field), decltype((node.ipAddress))>) {
            if (&field == &node.ipAddress || &field == &node.secondAddress) {
                visit.visitAddress(name, field);
                return;
            }
        }
        visit(name, field);
    });
}

/// Visits all fields except the list of processors, which follows from the processors' groupId.
template <typename Node, typename Visitor>
void visitGroupFields(Node& node, Visitor& visit)
{
    visitGroup(node, [&](const char* name, auto& field) {
        if constexpr (!std::is_same_v<decltype(field), decltype((node.processors))>)
            visit(name, field);
    });
}

template <typename Set, typename Visitor>
void visitDeviceSetFields(Set& set, Visitor& visit)
{
    visit("id", set.info.id);
    visit("text", set.text);
    visit("hostAttribute2", set.info.hostAttribute2);
    visit("hostAttribute3", set.info.hostAttribute3);
}

template <typename Answers, typename Visitor>
void visitAnswerFields(Answers& answers, Visitor& visit)
{
    visit("detectStrategy", answers.detectStrategy);
    visit("detectResult", answers.detectResult);
    visit("detectPauseMs", answers.detectPauseMs);
    visit("selectionMode", answers.selectionMode);
    visit("restrictedMode", answers.restrictedMode);
    visit("usesIpAddressing", answers.usesIpAddressing);
    visit("ipManagementAvailable", answers.ipManagementAvailable);
    visit("lanUsbMode", answers.lanUsbMode);
    visit.visitAddress("lanUsbAddresses", answers.lanUsbAddresses);
    visit("nameMaxBytes", answers.nameMaxBytes);
    visit("nameUtf8", answers.nameUtf8);
    visit("fixedOutputCount", answers.fixedOutputCount);
    visit("newProcessorOutputs", answers.newProcessorOutputs);
    visit("showProcessorMoreButton", answers.showProcessorMoreButton);
    visit("showNodeMoreButton", answers.showNodeMoreButton);
    visit("canAddProcessors", answers.canAddProcessors);
    visit("addProcessorsEnabled", answers.addProcessorsEnabled);
    visit("canRenameProcessors", answers.canRenameProcessors);
    visit("acceptNewNames", answers.acceptNewNames);
    visit("uniqueNames", answers.uniqueNames);
    visit("blockDelete", answers.blockDelete);
    visit("deleteSpares", answers.deleteSpares);
    visit("hostReply", answers.hostReply);
    visit("eventsOneByOne", answers.eventsOneByOne);
    visit("contextMenuEntries", answers.contextMenuEntries);
    visit("confirmDeviceSetChange", answers.confirmDeviceSetChange);
    visit("snapshotAcceptsOffline", answers.snapshotAcceptsOffline);
    visit("frontPanelHighlightAvailable", answers.frontPanelHighlightAvailable);
    visit("ipCheckCode", answers.ipCheckCode);
    visit("ipCheckCount", answers.ipCheckCount);
    visit("readOnlineCode", answers.readOnlineCode);
    visit("importCode", answers.importCode);
}
