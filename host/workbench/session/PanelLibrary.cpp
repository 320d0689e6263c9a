#include "host/workbench/session/PanelLibrary.h"

#include "Interface/TargetSelectAreaInterface.h"

#include <QDir>
#include <QFileInfo>

namespace {

#ifdef Q_OS_WIN
constexpr char kLibraryFile[] = "TargetSelectArea.dll";
#else
constexpr char kLibraryFile[] = "libTargetSelectArea.so";
#endif

} // namespace

QString PanelLibrary::defaultPath()
{
    const QDir here(QCoreApplication::applicationDirPath());
    for (const char* folder : {"../lib", "../" WORKBENCH_LIBRARY_FOLDER, ".", ".."}) {
        QString path = QDir::cleanPath(
            here.filePath(QLatin1String(folder) + QLatin1Char('/') + QLatin1String(kLibraryFile)));
        if (QFileInfo::exists(path))
            return path;
    }
    return QDir::cleanPath(here.filePath(QStringLiteral("../lib/") + QLatin1String(kLibraryFile)));
}

bool PanelLibrary::load(const QString& path, QString& problem)
{
    const QString shown = QDir::toNativeSeparators(path);
    if (!QFileInfo::exists(path)) {
        problem =
            tr("The panel's library %1 does not exist. Build it, or name another with --library.")
                .arg(shown);
        return false;
    }
    m_library.setFileName(path);
    if (!m_library.load()) {
        problem =
            tr("The panel's library %1 cannot be loaded: %2").arg(shown, m_library.errorString());
        return false;
    }
    m_init =
        reinterpret_cast<TargetSelectAreaInit>(m_library.resolve(TARGETSELECTAREA_INIT_SYMBOL));
    if (!m_init)
        problem =
            tr("The library %1 is not the panel's: it has no TargetSelectArea_Init.").arg(shown);
    return m_init != nullptr;
}

ITargetSelectAreaInterface* PanelLibrary::init(QWidget* parent) const
{
    IAbstractLayerInterface* layer = nullptr;
    if (!m_init || !m_init(&layer, parent))
        return nullptr;
    return dynamic_cast<ITargetSelectAreaInterface*>(layer);
}
