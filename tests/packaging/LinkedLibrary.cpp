#include "tests/packaging/Library.h"

TargetSelectAreaInit Library::init()
{
    return &TargetSelectArea_Init;
}

bool Library::unload()
{
    return true;
}
