#include "tests/pictures/Album.h"

#include "host/widgets/HostTheme.h"
#include "tests/support/Chinese.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <iostream>
#include <optional>
#include <utility>

Album::Album(QString folder, QString suffix)
    : m_folder(std::move(folder))
    , m_suffix(std::move(suffix))
{
}

void Album::save(const char* name, QWidget& widget, QWidget* popup)
{
    QApplication::processEvents();
    QPixmap picture = widget.grab();
    if (popup) {
        QPainter painter(&picture);
        painter.drawPixmap(widget.mapFromGlobal(popup->mapToGlobal(QPoint())), popup->grab());
    }
    save(name, picture);
}

void Album::save(const char* name, const QPixmap& picture)
{
    const QString file = QStringLiteral("%1/%2%3.png").arg(m_folder, QLatin1String(name), m_suffix);
    m_failed = !picture.save(file) || m_failed;
}

int takePictures(int argc, char** argv, const std::function<void(Album&)>& take)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4 || !QDir().mkpath(arguments.at(1))) {
        std::cerr << "usage: " << qPrintable(QCoreApplication::applicationName())
                  << " FOLDER LANGUAGE SUFFIX\n";
        return 2;
    }
    ApplyHostTheme(*qApp);
    std::optional<Chinese> chinese;
    if (arguments.at(2) == QLatin1String("zh_CN")) {
        // The resources are there as soon as there is a panel.
        const TestPanel first;
        chinese.emplace();
    }
    Album album(arguments.at(1), arguments.at(3));
    take(album);
    return album.failed() ? 1 : 0;
}
