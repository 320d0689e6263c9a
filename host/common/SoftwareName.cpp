#include "host/common/SoftwareName.h"

#include <mutex>

namespace {

struct Name
{
    std::mutex mutex;
    QString text;
};

// Never destroyed, because a dialog may read it while the process exits.
Name& name()
{
    static auto* const instance = new Name;
    return *instance;
}

} // namespace

QString custom_software_name()
{
    const std::lock_guard guard(name().mutex);
    return name().text;
}

void set_custom_software_name(const QString& text)
{
    const std::lock_guard guard(name().mutex);
    name().text = text;
}
