#pragma once

#include "host/workbench/project/Project.h"

#include <QStringList>

/// Return the names of the fields in which two records differ, in the order of the alphabet.
QStringList differentFields(const ProcessorNode& one, const ProcessorNode& other);
QStringList differentFields(const ProcessorGroupNode& one, const ProcessorGroupNode& other);
QStringList differentFields(const DeviceSet& one, const DeviceSet& other);
QStringList differentFields(const HandlerAnswers& one, const HandlerAnswers& other);

/// One thing in which two projects differ, as texts in the current language. A record that only one
/// of them has is one difference, without a field.
struct ProjectDifference
{
    QString record;
    QString field;
    QString one; ///< The value in the first project, empty if it has no such record.
    QString other;
};

/// Returns in what two projects differ, record by record. Lit front panels do not count.
QList<ProjectDifference> compareProjects(const Project& one, const Project& other);
