#include "host/workbench/program/Inspector.h"

#include "host/workbench/program/AnswerEnd.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>
#include <QWidget>

#include <algorithm>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

constexpr int kConnectMs = 1000;

// The step of the search for cells across an empty part of a view, in pixels.
constexpr int kStep = 8;

QJsonObject element(QAccessibleInterface& found, const QRect& frame);

#ifdef Q_OS_UNIX
bool isSocket(const QString& path)
{
    struct stat found = {};
    return stat(QFile::encodeName(path).constData(), &found) == 0 && S_ISSOCK(found.st_mode);
}
#endif

QJsonArray stateNames(const QAccessible::State& state)
{
    const std::pair<bool, const char*> all[] = {
        {state.disabled, "disabled"}, {state.selected, "selected"}, {state.focused, "focused"},
        {state.checked, "checked"},   {state.expanded, "expanded"}, {state.collapsed, "collapsed"},
        {state.modal, "modal"},       {state.active, "active"},     {state.readOnly, "readOnly"}};
    QJsonArray names;
    for (const auto& [is, name] : all) {
        if (is)
            names.append(QLatin1String(name));
    }
    return names;
}

/// Makes `view` create its cells again. It caches them, and follows changes of its model only while
/// a screen reader is active.
void forgetCells(QAccessibleInterface& view)
{
    QAccessibleTableModelChangeEvent changed(view.object(),
                                             QAccessibleTableModelChangeEvent::ModelReset);
    view.tableInterface()->modelChange(&changed);
}

/// Returns the visible cells. A view may have a million cells, so only the visible area is
/// searched.
QJsonArray cells(QAccessibleInterface& view, const QWidget& viewport)
{
    const QRect frame(viewport.mapToGlobal(QPoint(0, 0)), viewport.size());
    forgetCells(view);
    QJsonArray found;
    for (int y = frame.top(); y <= frame.bottom();) {
        int next = y + kStep;
        for (int x = frame.left(); x <= frame.right();) {
            QAccessibleInterface* cell = view.childAt(x, y);
            const QRect place = cell ? cell->rect().intersected(frame) : QRect();
            // A view that is not laid out yet may return a cell that it shows at another place.
            if (!place.contains(x, y)) {
                x += kStep;
                continue;
            }
            found.append(element(*cell, place));
            next = place.bottom() + 1;
            x = place.right() + 1;
        }
        y = std::max(next, y + 1);
    }
    return found;
}

/// Returns whether the element is a window, which has an entry of its own, or is not visible.
bool isElsewhere(const QAccessibleInterface& child)
{
    const auto* widget = qobject_cast<const QWidget*>(child.object());
    return widget && (widget->isWindow() || !widget->isVisible());
}

QJsonArray children(QAccessibleInterface& parent)
{
    const auto* view = qobject_cast<const QAbstractItemView*>(parent.object());
    if (view && parent.tableInterface())
        return cells(parent, *view->viewport());
    QJsonArray found;
    for (int at = 0; at < parent.childCount(); ++at) {
        QAccessibleInterface* child = parent.child(at);
        if (!child || !child->isValid() || child->state().invisible || isElsewhere(*child))
            continue;
        if (!child->state().offscreen) {
            found.append(element(*child, child->rect()));
            continue;
        }
        // Children of a row that is scrolled out of view may be visible.
        const QJsonArray below = children(*child);
        for (const QJsonValue& inView : below)
            found.append(inView);
    }
    return found;
}

QJsonObject element(QAccessibleInterface& found, const QRect& frame)
{
    QJsonObject told{
        {QStringLiteral("role"), QLatin1String(qAccessibleRoleString(found.role()))},
        {QStringLiteral("states"), stateNames(found.state())},
        {QStringLiteral("rect"), QJsonArray{frame.x(), frame.y(), frame.width(), frame.height()}}};
    const std::pair<QAccessible::Text, QString> texts[] = {
        {QAccessible::Name, QStringLiteral("name")},
        {QAccessible::Value, QStringLiteral("value")},
        {QAccessible::Description, QStringLiteral("description")}};
    for (const auto& [kind, key] : texts) {
        const QString text = found.text(kind);
        if (!text.isEmpty())
            told.insert(key, text);
    }
    const QJsonArray inside = children(found);
    if (!inside.isEmpty())
        told.insert(QStringLiteral("children"), inside);
    return told;
}

/// Returns the visible windows from front to back.
QWidgetList windows()
{
    QWidgetList shown;
    const auto add = [&shown](QWidget* window) {
        if (window && window->isVisible() && !shown.contains(window))
            shown.append(window);
    };
    add(QApplication::activePopupWidget());
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* window : all) {
        if (window->windowType() == Qt::Popup)
            add(window);
    }
    add(QApplication::activeModalWidget());
    for (QWidget* window : all)
        add(window);
    return shown;
}

} // namespace

Inspector::Inspector(QObject* parent)
    : QObject(parent)
    , m_server(new QLocalServer(this))
{
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &Inspector::answer);
}

bool Inspector::listen(const QString& name, QString& problem)
{
    const QString reason = obstacle(name);
    if (reason.isEmpty() && m_server->listen(name))
        return true;
    problem = tr("Nobody can connect to %1: %2")
                  .arg(name, reason.isEmpty() ? m_server->errorString() : reason);
    return false;
}

/// Removes the socket that a former program left behind under `name`. Returns why nobody can listen
/// there, empty if nothing is in the way: QLocalServer replaces whatever it finds. On Windows,
/// where a socket is no file and none is left behind, it would share the name with another program.
QString Inspector::obstacle(const QString& name)
{
#ifdef Q_OS_UNIX
    const QFileInfo existing(QDir(QDir::tempPath()).filePath(name));
    if (!existing.exists())
        return {};
    if (!isSocket(existing.filePath()))
        return tr("the file that is there is not a socket");
#endif
    QLocalSocket client;
    client.connectToServer(name);
    if (client.waitForConnected(kConnectMs))
        return tr("another program listens there");
#ifdef Q_OS_UNIX
    if (client.error() != QLocalSocket::ConnectionRefusedError)
        return client.errorString();
    QLocalServer::removeServer(name);
#endif
    return {};
}

QJsonObject Inspector::tree()
{
    QJsonArray told;
    const QWidgetList shown = windows();
    for (QWidget* window : shown) {
        if (QAccessibleInterface* found = QAccessible::queryAccessibleInterface(window))
            told.append(element(*found, found->rect()));
    }
    QJsonValue focus = QJsonValue::Null;
    QWidget* focused = QApplication::focusWidget();
    if (QAccessibleInterface* found = QAccessible::queryAccessibleInterface(focused)) {
        QJsonObject self = element(*found, found->rect());
        self.remove(QStringLiteral("children"));
        focus = self;
    }
    return {{QStringLiteral("focus"), focus}, {QStringLiteral("windows"), told}};
}

void Inspector::answer()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        socket->write(QJsonDocument(tree()).toJson(QJsonDocument::Compact));
        closeWhenRead(*socket);
    }
}
