#include "benchmarks/support/Bench.h"

#include "plugin/TargetSelectArea.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>

int runBenchmarks(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::cerr << "not true: " << what << '\n';
    std::_Exit(EXIT_FAILURE);
}

std::shared_ptr<StoredHandler> installStoredHandler()
{
    auto handler = std::make_shared<StoredHandler>();
    CTargetSelectArea* panel = CTargetSelectArea::Instance();
    panel->m_controlHandler = handler;
    panel->Reconnect();
    return handler;
}
