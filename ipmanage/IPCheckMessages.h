#pragma once

#include <QString>
#include <QtGlobal>

/// A field that addresses are typed into, as far as the messages tell them apart.
enum class IPField {
    Single, ///< The field of CAddSingleIPDialog.
    Change, ///< The field of CModifyIPDialog.
    Batch,  ///< The start address of CAddBatchIPDialog.
    First,  ///< Field 1 of CAddBothIpDialog.
    Second  ///< Field 2 of CAddBothIpDialog.
};

// All texts are in the user's language, translated in the context of the field's dialog.

/// What to tell the user when the host rejects the address in `field` with `code`, one of
/// IPCheckResult. Any other code reads as IPCHECK_UNREASONABLE.
QString ipCheckMessage(quint32 code, IPField field);

/// What to tell the user when nothing was typed into `field`.
QString ipEmptyMessage(IPField field);

/// What to tell the user when both fields of CAddBothIpDialog have the same text.
QString ipSameMessage();
