#pragma once

/// Registers every type that crosses threads or stands in a QVariant, under the names that calls by
/// name use, and the conversion that lets a record be read however an item keeps it. Any thread,
/// any number of times; whoever may be the first to need one of the types calls it.
void RegisterMetaTypes();
