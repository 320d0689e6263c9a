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

/// SVG icons for item delegates: each file is parsed once, ahead of painting, and drawn once for
/// every size in device pixels. Shared by all who hold it, and gone with the last of them. GUI
/// thread.
class HOSTWIDGETS_EXPORT SvgIcons final
{
public:
    /// The icons that everyone shares, as long as anyone holds them.
    static std::shared_ptr<SvgIcons> shared();

    /// The number of files parsed since the start of the program, by any of these objects.
    static int parseCount();

    SvgIcons();
    ~SvgIcons();
    SvgIcons(const SvgIcons&) = delete;
    SvgIcons& operator=(const SvgIcons&) = delete;

    /// Reads the file, unless it was read before.
    void load(const QString& path);

    /// The icon as a square of `size` for a device with `scale` pixels to the unit. A file that was
    /// not loaded, or cannot be read, leaves it empty.
    QPixmap pixmap(const QString& path, int size, qreal scale);

    /// Paints it at `position`, moved to the next whole device pixel so that its lines stay sharp.
    void paint(QPainter& painter, const QPointF& position, const QString& path, int size);

private:
    struct File
    {
        std::shared_ptr<QSvgRenderer> renderer;
        std::map<std::pair<int, qreal>, QPixmap> pixmaps; // by size and scale
    };

    QHash<QString, File> m_files;
};
