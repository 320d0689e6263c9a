#include "sdk/validate/ProcessFigures.h"

#include <QDir>
#include <QString>

#include <dlfcn.h>
#include <malloc.h>

namespace {

int entriesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

} // namespace

const char* const ProcessFigures::kOpenFiles = "open files";

std::optional<qint64> ProcessFigures::allocatedBytes()
{
    // A sanitizer has a heap of its own, and counts it.
    using Count = std::size_t (*)();
    static const auto count =
        reinterpret_cast<Count>(dlsym(RTLD_DEFAULT, "__sanitizer_get_current_allocated_bytes"));
    if (count)
        return static_cast<qint64>(count());
    const struct mallinfo2 info = mallinfo2();
    if (info.uordblks == 0)
        return std::nullopt;
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

int ProcessFigures::threads()
{
    return entriesOf(QStringLiteral("/proc/self/task"));
}

int ProcessFigures::openFiles()
{
    return entriesOf(QStringLiteral("/proc/self/fd"));
}
