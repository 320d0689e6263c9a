#pragma once

class QAbstractItemView;
class QModelIndex;

/// Brings `row` of `view` into sight as a person does, by the mouse wheel: a recording of the
/// session then repeats it. GUI thread.
void scrollByWheel(QAbstractItemView& view, const QModelIndex& row);
