#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <variant>

constexpr int kProtocolVersion = 1;

/// A message never has more bytes; longer ones are no messages.
constexpr int kMaxMessageBytes = 1024;

constexpr int kMaxDeviceNameLength = 128; ///< In UTF-16 units.
constexpr int kMaxDeviceOutputs = 255;

/// Whether a device is one of two. The numbers are those of ProcessorNode::redundancyMode.
enum class Redundancy : qint32 { None, HasBackup, IsBackup };

/// What a device reports of itself.
struct DeviceState
{
    QString name;
    bool online = true;
    Redundancy redundancy = Redundancy::None;
    qint32 outputs = 8;
    bool lit = false; ///< The front panel.

    bool operator==(const DeviceState& other) const
    {
        return name == other.name && online == other.online && redundancy == other.redundancy
               && outputs == other.outputs && lit == other.lit;
    }
    bool operator!=(const DeviceState& other) const { return !(*this == other); }
};

/// Asks a device for its state, which it reports with the same token.
struct ProbeMessage
{
    quint32 token = 0;
};

/// The state of a device; token 0 reports a change that nobody asked for.
struct StateMessage
{
    quint32 token = 0;
    DeviceState state;
};

/// Lights or darkens the front panel of a device.
struct LightMessage
{
    bool on = false;
};

struct RenameMessage
{
    QString name;
};

using Message = std::variant<ProbeMessage, StateMessage, LightMessage, RenameMessage>;

/// Returns whether a device can have the name: valid, not blank, not too long, without control
/// characters.
bool isDeviceName(const QString& name);

/// Returns the names of the redundancies in messages and commands: "none", "hasBackup", "backup".
QString redundancyName(Redundancy redundancy);
std::optional<Redundancy> redundancyOfName(const QString& name);

/// Returns the message as one JSON object without line ends. The state must be valid.
QByteArray encode(const Message& message);

/// Returns the message, or nothing if `data` is not exactly one of this version: each field of the
/// type is there with a value in its range, and there is no other field.
std::optional<Message> decode(const QByteArray& data);
