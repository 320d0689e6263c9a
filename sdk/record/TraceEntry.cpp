#include "sdk/record/TraceEntry.h"

#include "sdk/record/TraceValues.h"

#include <cmath>
#include <limits>

namespace {

constexpr const char* kKinds[] = {"call", "event", "layer", "input"};
constexpr double kNanosecondsPerMillisecond = 1e6;
/// More than a year, in milliseconds.
constexpr double kLongest = 1e11;

QByteArray milliseconds(qint64 nanoseconds)
{
    return QByteArray::number(static_cast<double>(nanoseconds) / kNanosecondsPerMillisecond, 'f',
                              6);
}

/// Returns false if `json` is no number from 0 to `limit`.
bool readNumber(const QJsonValue& json, double limit, double factor, qint64& number)
{
    const double given = json.toDouble(-1);
    if (!(given >= 0 && given <= limit))
        return false;
    number = std::llround(given * factor);
    return true;
}

} // namespace

qint64 CTraceEntry::end() const
{
    return duration < 0 ? std::numeric_limits<qint64>::max() : time + duration;
}

QString CTraceEntry::text() const
{
    return name + QLatin1Char(' ') + QString::fromUtf8(TraceValues::compact(arguments));
}

QByteArray CTraceEntry::toJson() const
{
    QByteArray text = "{\"seq\":" + QByteArray::number(sequence) + ",\"ms\":" + milliseconds(time)
                      + ",\"thread\":" + TraceValues::compact(thread) + R"(,"kind":")"
                      + kKinds[static_cast<int>(kind)] + R"(","name":)" + TraceValues::compact(name)
                      + ",\"args\":" + TraceValues::compact(arguments);
    if (!answer.isUndefined())
        text += ",\"answer\":" + TraceValues::compact(answer);
    if (!outs.isEmpty())
        text += ",\"outs\":" + TraceValues::compact(outs);
    if (duration >= 0)
        text += ",\"took\":" + milliseconds(duration);
    text += ",\"cause\":" + (cause > 0 ? QByteArray::number(cause) : QByteArray("null"));
    return text + '}';
}

QByteArray CTraceEntry::fromJson(const QJsonObject& json)
{
    const auto field = [&](const char* key) { return json.value(QLatin1String(key)); };
    constexpr double most = 1e15;
    if (!readNumber(field("seq"), most, 1, sequence) || sequence == 0)
        return "seq";
    if (!readNumber(field("ms"), kLongest, kNanosecondsPerMillisecond, time))
        return "ms";
    thread = field("thread").toString();
    if (thread.isEmpty())
        return "thread";
    int number = 0;
    while (number < 4 && field("kind") != QLatin1String(kKinds[number]))
        ++number;
    if (number == 4)
        return "kind";
    kind = static_cast<Kind>(number);
    name = field("name").toString();
    if (name.isEmpty())
        return "name";
    arguments = field("args").toObject();
    if (!field("args").isObject())
        return "args";
    answer = field("answer");
    outs = field("outs").toObject();
    if (!field("outs").isUndefined() && !field("outs").isObject())
        return "outs";
    duration = -1;
    if (!field("took").isUndefined()
        && !readNumber(field("took"), kLongest, kNanosecondsPerMillisecond, duration))
        return "took";
    cause = 0;
    if (!field("cause").isNull() && !readNumber(field("cause"), most, 1, cause))
        return "cause";
    return cause >= sequence ? "cause" : "";
}
