#pragma once

#include "Interface/DeviceSetInfo.h"
#include "host/workbench/project/FaultRule.h"
#include "host/workbench/project/HostReply.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QSet>
#include <QStringList>
#include <QUuid>

#include <array>
#include <optional>

/// An error in a value, and the path to that value for locateJsonValue().
struct JsonProblem
{
    QStringList path;
    QString reason;
};

/// Visitor that writes fields into a JSON object. Identities and addresses are written as texts,
/// and so are 64-bit numbers, because many JSON readers keep only 53 bits.
class FieldWriter final
{
public:
    void operator()(const char* name, const QUuid& value);
    void operator()(const char* name, const GUID& value);
    void operator()(const char* name, const QString& value) { put(name, value); }
    void operator()(const char* name, const QStringList& value);
    void operator()(const char* name, bool value) { put(name, value); }
    void operator()(const char* name, qint32 value) { put(name, value); }
    void operator()(const char* name, quint32 value) { put(name, static_cast<qint64>(value)); }
    void operator()(const char* name, quint16 value) { put(name, value); }
    void operator()(const char* name, qint64 value) { put(name, QString::number(value)); }
    void operator()(const char* name, float value) { put(name, static_cast<double>(value)); }
    void operator()(const char* name, const std::array<quint32, 4>& value);
    void operator()(const char* name, HostReply value) { put(name, hostReplyName(value)); }
    void operator()(const char* name, FaultEffect value) { put(name, faultEffectName(value)); }
    void visitAddress(const char* name, quint32 value);
    void visitAddress(const char* name, const QList<quint32>& value);

    QJsonObject object;

private:
    void put(const char* name, const QJsonValue& value)
    {
        object.insert(QLatin1String(name), value);
    }
};

/// Visitor that reads fields from a JSON object. A missing field keeps its value. After the first
/// error, which is kept, all fields keep their values.
class FieldReader final
{
    Q_DECLARE_TR_FUNCTIONS(FieldReader)

public:
    /// Reads from `value`, which is at `path` in the file and must be an object.
    FieldReader(const QJsonValue& value, QStringList path, std::optional<JsonProblem>& problem);

    void operator()(const char* name, QUuid& value);
    void operator()(const char* name, GUID& value);
    void operator()(const char* name, QString& value);
    void operator()(const char* name, QStringList& value);
    void operator()(const char* name, bool& value);
    void operator()(const char* name, qint32& value);
    void operator()(const char* name, quint32& value);
    void operator()(const char* name, quint16& value);
    void operator()(const char* name, qint64& value);
    void operator()(const char* name, float& value);
    void operator()(const char* name, std::array<quint32, 4>& value);
    void operator()(const char* name, HostReply& value);
    void operator()(const char* name, FaultEffect& value);
    void visitAddress(const char* name, quint32& value);
    void visitAddress(const char* name, QList<quint32>& value);

    /// Returns the value of a member, of any type, and marks the member as known.
    std::optional<QJsonValue> take(const char* name);

    /// Reports members that are not known. Call it after all fields are read.
    void refuseUnknown();

    QStringList pathTo(const char* name) const { return m_path + QStringList(QLatin1String(name)); }
    void report(const QStringList& path, const QString& reason);

private:
    template <typename Number>
    void readNumber(const char* name, Number& value);
    bool readAddress(const QJsonValue& json, const QStringList& path, quint32& value);

    QJsonObject m_object;
    QStringList m_path;
    QSet<QString> m_known;
    std::optional<JsonProblem>& m_problem;
};
