#pragma once

#include <QString>
#include <QtGlobal>

/// The address field that a message is about.
enum class IPField {
    Single, ///< The field of CAddSingleIPDialog.
    Change, ///< The field of CModifyIPDialog.
    Batch,  ///< The start address of CAddBatchIPDialog.
    First,  ///< Field 1 of CAddBothIpDialog.
    Second  ///< Field 2 of CAddBothIpDialog.
};

// All texts are translated in the context of the field's dialog.

/// Returns the message for an address in `field` that the host rejects with `code`, an
/// IPCheckResult. Any other code counts as IPCHECK_UNREASONABLE.
QString ipCheckMessage(quint32 code, IPField field);

/// Returns the message for an empty `field`.
QString ipEmptyMessage(IPField field);

/// Returns the message for two equal texts in CAddBothIpDialog.
QString ipSameMessage();
