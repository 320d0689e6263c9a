#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QHash>
#include <QPixmap>
#include <QString>

#include <map>
#include <memory>
#include <utility>

class QPainter;
class QPointF;
class QSvgRenderer;

/// SVG icons for item delegates. Each file is parsed once, before painting, and rendered once for
/// each size in device pixels. Shared by its users and destroyed with the last one. GUI thread.
class HOSTWIDGETS_EXPORT SvgIcons final
{
public:
    /// Returns the shared object; creates it if nobody holds it.
    static std::shared_ptr<SvgIcons> shared();

    /// Returns the number of files parsed since the program started.
    static int parseCount();

    SvgIcons();
    ~SvgIcons();
    SvgIcons(const SvgIcons&) = delete;
    SvgIcons& operator=(const SvgIcons&) = delete;

    /// Reads the file, unless it was read before.
    void load(const QString& path);

    /// Returns the icon as a square of `size` logical pixels for a device pixel ratio of `scale`.
    /// The pixmap is transparent if the file was not loaded or is not readable.
    QPixmap pixmap(const QString& path, int size, qreal scale);

    /// Paints the icon at `position`, aligned to device pixels so that its lines stay sharp.
    void paint(QPainter& painter, const QPointF& position, const QString& path, int size);

private:
    struct File
    {
        std::shared_ptr<QSvgRenderer> renderer;
        std::map<std::pair<int, qreal>, QPixmap> pixmaps; // by size and scale
    };

    QHash<QString, File> m_files;
};
