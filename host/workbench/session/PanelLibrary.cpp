#include "host/workbench/session/PanelLibrary.h"

#include "Interface/TargetSelectAreaInterface.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

QString PanelLibrary::defaultPath()
{
    const QDir here(QCoreApplication::applicationDirPath());
    QStringList paths;
    for (const char* folder : {WORKBENCH_LIBRARY_FOLDERS, ".", ".."}) {
        paths.append(QDir::cleanPath(
            here.filePath(QLatin1String(folder) + QLatin1String("/" WORKBENCH_LIBRARY_FILE))));
    }
    const auto found = std::find_if(paths.cbegin(), paths.cend(),
                                    [](const QString& path) { return QFileInfo::exists(path); });
    return found == paths.cend() ? paths.constFirst() : *found;
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
