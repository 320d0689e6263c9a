#pragma once

struct ProcessorTreeSnapshot;
class CProcessorTreeModel;

/// Fills `out` with the groups and processors of the tree as its rows hold them. GUI thread.
void takeSnapshot(const CProcessorTreeModel& model, ProcessorTreeSnapshot& out);

/// Asks the host about each processor of `out`, and takes out those that it does not accept.
void dropRefused(ProcessorTreeSnapshot& out);
