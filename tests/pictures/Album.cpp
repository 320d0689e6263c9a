#include "tests/pictures/Album.h"

#include "host/widgets/HostTheme.h"
#include "tests/pictures/Subjects.h"
#include "tests/support/Chinese.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <optional>
#include <utility>

Album::Album(QSet<QString> wanted)
    : m_wanted(std::move(wanted))
{
}

bool Album::begin(const QString& subject)
{
    m_subject = subject + QLatin1Char('/');
    return m_wanted.isEmpty()
           || std::any_of(m_wanted.begin(), m_wanted.end(),
                          [this](const QString& name) { return name.startsWith(m_subject); });
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
    const QString whole = m_subject + QLatin1String(name);
    if (m_wanted.isEmpty() || m_wanted.contains(whole))
        m_pictures.insert(whole, picture.toImage());
}

void preparePictures(int scale)
{
    qputenv("FONTCONFIG_FILE", PICTURE_FONTS);
    if (scale > 0) {
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
        qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
    }
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

Album takePictures(const QString& language, const QSet<QString>& wanted)
{
    // A text cursor does not blink while its picture is taken.
    QApplication::setCursorFlashTime(0);
    ApplyHostTheme(*qApp);
    std::optional<Chinese> chinese;
    if (language == QLatin1String("zh_CN")) {
        // The resources are there as soon as there is a panel.
        const TestPanel first;
        chinese.emplace();
    }
    Album album(wanted);
    using Subject = std::pair<const char*, void (*)(Album&)>;
    for (const auto& [subject, take] :
         {Subject("area", &takeArea), Subject("dialogs", &takeDialogs),
          Subject("limits", &takeLimits), Subject("search", &takeSearch),
          Subject("tree", &takeTree), Subject("tree-panel", &takeTreePanel)}) {
        if (album.begin(QLatin1String(subject)))
            take(album);
    }
    return album;
}
