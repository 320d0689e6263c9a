#include "host/simulator/protocol/Message.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

constexpr struct
{
    Redundancy redundancy;
    const char* name;
} kRedundancies[] = {{Redundancy::None, "none"},
                     {Redundancy::HasBackup, "hasBackup"},
                     {Redundancy::IsBackup, "backup"}};

/// Takes the fields of an object one by one.
class Fields final
{
public:
    explicit Fields(QJsonObject object)
        : m_object(std::move(object))
    {
    }

    bool isGood() const { return m_isGood; }
    /// Returns whether all fields were there and right, and no other ones.
    bool isComplete() const { return m_isGood && m_object.isEmpty(); }

    QString text(const char* name)
    {
        const QJsonValue value = m_object.take(QLatin1String(name));
        m_isGood = m_isGood && value.isString();
        return value.toString();
    }

    bool flag(const char* name)
    {
        const QJsonValue value = m_object.take(QLatin1String(name));
        m_isGood = m_isGood && value.isBool();
        return value.toBool();
    }

    quint32 number(const char* name, quint32 least, quint32 most)
    {
        const QJsonValue value = m_object.take(QLatin1String(name));
        const double number = value.toDouble(-1);
        m_isGood = m_isGood && value.isDouble() && number >= least && number <= most
                   && number == static_cast<double>(static_cast<quint32>(number));
        return m_isGood ? static_cast<quint32>(number) : 0;
    }

    QString name(const char* field)
    {
        QString value = text(field);
        m_isGood = m_isGood && isDeviceName(value);
        return value;
    }

    Redundancy redundancy(const char* field)
    {
        const auto value = redundancyOfName(text(field));
        m_isGood = m_isGood && value;
        return value.value_or(Redundancy::None);
    }

    quint32 token() { return number("token", 0, std::numeric_limits<quint32>::max()); }

private:
    QJsonObject m_object;
    bool m_isGood = true;
};

std::optional<Message> readMessage(const QString& type, Fields& fields)
{
    if (type == QLatin1String("probe"))
        return ProbeMessage{fields.token()};
    if (type == QLatin1String("light"))
        return LightMessage{fields.flag("on")};
    if (type == QLatin1String("rename"))
        return RenameMessage{fields.name("name")};
    if (type != QLatin1String("state"))
        return std::nullopt;
    StateMessage message;
    message.token = fields.token();
    message.state.name = fields.name("name");
    message.state.online = fields.flag("online");
    message.state.redundancy = fields.redundancy("redundancy");
    message.state.outputs = static_cast<qint32>(fields.number("outputs", 1, kMaxDeviceOutputs));
    message.state.lit = fields.flag("lit");
    return message;
}

/// Writes the fields of a message.
struct Writer
{
    QJsonObject object{{QStringLiteral("v"), kProtocolVersion}};

    void operator()(const ProbeMessage& message)
    {
        setType("probe");
        setToken(message.token);
    }
    void operator()(const StateMessage& message)
    {
        setType("state");
        setToken(message.token);
        object.insert(QStringLiteral("name"), message.state.name);
        object.insert(QStringLiteral("online"), message.state.online);
        object.insert(QStringLiteral("redundancy"), redundancyName(message.state.redundancy));
        object.insert(QStringLiteral("outputs"), message.state.outputs);
        object.insert(QStringLiteral("lit"), message.state.lit);
    }
    void operator()(const LightMessage& message)
    {
        setType("light");
        object.insert(QStringLiteral("on"), message.on);
    }
    void operator()(const RenameMessage& message)
    {
        setType("rename");
        object.insert(QStringLiteral("name"), message.name);
    }

private:
    void setType(const char* type) { object.insert(QStringLiteral("type"), QLatin1String(type)); }
    void setToken(quint32 token)
    {
        object.insert(QStringLiteral("token"), static_cast<qint64>(token));
    }
};

} // namespace

bool isDeviceName(const QString& name)
{
    return name.size() <= kMaxDeviceNameLength && name.isValidUtf16() && !name.trimmed().isEmpty()
           && std::none_of(name.begin(), name.end(), [](QChar character) {
                  return character.category() == QChar::Other_Control
                         || character.category() == QChar::Separator_Line
                         || character.category() == QChar::Separator_Paragraph;
              });
}

QString redundancyName(Redundancy redundancy)
{
    const auto* const found =
        std::find_if(std::begin(kRedundancies), std::end(kRedundancies),
                     [&](const auto& known) { return known.redundancy == redundancy; });
    return QLatin1String(found == std::end(kRedundancies) ? "none" : found->name);
}

std::optional<Redundancy> redundancyOfName(const QString& name)
{
    for (const auto& known : kRedundancies) {
        if (name == QLatin1String(known.name))
            return known.redundancy;
    }
    return std::nullopt;
}

QByteArray encode(const Message& message)
{
    Writer writer;
    std::visit(writer, message);
    return QJsonDocument(writer.object).toJson(QJsonDocument::Compact);
}

std::optional<Message> decode(const QByteArray& data)
{
    if (data.size() > kMaxMessageBytes)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(data);
    if (!document.isObject())
        return std::nullopt;
    Fields fields(document.object());
    fields.number("v", kProtocolVersion, kProtocolVersion);
    const QString type = fields.text("type");
    if (!fields.isGood())
        return std::nullopt;
    std::optional<Message> message = readMessage(type, fields);
    return fields.isComplete() ? message : std::nullopt;
}
