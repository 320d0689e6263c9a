#pragma once

/// The fields of the interface's records by their names, in their order, for code that processes
/// all of them. `visit(name, field)` is called for each field; a field of a const record is const.

template <typename Node, typename Visitor>
void visitProcessor(Node& node, Visitor&& visit)
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
    visit("ipAddress", node.ipAddress);
    visit("secondAddress", node.secondAddress);
    visit("online", node.online);
    visit("reachedByIp", node.reachedByIp);
}

template <typename Node, typename Visitor>
void visitGroup(Node& node, Visitor&& visit)
{
    visit("id", node.id);
    visit("name", node.name);
    visit("hostAttribute3", node.hostAttribute3);
    visit("hostAttribute4", node.hostAttribute4);
    visit("processors", node.processors);
}

template <typename Set, typename Visitor>
void visitDeviceSet(Set& set, Visitor&& visit)
{
    visit("id", set.id);
    visit("hostAttribute2", set.hostAttribute2);
    visit("hostAttribute3", set.hostAttribute3);
}

template <typename Selection, typename Visitor>
void visitSelection(Selection& selection, Visitor&& visit)
{
    visit("id", selection.id);
    visit("processors", selection.processors);
}

template <typename Processor, typename Visitor>
void visitProjectProcessor(Processor& processor, Visitor&& visit)
{
    visit("id", processor.id);
    visit("name", processor.name);
}
