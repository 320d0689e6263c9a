#include "host/workbench/window/WindowSettings.h"

#include "host/workbench/session/Settings.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/MainWindow.h"
#include "host/workbench/window/RecordsPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QSplitter>

#include <algorithm>

namespace {

// Another arrangement of docks and tool bars needs another number.
constexpr int kStateVersion = 1;

constexpr char kLanguage[] = "window/language";
constexpr char kGeometry[] = "window/geometry";
constexpr char kState[] = "window/state";
constexpr char kSplitter[] = "window/fields";
constexpr char kWords[] = "log/words";
constexpr char kKind[] = "log/kind";
constexpr char kPainting[] = "log/painting";
constexpr char kChinese[] = "zh_CN";
constexpr char kEnglish[] = "en";

QString key(const char* name)
{
    return QLatin1String(name);
}

/// Makes the whole window fit on the screen on which most of it is, the first one for none.
void keepOnScreen(QWidget& window)
{
    if (window.isMaximized() || window.isFullScreen())
        return;
    const QRect wanted = window.geometry();
    const auto visible = [&wanted](const QScreen* screen) {
        const QRect part = screen->availableGeometry() & wanted;
        return part.isEmpty() ? 0 : qint64{part.width()} * part.height();
    };
    const QScreen* best = QGuiApplication::primaryScreen();
    const QList<QScreen*> all = QGuiApplication::screens();
    for (const QScreen* screen : all) {
        if (visible(screen) > visible(best))
            best = screen;
    }
    const QRect room = best->availableGeometry();
    QRect place(wanted.topLeft(), wanted.size().boundedTo(room.size()));
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    window.setGeometry(place);
}

} // namespace

void WindowSettings::restore(MainWindow& window)
{
    const WorkbenchSettings settings;
    if (settings.value(key(kLanguage)).toString() == key(kChinese))
        window.actions()[ActionId::Chinese]->trigger();
    if (window.restoreGeometry(settings.value(key(kGeometry)).toByteArray()))
        keepOnScreen(window);
    window.restoreState(settings.value(key(kState)).toByteArray(), kStateVersion);
    window.records().splitter()->restoreState(settings.value(key(kSplitter)).toByteArray());
    LogPanel& log = window.log();
    log.filterField()->setText(settings.value(key(kWords)).toString());
    const int kind = log.kindSelector()->findData(settings.value(key(kKind), -1));
    log.kindSelector()->setCurrentIndex(std::max(kind, 0));
    log.paintingBox()->setChecked(settings.value(key(kPainting)).toBool());
}

void WindowSettings::save(const MainWindow& window)
{
    WorkbenchSettings settings;
    const bool isChinese = window.actions()[ActionId::Chinese]->isChecked();
    settings.setValue(key(kLanguage), key(isChinese ? kChinese : kEnglish));
    settings.setValue(key(kGeometry), window.saveGeometry());
    settings.setValue(key(kState), window.saveState(kStateVersion));
    settings.setValue(key(kSplitter), window.records().splitter()->saveState());
    const LogPanel& log = window.log();
    settings.setValue(key(kWords), log.filterField()->text());
    settings.setValue(key(kKind), log.kindSelector()->currentData());
    settings.setValue(key(kPainting), log.paintingBox()->isChecked());
}
