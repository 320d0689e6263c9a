#pragma once

#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"

#include <QString>
#include <QUuid>

/// Identity number `n`: the same for the same number.
QUuid testId(quint32 n);

/// A group or processor named after its number. Processors are addressed by number unless given an
/// address; `group` 0 is the root.
ProcessorGroupNode testGroup(quint32 n, const QString& name = QString());
ProcessorNode testProcessor(quint32 n, quint32 group = 0);
ProcessorNode testIpProcessor(quint32 n, quint32 address, quint32 group = 0);

SDeviceSetInfo deviceSet(quint32 n);
