#pragma once

#include "Interface/TargetSelectAreaInterface.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// Calls of the layer interface as JSON, for those that write them and those that repeat them.
/// Thread-safe, except repeat(), which calls the panel: GUI thread.
namespace LayerCalls {

/// Return the arguments and answers that have several parts.
QJsonObject warning(const std::vector<LanUsbProcessorInfo>& processors);
QJsonValue tree(const ProcessorTreeSnapshot& tree);

/// Calls the operation `name` of `layer`, with the arguments as a CRecordingLayer writes them.
/// Returns false if there is no such operation, and else sets its answer, undefined for none.
bool repeat(ITargetSelectAreaInterface& layer, const QString& name, const QJsonObject& arguments,
            QJsonValue& answer);

} // namespace LayerCalls
