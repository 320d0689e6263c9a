#include "sdk/record/TraceValues.h"

#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"
#include "sdk/relay/NodeFields.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

namespace TraceValues {
namespace {

/// The greatest integer that every reader of JSON takes exactly.
constexpr qint64 kGreatestExact = qint64{1} << 53;

template <typename Type>
struct IsList : std::false_type
{
};
template <typename Item>
struct IsList<QList<Item>> : std::true_type
{
};
template <typename Item, std::size_t Size>
struct IsList<std::array<Item, Size>> : std::true_type
{
};
template <>
struct IsList<QStringList> : std::true_type
{
};

QUuid fromGuid(const GUID& guid)
{
    const quint8* d = guid.Data4;
    return {guid.Data1, guid.Data2, guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]};
}

GUID toGuid(const QUuid& id)
{
    GUID guid{};
    guid.Data1 = id.data1;
    guid.Data2 = id.data2;
    guid.Data3 = id.data3;
    std::memcpy(guid.Data4, id.data4, sizeof guid.Data4);
    return guid;
}

/// Visits the fields of a record.
template <typename Type, typename Visitor>
void visitFields(Type& record, Visitor&& visit)
{
    using Plain = std::remove_const_t<Type>;
    if constexpr (std::is_same_v<Plain, ProcessorNode>)
        visitProcessor(record, visit);
    else if constexpr (std::is_same_v<Plain, ProcessorGroupNode>)
        visitGroup(record, visit);
    else if constexpr (std::is_same_v<Plain, SDeviceSetInfo>)
        visitDeviceSet(record, visit);
    else if constexpr (std::is_same_v<Plain, SGroupSelection>)
        visitSelection(record, visit);
    else
        visitProjectProcessor(record, visit);
}

QJsonValue ofNumber(double number)
{
    // JSON has no word for the others.
    return std::isfinite(number) ? QJsonValue(number) : QJsonValue(QString::number(number));
}

template <typename Type>
QJsonValue write(const Type& value)
{
    if constexpr (std::is_same_v<Type, bool> || std::is_same_v<Type, QString>) {
        return value;
    } else if constexpr (std::is_enum_v<Type>) {
        return static_cast<int>(value);
    } else if constexpr (std::is_floating_point_v<Type>) {
        return ofNumber(static_cast<double>(value));
    } else if constexpr (std::is_integral_v<Type>) {
        const auto number = static_cast<qint64>(value);
        const bool isExact = number >= -kGreatestExact && number <= kGreatestExact;
        return isExact ? QJsonValue(number) : QJsonValue(QString::number(number));
    } else if constexpr (std::is_same_v<Type, QUuid>) {
        return value.toString();
    } else if constexpr (std::is_same_v<Type, GUID>) {
        return fromGuid(value).toString();
    } else if constexpr (IsList<Type>::value) {
        QJsonArray items;
        for (const auto& item : value)
            items.append(write(item));
        return items;
    } else {
        QJsonObject object;
        visitFields(value, [&](const char* name, const auto& field) {
            object.insert(QLatin1String(name), write(field));
        });
        return object;
    }
}

bool readInteger(const QJsonValue& json, qint64& number)
{
    if (json.isString()) {
        bool isNumber = false;
        number = json.toString().toLongLong(&isNumber);
        return isNumber;
    }
    const double given = json.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (!(std::abs(given) <= static_cast<double>(kGreatestExact)) || given != std::floor(given))
        return false;
    number = static_cast<qint64>(given);
    return true;
}

template <typename Type>
bool read(const QJsonValue& json, Type& value);

template <typename List>
bool readItems(const QJsonArray& items, List& list)
{
    for (const QJsonValue& json : items) {
        typename List::value_type item{};
        if (!read(json, item))
            return false;
        list.append(item);
    }
    return true;
}

template <typename Item, std::size_t Size>
bool readItems(const QJsonArray& items, std::array<Item, Size>& list)
{
    if (items.size() != static_cast<int>(Size))
        return false;
    for (std::size_t at = 0; at < Size; ++at) {
        if (!read(items.at(static_cast<int>(at)), list[at]))
            return false;
    }
    return true;
}

template <typename Type>
bool read(const QJsonValue& json, Type& value)
{
    if constexpr (std::is_same_v<Type, bool>) {
        value = json.toBool();
        return json.isBool();
    } else if constexpr (std::is_same_v<Type, QString>) {
        value = json.toString();
        return json.isString();
    } else if constexpr (std::is_floating_point_v<Type>) {
        bool isNumber = json.isDouble();
        value = static_cast<Type>(isNumber ? json.toDouble() : json.toString().toDouble(&isNumber));
        return isNumber;
    } else if constexpr (std::is_integral_v<Type> || std::is_enum_v<Type>) {
        qint64 number = 0;
        if (!readInteger(json, number))
            return false;
        value = static_cast<Type>(number);
        return static_cast<qint64>(value) == number;
    } else if constexpr (std::is_same_v<Type, QUuid>) {
        value = QUuid(json.toString());
        return value.toString() == json.toString();
    } else if constexpr (std::is_same_v<Type, GUID>) {
        QUuid id;
        const bool isId = read(json, id);
        value = toGuid(id);
        return isId;
    } else if constexpr (IsList<Type>::value) {
        return json.isArray() && readItems(json.toArray(), value);
    } else {
        const QJsonObject object = json.toObject();
        bool isComplete = json.isObject();
        visitFields(value, [&](const char* name, auto& field) {
            isComplete = isComplete && read(object.value(QLatin1String(name)), field);
        });
        return isComplete;
    }
}

template <typename Type>
struct Named
{
    using type = Type;
};

/// Calls `visit` with the type of this identifier. Returns false if the interface has no such type.
template <typename Visitor>
bool visitType(int typeId, const Visitor& visit)
{
    const auto visitIf = [&](auto named) {
        using Type = typename decltype(named)::type;
        if (qMetaTypeId<Type>() != typeId)
            return false;
        visit(named);
        return true;
    };
    return visitIf(Named<bool>()) || visitIf(Named<int>()) || visitIf(Named<quint32>())
           || visitIf(Named<qint64>()) || visitIf(Named<double>()) || visitIf(Named<QString>())
           || visitIf(Named<QStringList>()) || visitIf(Named<QUuid>()) || visitIf(Named<GUID>())
           || visitIf(Named<EPrcTreeNodeType>()) || visitIf(Named<ProcessorNode>())
           || visitIf(Named<ProcessorGroupNode>()) || visitIf(Named<SDeviceSetInfo>())
           || visitIf(Named<SPrjProcessor>()) || visitIf(Named<QList<QUuid>>())
           || visitIf(Named<QList<quint32>>()) || visitIf(Named<QList<ProcessorNode>>())
           || visitIf(Named<QList<ProcessorGroupNode>>())
           || visitIf(Named<QList<SGroupSelection>>()) || visitIf(Named<QList<SDeviceSetInfo>>());
}

} // namespace

