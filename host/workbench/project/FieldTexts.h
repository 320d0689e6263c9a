#pragma once

#include "Interface/ProcessorNode.h"

#include <QList>
#include <QPair>
#include <QString>

/// A field's name and its value as text.
using FieldText = QPair<QString, QString>;

/// Returns all fields of a record, in the order of the record.
QList<FieldText> fieldTexts(const ProcessorNode& node);
QList<FieldText> fieldTexts(const ProcessorGroupNode& group);
