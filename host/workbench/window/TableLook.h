#pragma once

class QTableView;

/// Makes `view` look as a list of whole rows of `rowHeight` pixels: no grid, no numbers of rows,
/// the last column as wide as there is room. Tab leaves the view.
void applyTableLook(QTableView& view, int rowHeight);