QJsonValue toJson(const QVariant& value)
{
    QJsonValue json(QJsonValue::Undefined);
    visitType(value.userType(),
              [&](auto named) { json = write(value.value<typename decltype(named)::type>()); });
    return json;
}

QVariant fromJson(const QJsonValue& json, int typeId)
{
    QVariant value;
    visitType(typeId, [&](auto named) {
        typename decltype(named)::type content{};
        if (read(json, content))
            value = QVariant::fromValue(content);
    });
    return value;
}

QJsonObject arguments(const CHandlerRelay::Call& call)
{
    QJsonObject object;
    for (int at = 0; at < call.arguments.size(); ++at) {
        const QJsonValue json = toJson(call.arguments.at(at));
        if (!json.isUndefined())
            object.insert(QLatin1String(call.operation.arguments[at].name), json);
    }
    return object;
}

QJsonValue result(const CHandlerRelay::Answer& answer)
{
    return toJson(answer.result);
}

QJsonObject outs(const Operations::Operation& operation, const CHandlerRelay::Answer& answer)
{
    QJsonObject object;
    const int count = qMin(Operations::count(operation.outs), answer.outs.size());
    for (int at = 0; at < count; ++at) {
        const QJsonValue json = toJson(answer.outs.at(at));
        if (!json.isUndefined())
            object.insert(QLatin1String(operation.outs[at].name), json);
    }
    return object;
}

bool readAnswer(const Operations::Operation& operation, const QJsonValue& result,
                const QJsonObject& outs, CHandlerRelay::Answer& answer)
{
    if (operation.answerType() != QMetaType::Void) {
        answer.result = fromJson(result, operation.answerType());
        if (!answer.result.isValid())
            return false;
    }
    for (int at = 0; at < Operations::count(operation.outs); ++at) {
        const QJsonValue json = outs.value(QLatin1String(operation.outs[at].name));
        const QVariant value = fromJson(json, operation.outs[at].typeId());
        if (!json.isUndefined() && !value.isValid())
            return false;
        answer.outs.append(value);
    }
    return true;
}

QJsonObject eventArguments(const Events::Event& event)
{
    QJsonArray values;
    for (const QVariant& value : event.arguments)
        values.append(toJson(value));
    return {{QStringLiteral("number"), static_cast<qint64>(event.number)},
            {QStringLiteral("types"), QString::fromLatin1(event.types)},
            {QStringLiteral("values"), values}};
}

bool readEvent(const QJsonObject& arguments, Events::Event& event)
{
    const QJsonArray values = arguments.value(QLatin1String("values")).toArray();
    event = {};
    event.types = arguments.value(QLatin1String("types")).toString().toLatin1();
    if (!read(arguments.value(QLatin1String("number")), event.number))
        return false;
    if (event.types.startsWith("unknown"))
        return true;
    // A type is known by name once it has an identifier.
    visitType(QMetaType::UnknownType, [](auto) {});
    const QStringList types =
        QString::fromLatin1(event.types).split(QStringLiteral(", "), Qt::SkipEmptyParts);
    for (int at = 0; at < types.size(); ++at) {
        const QVariant value =
            fromJson(values.at(at), QMetaType::type(types.at(at).toLatin1().constData()));
        if (!value.isValid())
            return false;
        event.arguments.append(value);
    }
    return types.size() == values.size();
}

QByteArray compact(const QJsonValue& value)
{
    QJsonArray one;
    one.append(value);
    const QByteArray text = QJsonDocument(one).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2);
}

} // namespace TraceValues
