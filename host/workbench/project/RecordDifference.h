#pragma once

#include "host/workbench/project/Project.h"

#include <QStringList>

/// Return the names of the fields in which two records differ, in the order of the alphabet.
QStringList differentFields(const ProcessorNode& one, const ProcessorNode& other);
QStringList differentFields(const ProcessorGroupNode& one, const ProcessorGroupNode& other);
QStringList differentFields(const DeviceSet& one, const DeviceSet& other);
QStringList differentFields(const HandlerAnswers& one, const HandlerAnswers& other);
