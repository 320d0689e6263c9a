#pragma once

#include "Interface/ProcessorNode.h"

#include <QList>
#include <QString>

/// A field's name and its value as text.
struct FieldText
{
    QString name;
    QString value;
    bool isFlag = false;     ///< The value is "true" or "false".
    bool isEditable = false; ///< See setField().
};

inline bool operator==(const FieldText& left, const FieldText& right)
{
    return left.name == right.name && left.value == right.value;
}

/// Returns all fields of a record, in the order of the record.
QList<FieldText> fieldTexts(const ProcessorNode& node);
QList<FieldText> fieldTexts(const ProcessorGroupNode& group);
