#include "tests/validate/broken/Breakage.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <string>

namespace {

#ifdef _WIN32
std::string pathOfThisModule()
{
    HMODULE self = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS
                           | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&isBroken), &self);
    char path[MAX_PATH] = "";
    return {path, GetModuleFileNameA(self, path, MAX_PATH)};
}
#else
std::string pathOfThisModule()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&isBroken), &info) == 0 || !info.dli_fname)
        return {};
    return info.dli_fname;
}
#endif

/// Returns what stands behind the first "_" in the name of this module's file, without the suffix.
std::string breakageOfThisModule()
{
    const std::string path = pathOfThisModule();
    const std::string file = path.substr(path.find_last_of("/\\") + 1);
    const std::string stem = file.substr(0, file.rfind('.'));
    return stem.substr(stem.find('_') + 1);
}

} // namespace

bool isBroken(const char* breakage)
{
    static const std::string own = breakageOfThisModule();
    return own == breakage;
}
