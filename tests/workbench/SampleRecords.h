#pragma once

#include "host/workbench/project/Project.h"

/// Identity number `n`: the same for the same number, null for 0.
QUuid sampleId(quint32 n);

/// A record in which no field has its default value.
ProcessorNode unusualProcessor(quint32 n, quint32 group);

/// Names that are hard on whoever writes or reads them in texts; none holds a line end.
QStringList awkwardNames();

/// A project in which nothing has its default value: two groups (1, 2), three processors (11 in
/// group 1, 12 in group 2, 13 under the root), two device sets.
Project unusualProject();

/// Two groups (1, 2) and four processors: 11 and 12 in group 1, 13 in group 2, 14 under the root.
/// Processor 11 is current; 11 and 12 have addresses.
Project smallProject();
