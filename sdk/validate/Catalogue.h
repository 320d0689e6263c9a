#pragma once

#include <QList>
#include <QString>

class Test;

/// A test: what it looks at, and the function that does so in a process of its own.
struct CatalogueEntry
{
    enum Need {
        Nothing = 0,
        NoApplication = 1, ///< The process has no QApplication.
        NoChecks = 2,      ///< The contract checks are off.
        HostPlugin = 4,    ///< There is a host plugin, whose handler is looked at.
    };

    const char* name;
    int level;
    const char* title;
    void (*function)(Test& test);
    int needs = Nothing;
};

using Catalogue = QList<CatalogueEntry>;

/// Returns all tests, by level.
const Catalogue& catalogue();

// The tests of each level; those of a host's handler stand at the levels of what they look at.
Catalogue symbolTests();
Catalogue lifeTests();
Catalogue operationTests();
Catalogue eventTests();
Catalogue misuseTests();
Catalogue nonsenseTests();
Catalogue stormTests();
Catalogue teardownTests();
Catalogue cycleTests();
Catalogue leakTests();
Catalogue hostRecordTests();
Catalogue hostRequestTests();
