#pragma once

#include "host/workbench/script/StepRegistry.h"

/// The steps that every script knows, each function those of one file.
void addProjectSteps(StepRegistry& registry);
void addWindowSteps(StepRegistry& registry);
void addEventSteps(StepRegistry& registry);
void addInputSteps(StepRegistry& registry);
void addRowSteps(StepRegistry& registry);
void addDialogSteps(StepRegistry& registry);
void addCallSteps(StepRegistry& registry);
void addFaultSteps(StepRegistry& registry);

/// Returns all of them, and the step that begins a section.
StepRegistry standardSteps();
