#include "tests/validate/broken/Breakage.h"

#include <dlfcn.h>

#include <string>

namespace {

/// Returns what stands behind the first "_" in the name of this module's file, without the suffix.
std::string breakageOfThisModule()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&isBroken), &info) == 0 || !info.dli_fname)
        return {};
    const std::string path(info.dli_fname);
    const std::string file = path.substr(path.rfind('/') + 1);
    const std::string stem = file.substr(0, file.rfind('.'));
    return stem.substr(stem.find('_') + 1);
}

} // namespace

bool isBroken(const char* breakage)
{
    static const std::string own = breakageOfThisModule();
    return own == breakage;
}
