#include "host/workbench/project/FieldJson.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/project/Project.h"

#include <QJsonArray>

#include <cmath>
#include <limits>
#include <utility>

namespace {

/// Returns the integer in `json` if it is within the limits of `Number`.
template <typename Number>
std::optional<Number> wholeNumber(const QJsonValue& json)
{
    if (!json.isDouble())
        return std::nullopt;
    const double number = json.toDouble();
    if (std::trunc(number) != number
        || number < static_cast<double>(std::numeric_limits<Number>::min())
        || number > static_cast<double>(std::numeric_limits<Number>::max()))
        return std::nullopt;
    return static_cast<Number>(number);
}

QString element(int number)
{
    return QString::number(number);
}

} // namespace

void FieldWriter::operator()(const char* name, const QUuid& value)
{
    put(name, value.toString(QUuid::WithoutBraces));
}

void FieldWriter::operator()(const char* name, const GUID& value)
{
    (*this)(name, fromGuid(value));
}

void FieldWriter::operator()(const char* name, const QStringList& value)
{
    put(name, QJsonArray::fromStringList(value));
}

void FieldWriter::operator()(const char* name, const std::array<quint32, 4>& value)
{
    QJsonArray array;
    for (const quint32 number : value)
        array.append(static_cast<qint64>(number));
    put(name, array);
}

void FieldWriter::visitAddress(const char* name, quint32 value)
{
    put(name, dottedAddress(value));
}

void FieldWriter::visitAddress(const char* name, const QList<quint32>& value)
{
    QJsonArray array;
    for (const quint32 address : value)
        array.append(dottedAddress(address));
    put(name, array);
}

FieldReader::FieldReader(const QJsonValue& value, QStringList path,
                         std::optional<JsonProblem>& problem)
    : m_object(value.toObject())
    , m_path(std::move(path))
    , m_problem(problem)
{
    if (!value.isObject())
        report(m_path, tr("an object is expected here"));
}

std::optional<QJsonValue> FieldReader::take(const char* name)
{
    const QString key = QLatin1String(name);
    m_known.insert(key);
    if (m_problem || !m_object.contains(key))
        return std::nullopt;
    return m_object.value(key);
}

void FieldReader::refuseUnknown()
{
    for (auto it = m_object.constBegin(); it != m_object.constEnd(); ++it) {
        if (!m_known.contains(it.key()))
            report(m_path + QStringList(it.key()), tr("this field is not known"));
    }
}

void FieldReader::report(const QStringList& path, const QString& reason)
{
    if (!m_problem)
        m_problem = JsonProblem{path, reason};
}

void FieldReader::operator()(const char* name, QUuid& value)
{
    const auto json = take(name);
    if (!json)
        return;
    const QUuid id = QUuid::fromString(json->toString());
    const bool isNull = json->toString() == QUuid().toString(QUuid::WithoutBraces);
    if (id.isNull() && !isNull)
        report(pathTo(name), tr("an identity such as %1 is expected")
                                 .arg(QLatin1String("5b2d1f0c-0000-4000-8000-000000000001")));
    else
        value = id;
}

void FieldReader::operator()(const char* name, GUID& value)
{
    QUuid id = fromGuid(value);
    (*this)(name, id);
    value = toGuid(id);
}

void FieldReader::operator()(const char* name, QString& value)
{
    const auto json = take(name);
    if (!json)
        return;
    if (json->isString())
        value = json->toString();
    else
        report(pathTo(name), tr("a text is expected"));
}

void FieldReader::operator()(const char* name, QStringList& value)
{
    const auto json = take(name);
    if (!json)
        return;
    if (!json->isArray())
        report(pathTo(name), tr("a list of texts is expected"));
    QStringList texts;
    const QJsonArray array = json->toArray();
    for (int at = 0; at < array.size(); ++at) {
        if (!array.at(at).isString())
            report(pathTo(name) + QStringList(element(at)), tr("a text is expected"));
        texts.append(array.at(at).toString());
    }
    if (!m_problem)
        value = texts;
}

void FieldReader::operator()(const char* name, bool& value)
{
    const auto json = take(name);
    if (!json)
        return;
    if (json->isBool())
        value = json->toBool();
    else
        report(pathTo(name), tr("true or false is expected"));
}

