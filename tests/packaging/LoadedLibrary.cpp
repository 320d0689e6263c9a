#include "tests/packaging/Library.h"

#include <QDebug>
#include <QLibrary>
#include <QString>

namespace {

QLibrary& library()
{
    static QLibrary instance(QStringLiteral(TSA_LIBRARY_FILE));
    return instance;
}

} // namespace

TargetSelectAreaInit Library::init()
{
    const QFunctionPointer symbol = library().resolve(TARGETSELECTAREA_INIT_SYMBOL);
    if (!symbol)
        qCritical() << library().errorString();
    return reinterpret_cast<TargetSelectAreaInit>(symbol);
}

bool Library::unload()
{
    return library().unload();
}
