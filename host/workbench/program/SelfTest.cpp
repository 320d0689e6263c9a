#include "host/workbench/program/SelfTest.h"

#include "host/workbench/program/Wait.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/MainWindow.h"

#include <iostream>

namespace {

constexpr int kLimitMs = 30000;

} // namespace

int runSelfTest(MainWindow& window)
{
    Session& session = window.session();
    const Project project = session.store().snapshot();
    if (project.groups.isEmpty() && project.processors.isEmpty()) {
        std::cerr << "workbench: the project is empty, there is nothing to check\n";
        return 1;
    }
    const bool shown = waitUntil(
        [&] { return session.notifier().isIdle() && session.panelShowsProject(); }, kLimitMs);
    if (!shown) {
        std::cerr << "workbench: the panel does not show the project's " << project.groups.size()
                  << " groups and " << project.processors.size() << " processors\n";
        return 1;
    }
    std::cout << "workbench: the panel shows " << project.groups.size() << " groups and "
              << project.processors.size() << " processors\n";
    return 0;
}
