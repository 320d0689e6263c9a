#pragma once

#include "host/workbench/project/Project.h"

/// Returns how many bytes `name` has in the encoding that the answers name.
int nameBytes(const HandlerAnswers& answers, const QString& name);

/// Sets a field of a group or processor of `project` to the value that `text` means, written as
/// fieldTexts() writes it. Returns why that is refused, in the current language; then nothing has
/// changed. Empty if the field has the value now.
///
/// The identity of a record cannot be set: the panel knows the record by it.
QString setField(Project& project, const QUuid& id, const QString& field, const QString& text);

/// Returns why setField() would refuse `text`, without setting it. An unknown identity stands for a
/// group that is to be.
QString fieldRefusal(const Project& project, const QUuid& id, const QString& field,
                     const QString& text);

/// Sets a field of a device set in the same way.
QString setField(DeviceSet& set, const QString& field, const QString& text);

/// Replaces an entry of the IP list. Returns why that is refused, empty if it is done.
QString setIpEntry(IpList& list, int row, const QString& address, const QString& name);
