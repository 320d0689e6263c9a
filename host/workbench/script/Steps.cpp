#include "host/workbench/script/Steps.h"

#include "host/workbench/script/ScriptRunner.h"

StepRegistry standardSteps()
{
    StepRegistry registry;
    addCaseSteps(registry);
    addProjectSteps(registry);
    addWindowSteps(registry);
    addEventSteps(registry);
    addInputSteps(registry);
    addRowSteps(registry);
    addDialogSteps(registry);
    addCallSteps(registry);
    addFaultSteps(registry);
    return registry;
}
