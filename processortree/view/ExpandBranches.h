#pragma once

class QTreeView;

/// Expands every row of `view` that has rows below it.
///
/// QTreeView::expandAll() shows the same, but keeps a persistent index for every row, the leaves
/// too, which makes the next reset of a large tree expensive. GUI thread.
void expandBranches(QTreeView& view);
