#pragma once

#include "processortree/view/OfferedAdditions.h"

#include <QList>
#include <QStringList>
#include <QtGlobal>

#include <optional>

class QUuid;
class QWidget;

/// Processors that the user wants added: by number, by their addresses, or by entries of the host's
/// IP list.
struct Addition
{
    int count = 0;
    std::optional<int> outputs;   ///< Of each, where the user was asked.
    bool areOutputsFixed = false; ///< By the host, so that the user did not choose them.
    QList<quint32> addresses;
    QStringList listEntries;

    /// How many processors that makes.
    int size() const { return count + addresses.size() + listEntries.size(); }
};

/// Asks the host how new processors get their addresses, and the user for what that takes. Nothing
/// when the user cancels. `outputs` is the number that the user chose last, 0 for none yet. GUI
/// thread; dialogs are modal over `parent`, which may be gone afterwards.
std::optional<Addition> askForAddition(AddKind kind, int outputs, QWidget* parent);

/// Requests the processors from the host, for `group`; a null one is the root.
void requestAddition(const QUuid& group, const Addition& addition);
