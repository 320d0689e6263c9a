#include "host/workbench/project/FieldTexts.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/RecordFields.h"

#include <QStringList>

#include <limits>

namespace {

/// Returns the shortest text from which the same number is read.
QString shortestText(float value)
{
    QString text;
    for (int digits = 6; digits <= std::numeric_limits<float>::max_digits10; ++digits) {
        text = QString::number(static_cast<double>(value), 'g', digits);
        if (text.toFloat() == value)
            break;
    }
    return text;
}

class FieldCollector final
{
public:
    void operator()(const char* name, const QUuid& value)
    {
        put(name, value.isNull() ? QString() : value.toString(QUuid::WithoutBraces));
        texts.last().isEditable = qstrcmp(name, "id") != 0;
    }
    void operator()(const char* name, const QString& value) { put(name, value); }
    void operator()(const char* name, bool value)
    {
        put(name, value ? QStringLiteral("true") : QStringLiteral("false"));
        texts.last().isFlag = true;
    }
    void operator()(const char* name, const std::array<quint32, 4>& value)
    {
        QStringList numbers;
        for (const quint32 number : value)
            numbers.append(QString::number(number));
        put(name, numbers.join(QStringLiteral(", ")));
    }
    void operator()(const char* name, float value) { put(name, shortestText(value)); }
    template <typename Number>
    void operator()(const char* name, Number value)
    {
        put(name, QString::number(value));
    }
    void visitAddress(const char* name, quint32 value) { put(name, dottedAddress(value)); }

    QList<FieldText> texts;

private:
    void put(const char* name, const QString& value)
    {
        texts.append({QLatin1String(name), value, false, true});
    }
};

} // namespace

QList<FieldText> fieldTexts(const ProcessorNode& node)
{
    FieldCollector collector;
    visitProcessorFields(node, collector);
    return collector.texts;
}

QList<FieldText> fieldTexts(const ProcessorGroupNode& group)
{
    FieldCollector collector;
    visitGroupFields(group, collector);
    collector("processors", group.processors.size());
    collector.texts.last().isEditable = false;
    return collector.texts;
}
