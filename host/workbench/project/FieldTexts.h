#pragma once

#include "Interface/ProcessorNode.h"

#include <QList>
#include <QPair>
#include <QString>

/// A field's name and its value as text.
using FieldText = QPair<QString, QString>;

/// Every field of a record, in its order.
QList<FieldText> fieldTexts(const ProcessorNode& node);
QList<FieldText> fieldTexts(const ProcessorGroupNode& group);
