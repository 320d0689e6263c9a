#pragma once

#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/Project.h"

#include <optional>

/// Returns the first inconsistency in `project`: a missing or duplicate identity, a reference to a
/// group, processor or device set that does not exist, or something beyond
/// the limits of ProjectLimits and ProjectRanges. The path of the problem leads to the value in the
/// project file.
std::optional<JsonProblem> checkProject(const Project& project);
