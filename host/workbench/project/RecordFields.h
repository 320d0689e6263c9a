#pragma once

#include "host/workbench/project/Project.h"

/// The fields of the records, by name and in their order, for code that processes all of them: the
/// project file, the list of fields in the window, the tests.
///
/// `visit(name, field)` is called for each field; addresses go to `visit.visitAddress(name,
/// field)`.

template <typename Node, typename Visitor>
void visitProcessorFields(Node& node, Visitor& visit)
{
    visit("id", node.id);
    visit("name", node.name);
    visit("number", node.number);
    visit("groupId", node.groupId);
    visit("hostAttribute5", node.hostAttribute5);
    visit("hostAttribute6", node.hostAttribute6);
    visit("hostAttribute7", node.hostAttribute7);
    visit("hostAttribute8", node.hostAttribute8);
    visit("redundancyMode", node.redundancyMode);
    visit("hostAttribute10", node.hostAttribute10);
    visit("hostAttribute11", node.hostAttribute11);
    visit("hostAttribute12", node.hostAttribute12);
    visit("hostFlag13", node.hostFlag13);
    visit("hostText14", node.hostText14);
    visit("hostAttribute15", node.hostAttribute15);
    visit("hostAttribute16", node.hostAttribute16);
    visit("hostFlag17", node.hostFlag17);
    visit("hostAttribute18", node.hostAttribute18);
    visit("hostAttribute19", node.hostAttribute19);
    visit("hostAttribute20", node.hostAttribute20);
    visit("hostAttribute21", node.hostAttribute21);
    visit("hostAttribute22", node.hostAttribute22);
    visit("hostFlag23", node.hostFlag23);
    visit("hostText24", node.hostText24);
    visit.visitAddress("ipAddress", node.ipAddress);
    visit.visitAddress("secondAddress", node.secondAddress);
    visit("online", node.online);
    visit("reachedByIp", node.reachedByIp);
}

/// Visits all fields except the list of processors, which follows from the processors' groupId.
template <typename Node, typename Visitor>
void visitGroupFields(Node& node, Visitor& visit)
{
    visit("id", node.id);
    visit("name", node.name);
    visit("hostAttribute3", node.hostAttribute3);
    visit("hostAttribute4", node.hostAttribute4);
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
