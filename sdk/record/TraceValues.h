#pragma once

#include "sdk/relay/Events.h"
#include "sdk/relay/HandlerRelay.h"
#include "sdk/relay/Operations.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QVariant>

/// The values of a recording as JSON, by the C++ types that the interface names;
/// docs/trace-format.md describes them. Nothing is shortened: what is written is read back equal.
/// Thread-safe.
namespace TraceValues {

/// Returns the value as JSON; undefined for a type that the interface does not name.
QJsonValue toJson(const QVariant& value);

/// Reads a value of type `typeId`. Returns an invalid one if `json` is none.
QVariant fromJson(const QJsonValue& json, int typeId);

/// Returns the arguments by their names. Menus, which are no values, are left out.
QJsonObject arguments(const CHandlerRelay::Call& call);

/// Returns the result, undefined for none, and the out parameters by their names.
QJsonValue result(const CHandlerRelay::Answer& answer);
QJsonObject outs(const Operations::Operation& operation, const CHandlerRelay::Answer& answer);

/// Reads an answer. Returns false if it does not fit the operation.
bool readAnswer(const Operations::Operation& operation, const QJsonValue& result,
                const QJsonObject& outs, CHandlerRelay::Answer& answer);

/// Returns number and argument of an event: {"number": N, "types": NAMES, "values": [...]}.
QJsonObject eventArguments(const Events::Event& event);

/// Reads what eventArguments() wrote. Returns false if the values do not fit their types.
bool readEvent(const QJsonObject& arguments, Events::Event& event);

/// Returns the JSON text in one line.
QByteArray compact(const QJsonValue& value);

} // namespace TraceValues
