#include "sdk/validate/Catalogue.h"

#include <algorithm>

const Catalogue& catalogue()
{
    static const Catalogue all = [] {
        Catalogue tests = symbolTests() + lifeTests() + operationTests() + eventTests()
                          + misuseTests() + nonsenseTests() + stormTests() + teardownTests()
                          + cycleTests() + leakTests() + hostRecordTests() + hostRequestTests();
        std::stable_sort(tests.begin(), tests.end(),
                         [](const CatalogueEntry& left, const CatalogueEntry& right) {
                             return left.level < right.level;
                         });
        return tests;
    }();
    return all;
}