template <typename Number>
void FieldReader::readNumber(const char* name, Number& value)
{
    const auto json = take(name);
    if (!json)
        return;
    if (const auto number = wholeNumber<Number>(*json)) {
        value = *number;
        return;
    }
    report(pathTo(name), tr("a whole number from %1 to %2 is expected")
                             .arg(std::numeric_limits<Number>::min())
                             .arg(std::numeric_limits<Number>::max()));
}

void FieldReader::operator()(const char* name, qint32& value)
{
    readNumber(name, value);
}

void FieldReader::operator()(const char* name, quint32& value)
{
    readNumber(name, value);
}

void FieldReader::operator()(const char* name, quint16& value)
{
    readNumber(name, value);
}

void FieldReader::operator()(const char* name, qint64& value)
{
    const auto json = take(name);
    if (!json)
        return;
    bool isNumber = false;
    const qint64 number = json->toString().toLongLong(&isNumber);
    if (isNumber)
        value = number;
    else
        report(pathTo(name), tr("a whole number of 64 bits, written as a text, is expected"));
}

void FieldReader::operator()(const char* name, float& value)
{
    const auto json = take(name);
    if (!json)
        return;
    const double number = json->toDouble();
    if (json->isDouble()
        && std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max()))
        value = static_cast<float>(number);
    else
        report(pathTo(name), tr("a number is expected"));
}

void FieldReader::operator()(const char* name, std::array<quint32, 4>& value)
{
    const auto json = take(name);
    if (!json)
        return;
    const QJsonArray array = json->toArray();
    if (array.size() != static_cast<int>(value.size()))
        report(pathTo(name), tr("a list of four numbers is expected"));
    std::array<quint32, 4> numbers{};
    for (int at = 0; !m_problem && at < array.size(); ++at) {
        const auto number = wholeNumber<quint32>(array.at(at));
        if (!number)
            report(pathTo(name) + QStringList(element(at)),
                   tr("a whole number from %1 to %2 is expected").arg(0).arg(0xFFFFFFFFU));
        numbers.at(static_cast<std::size_t>(at)) = number.value_or(0);
    }
    if (!m_problem)
        value = numbers;
}

bool FieldReader::readAddress(const QJsonValue& json, const QStringList& path, quint32& value)
{
    if (parseDottedAddress(json.toString(), value))
        return true;
    report(path, tr("an address such as %1 is expected").arg(QLatin1String("192.168.0.1")));
    return false;
}

void FieldReader::operator()(const char* name, HostReply& value)
{
    const auto json = take(name);
    if (!json)
        return;
    QStringList names;
    for (const HostReply reply : allHostReplies()) {
        names.append(hostReplyName(reply));
        if (json->toString() != names.constLast())
            continue;
        value = reply;
        return;
    }
    report(pathTo(name), tr("one of %1 is expected").arg(names.join(QStringLiteral(", "))));
}

void FieldReader::operator()(const char* name, FaultEffect& value)
{
    const auto json = take(name);
    if (!json)
        return;
    if (const auto effect = faultEffectOfName(json->toString())) {
        value = *effect;
        return;
    }
    QStringList names;
    for (const FaultEffect effect : allFaultEffects())
        names.append(faultEffectName(effect));
    report(pathTo(name), tr("one of %1 is expected").arg(names.join(QStringLiteral(", "))));
}

void FieldReader::visitAddress(const char* name, quint32& value)
{
    if (const auto json = take(name))
        readAddress(*json, pathTo(name), value);
}

void FieldReader::visitAddress(const char* name, QList<quint32>& value)
{
    const auto json = take(name);
    if (!json)
        return;
    if (!json->isArray())
        report(pathTo(name), tr("a list of addresses is expected"));
    QList<quint32> addresses;
    const QJsonArray array = json->toArray();
    for (int at = 0; at < array.size(); ++at) {
        quint32 address = 0;
        if (readAddress(array.at(at), pathTo(name) + QStringList(element(at)), address))
            addresses.append(address);
    }
    if (!m_problem)
        value = addresses;
}
