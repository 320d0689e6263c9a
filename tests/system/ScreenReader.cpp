#include "tests/system/ScreenReader.h"

#include <QDBusArgument>
#include <QDBusInterface>
#include <QDBusObjectPath>
#include <QDBusReply>

#include <utility>

namespace {

constexpr int kAnswerMs = 20000;
constexpr quint32 kLabelledBy = 2; // a kind of relation in the protocol
constexpr char kAccessible[] = "org.a11y.atspi.Accessible";
constexpr char kAction[] = "org.a11y.atspi.Action";
constexpr char kText[] = "org.a11y.atspi.Text";
constexpr char kRegistry[] = "org.a11y.atspi.Registry";

const QString& busName()
{
    static const QString name = QStringLiteral("accessibility");
    return name;
}

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

Heard referenceIn(const QDBusArgument& argument)
{
    QString service;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> service >> path;
    argument.endStructure();
    return {service, path.path()};
}

/// The states that matter here, by their numbers in the protocol.
const QList<QPair<int, const char*>>& stateNames()
{
    static const QList<QPair<int, const char*>> names{
        {1, "active"},      {4, "checked"},    {5, "collapsed"},  {9, "expandable"},
        {10, "expanded"},   {11, "focusable"}, {12, "focused"},   {16, "modal"},
        {22, "selectable"}, {23, "selected"},  {24, "sensitive"}, {25, "showing"}};
    return names;
}

} // namespace

Heard::Heard(QString service, QString path)
    : m_service(std::move(service))
    , m_path(std::move(path))
{
}

QDBusMessage Heard::call(const char* interface, const char* method,
                         const QVariantList& arguments) const
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(m_service, m_path, latin(interface), latin(method));
    call.setArguments(arguments);
    return call;
}

QVariant Heard::ask(const char* interface, const char* method, const QVariantList& arguments) const
{
    const QDBusMessage reply =
        ScreenReader::bus().call(call(interface, method, arguments), QDBus::Block, kAnswerMs);
    const bool isAnswer = reply.type() == QDBusMessage::ReplyMessage;
    return isAnswer ? reply.arguments().value(0) : QVariant();
}

QString Heard::property(const char* name) const
{
    const QVariant value =
        ask("org.freedesktop.DBus.Properties", "Get", {latin(kAccessible), latin(name)});
    return value.value<QDBusVariant>().variant().toString();
}

QString Heard::role() const
{
    return ask(kAccessible, "GetRoleName").toString();
}

QString Heard::text() const
{
    return ask(kText, "GetText", {0, -1}).toString();
}

QString Heard::label() const
{
    const QVariant answer = ask(kAccessible, "GetRelationSet");
    if (!answer.isValid())
        return {};
    QString name;
    const auto argument = answer.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        quint32 kind = 0;
        argument.beginStructure();
        argument >> kind;
        argument.beginArray();
        while (!argument.atEnd()) {
            const Heard related = referenceIn(argument);
            if (kind == kLabelledBy)
                name = related.name();
        }
        argument.endArray();
        argument.endStructure();
    }
    argument.endArray();
    return name;
}

QStringList Heard::states() const
{
    QList<quint32> bits;
    const QVariant answer = ask(kAccessible, "GetState");
    if (!answer.isValid())
        return {};
    answer.value<QDBusArgument>() >> bits;
    const quint64 all = bits.value(0) | quint64(bits.value(1)) << 32U;
    QStringList states;
    for (const auto& [bit, name] : stateNames()) {
        if (all >> static_cast<unsigned>(bit) & 1U)
            states.append(latin(name));
    }
    return states;
}

Heard Heard::parent() const
{
    const QVariant value =
        ask("org.freedesktop.DBus.Properties", "Get", {latin(kAccessible), latin("Parent")});
    return value.isValid()
               ? referenceIn(value.value<QDBusVariant>().variant().value<QDBusArgument>())
               : Heard();
}

QList<Heard> Heard::children() const
{
    const QVariant answer = ask(kAccessible, "GetChildren");
    if (!answer.isValid())
        return {};
    QList<Heard> found;
    const auto argument = answer.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd())
        found.append(referenceIn(argument));
    argument.endArray();
    return found;
}

QStringList Heard::actions() const
{
    const QVariant answer = ask(kAction, "GetActions");
    if (!answer.isValid())
        return {};
    QStringList names;
    const auto argument = answer.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString name;
        QString description;
        QString keys;
        argument.beginStructure();
        argument >> name >> description >> keys;
        argument.endStructure();
        names.append(name);
    }
    argument.endArray();
    return names;
}

bool Heard::act(const char* action) const
{
    const int number = actions().indexOf(latin(action));
    return number >= 0 && ScreenReader::bus().send(call(kAction, "DoAction", {number}));
}

ScreenReader::ScreenReader()
{
    QDBusInterface launcher(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                            QStringLiteral("org.a11y.Bus"), QDBusConnection::sessionBus());
    const QDBusReply<QString> address = launcher.call(QStringLiteral("GetAddress"));
    QDBusConnection connection = QDBusConnection::connectToBus(address.value(), busName());
    const QString events = QStringLiteral("org.a11y.atspi.Event.Object");
    connection.connect(QString(), QString(), events, QStringLiteral("StateChanged"), this,
                       SLOT(onStateChanged(QDBusMessage)));
    connection.connect(QString(), QString(), events, QStringLiteral("PropertyChange"), this,
                       SLOT(onPropertyChange(QDBusMessage)));
    // Applications keep quiet about what nobody has asked to hear.
    QDBusInterface registry(latin(kRegistry), QStringLiteral("/org/a11y/atspi/registry"),
                            latin(kRegistry), connection);
    for (const char* event : {"object:state-changed", "object:property-change", "focus"})
        registry.call(QStringLiteral("RegisterEvent"), latin(event));
}

ScreenReader::~ScreenReader()
{
    QDBusConnection::disconnectFromBus(busName());
}

bool ScreenReader::isListening() const
{
    return bus().isConnected();
}

QDBusConnection ScreenReader::bus()
{
    return QDBusConnection(busName());
}

std::optional<Heard> ScreenReader::find(const QString& application, const QString& role,
                                        const QString& name)
{
    const Heard desktop(latin(kRegistry), QStringLiteral("/org/a11y/atspi/accessible/root"));
    for (const Heard& program : desktop.children()) {
        if (program.name() == application) {
            if (auto found = findIn(program, role, name))
                return found;
        }
    }
    return std::nullopt;
}

std::optional<Heard> ScreenReader::findIn(const Heard& within, const QString& role,
                                          const QString& name)
{
    if (within.role() == role && within.name() == name)
        return within;
    for (const Heard& child : within.children()) {
        if (auto found = findIn(child, role, name))
            return found;
    }
    return std::nullopt;
}

void ScreenReader::onStateChanged(const QDBusMessage& message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.value(0).toString() != QLatin1String("focused")
        || arguments.value(1).toInt() != 1)
        return;
    m_focus = Heard(message.service(), message.path());
    m_announced.append(QStringLiteral("focus ") + m_focus.name());
}

void ScreenReader::onPropertyChange(const QDBusMessage& message)
{
    const QString property = message.arguments().value(0).toString();
    const Heard changed(message.service(), message.path());
    if (property == QLatin1String("accessible-name"))
        m_announced.append(QStringLiteral("name ") + changed.name());
    else if (property == QLatin1String("accessible-description"))
        m_announced.append(QStringLiteral("description ") + changed.name());
}
