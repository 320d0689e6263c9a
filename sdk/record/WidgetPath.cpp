#include "sdk/record/WidgetPath.h"

#include <QApplication>
#include <QLatin1String>
#include <QList>
#include <QString>
#include <QWidget>

#include <algorithm>

namespace WidgetPath {
namespace {

const QLatin1Char kClassMark('#');

/// Returns what `widget` is in. A popup without a parent is in the field that it helps to fill.
QWidget* holderOf(const QWidget& widget)
{
    return widget.parentWidget() ? widget.parentWidget() : widget.focusProxy();
}

/// Returns the children that count.
QList<QWidget*> children(const QWidget& parent)
{
    QList<QWidget*> widgets;
    for (QObject* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget && (!widget->isWindow() || widget->isVisible()))
            widgets.append(widget);
    }
    const QList<QWidget*> windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (!window->parentWidget() && window->focusProxy() == &parent && window->isVisible())
            widgets.append(window);
    }
    return widgets;
}

QString classStep(const QWidget& widget, int number)
{
    return kClassMark + QLatin1String(widget.metaObject()->className())
           + QStringLiteral(":%1").arg(number);
}

QString stepTo(const QWidget& parent, const QWidget& widget)
{
    const QList<QWidget*> siblings = children(parent);
    QString name = widget.objectName();
    const auto namesakes =
        std::count_if(siblings.begin(), siblings.end(),
                      [&](const QWidget* sibling) { return sibling->objectName() == name; });
    if (!name.isEmpty() && !name.startsWith(kClassMark) && namesakes == 1)
        return name;
    int number = 0;
    for (const QWidget* sibling : siblings) {
        if (sibling == &widget)
            break;
        if (qstrcmp(sibling->metaObject()->className(), widget.metaObject()->className()) == 0)
            ++number;
    }
    return classStep(widget, number);
}

} // namespace

bool isWithin(const QWidget& root, const QWidget* widget)
{
    while (widget && widget != &root)
        widget = holderOf(*widget);
    return widget != nullptr;
}

QJsonArray of(const QWidget& root, const QWidget& widget)
{
    QJsonArray path;
    for (const QWidget* at = &widget; at != &root; at = holderOf(*at))
        path.prepend(stepTo(*holderOf(*at), *at));
    return path;
}

QWidget* find(QWidget& root, const QJsonArray& path)
{
    QWidget* at = &root;
    for (const QJsonValue& step : path) {
        const QList<QWidget*> widgets = children(*at);
        const QWidget& parent = *at;
        const auto found = std::find_if(widgets.begin(), widgets.end(), [&](const QWidget* widget) {
            return stepTo(parent, *widget) == step.toString();
        });
        if (found == widgets.end())
            return nullptr;
        at = *found;
    }
    return at;
}

} // namespace WidgetPath
