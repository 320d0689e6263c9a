#pragma once

#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/Project.h"

#include <optional>

/// The first thing in `project` that a project must not have: identities that are missing or occur
/// twice, groups and processors that are referred to but do not exist, too many of something. The
/// path names the culprit as the project file does.
std::optional<JsonProblem> checkProject(const Project& project);
