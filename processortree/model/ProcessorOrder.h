#pragma once

#include "base/RecordCell.h"

#include <vector>

class QStandardItem;

/// The row of `parent`, the root or a group, at which a processor with `key` belongs.
///
/// A processor not addressed by IP goes last. One addressed by IP goes by address among its
/// siblings, the later of two equal ones behind; siblings addressed by number, or with an address
/// of 0 on either side, count by number; those without an address stay at the end. It never goes
/// above a group.
int insertionRow(const QStandardItem& parent, const CRecordCell::Key& key);

/// The same for a parent that is still being built: `groups` groups, below them processors with
/// `keys`.
int insertionRow(int groups, const std::vector<CRecordCell::Key>& keys,
                 const CRecordCell::Key& key);
