#include "sdk/validate/Reports.h"

#include "sdk/validate/Codes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QXmlStreamWriter>

namespace {

QString described(const Finding& finding)
{
    return QStringLiteral("%1 %2").arg(finding.code, finding.text);
}

/// Replaces what XML cannot hold: control characters, and what a host's texts may bring along.
QString legal(QString text)
{
    for (QChar& character : text) {
        const ushort code = character.unicode();
        const bool isControl = code < 0x20 && code != '\n' && code != '\t';
        if (isControl || character.isSurrogate() || code >= 0xFFFE)
            character = QLatin1Char('?');
    }
    return text;
}

QString details(const Result& result)
{
    QStringList lines;
    for (const Finding& finding : result.findings)
        lines.append(described(finding));
    if (!result.lastCall.isEmpty())
        lines.append(QStringLiteral("last call: %1").arg(result.lastCall));
    if (!result.repeat.isEmpty())
        lines.append(QStringLiteral("repeat: %1").arg(result.repeat));
    return lines.join(QLatin1Char('\n'));
}

void writeCase(QXmlStreamWriter& xml, const Result& result)
{
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), QStringLiteral("level%1").arg(result.level));
    xml.writeAttribute(QStringLiteral("name"), result.name);
    const auto writeText = [&](const QString& element, const QString& text) {
        xml.writeStartElement(element);
        if (!result.findings.isEmpty() && element != QLatin1String("system-out")) {
            xml.writeAttribute(QStringLiteral("type"), result.findings.first().code);
            xml.writeAttribute(QStringLiteral("message"), legal(result.findings.first().text));
        }
        xml.writeCharacters(legal(text));
        xml.writeEndElement();
    };
    switch (result.status) {
    case Status::Passed:
        break;
    case Status::Warning:
        writeText(QStringLiteral("system-out"), details(result));
        break;
    case Status::Skipped:
        xml.writeStartElement(QStringLiteral("skipped"));
        xml.writeAttribute(QStringLiteral("message"), legal(result.skipReason));
        xml.writeEndElement();
        break;
    case Status::Failed:
        writeText(QStringLiteral("failure"), details(result));
        break;
    case Status::Crashed:
        writeText(QStringLiteral("error"), details(result));
        break;
    }
    if (!result.output.isEmpty()) {
        xml.writeTextElement(QStringLiteral("system-err"),
                             legal(result.output.join(QLatin1Char('\n'))));
    }
    xml.writeEndElement();
}

} // namespace

QString Reports::text(const Result& result)
{
    QString text = QStringLiteral("%1 %2 %3: %4\n")
                       .arg(statusText(result.status), -8)
                       .arg(result.level, 2)
                       .arg(result.name, result.title);
    const auto add = [&](const QString& line) {
        text += QStringLiteral("            ") + line + QLatin1Char('\n');
    };
    for (const Finding& finding : result.findings)
        add(described(finding));
    if (!result.skipReason.isEmpty())
        add(result.skipReason);
    for (const QString& line : result.output)
        add(QStringLiteral("| ") + line);
    if (!result.repeat.isEmpty())
        add(QStringLiteral("repeat: ") + result.repeat);
    return text;
}

QString Reports::summary(const Report& report)
{
    QStringList counts;
    for (const Status status :
         {Status::Passed, Status::Warning, Status::Skipped, Status::Failed, Status::Crashed}) {
        counts.append(QStringLiteral("%1 %2").arg(report.count(status)).arg(statusText(status)));
    }
    QString text = counts.join(QLatin1String(", "))
                   + QStringLiteral(" (level %1, seed %2)\n").arg(report.level).arg(report.seed);
    if (report.isEmpty()) {
        text += QStringLiteral("%1 %2: no test ran, so nothing is validated\n")
                    .arg(codeText(Code::NothingRan), codeTitle(Code::NothingRan));
    }
    return text;
}

QByteArray Reports::junit(const Report& report)
{
    QMap<int, QList<Result>> levels;
    for (const Result& result : report.results)
        levels[result.level].append(result);

    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    for (auto level = levels.cbegin(); level != levels.cend(); ++level) {
        Report part;
        part.results = level.value();
        const auto number = [&](const QString& name, int value) {
            xml.writeAttribute(name, QString::number(value));
        };
        xml.writeStartElement(QStringLiteral("testsuite"));
        xml.writeAttribute(QStringLiteral("name"),
                           QStringLiteral("targetselect-validate level %1").arg(level.key()));
        number(QStringLiteral("tests"), part.results.size());
        number(QStringLiteral("failures"), part.count(Status::Failed));
        number(QStringLiteral("errors"), part.count(Status::Crashed));
        number(QStringLiteral("skipped"), part.count(Status::Skipped));
        for (const Result& result : qAsConst(part.results))
            writeCase(xml, result);
        xml.writeEndElement();
    }
    if (report.isEmpty()) {
        // A report without a failure would look like a good run.
        Result nothing;
        nothing.name = QStringLiteral("run");
        nothing.status = Status::Failed;
        nothing.findings = {{codeText(Code::NothingRan), codeTitle(Code::NothingRan)}};
        xml.writeStartElement(QStringLiteral("testsuite"));
        xml.writeAttribute(QStringLiteral("name"), QStringLiteral("targetselect-validate"));
        xml.writeAttribute(QStringLiteral("tests"), QStringLiteral("1"));
        xml.writeAttribute(QStringLiteral("failures"), QStringLiteral("1"));
        writeCase(xml, nothing);
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}

QByteArray Reports::json(const Report& report)
{
    QJsonArray tests;
    for (const Result& result : report.results) {
        QJsonArray findings;
        for (const Finding& finding : result.findings) {
            findings.append(QJsonObject{{QStringLiteral("code"), finding.code},
                                        {QStringLiteral("text"), finding.text}});
        }
        QJsonObject test{
            {QStringLiteral("name"), result.name},
            {QStringLiteral("level"), result.level},
            {QStringLiteral("title"), result.title},
            {QStringLiteral("findings"), findings},
            {QStringLiteral("status"), statusText(result.status)},
        };
        const auto add = [&](const QString& key, const QString& value) {
            if (!value.isEmpty())
                test.insert(key, value);
        };
        add(QStringLiteral("reason"), result.skipReason);
        add(QStringLiteral("lastCall"), result.lastCall);
        add(QStringLiteral("repeat"), result.repeat);
        add(QStringLiteral("output"), result.output.join(QLatin1Char('\n')));
        tests.append(test);
    }
    QJsonObject counts;
    for (const Status status :
         {Status::Passed, Status::Warning, Status::Skipped, Status::Failed, Status::Crashed})
        counts.insert(statusText(status), report.count(status));
    const QJsonObject object{
        {QStringLiteral("program"), QStringLiteral("targetselect-validate")},
        {QStringLiteral("library"), report.library},
        {QStringLiteral("hostPlugin"), report.hostPlugin},
        {QStringLiteral("level"), report.level},
        {QStringLiteral("seed"), static_cast<qint64>(report.seed)},
        {QStringLiteral("good"), report.isGood()},
        {QStringLiteral("counts"), counts},
        {QStringLiteral("tests"), tests},
    };
    return QJsonDocument(object).toJson();
}
