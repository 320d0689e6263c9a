#include "host/workbench/script/JUnitReport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

constexpr int kSecondDigits = 3;

/// What every report begins with.
QByteArray start()
{
    return QByteArrayLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<testsuites name=\"workbench\"");
}

/// Returns `text` without the characters that XML has no form for.
QString xmlText(QString text)
{
    for (int at = 0; at < text.size(); ++at) {
        const QChar unit = text.at(at);
        const bool isPaired =
            (unit.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate())
            || (unit.isLowSurrogate() && at > 0 && text.at(at - 1).isHighSurrogate());
        const ushort code = unit.unicode();
        const bool isControl = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
        if (isControl || code >= 0xFFFE || (unit.isSurrogate() && !isPaired))
            text[at] = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

QString secondsText(double seconds)
{
    return QString::number(seconds, 'f', kSecondDigits);
}

double secondsOf(const ScriptResult& result)
{
    double all = 0;
    for (const ScriptCase& one : result.cases)
        all += one.seconds;
    return all;
}

template <typename Wanted>
QString counted(const ScriptResult& result, const Wanted& wanted)
{
    return QString::number(std::count_if(result.cases.begin(), result.cases.end(), wanted));
}

void writeCase(QXmlStreamWriter& xml, const ScriptResult& result, const ScriptCase& one)
{
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), xmlText(result.name));
    xml.writeAttribute(QStringLiteral("name"), xmlText(one.name));
    xml.writeAttribute(QStringLiteral("time"), secondsText(one.seconds));
    if (one.isSkipped) {
        xml.writeEmptyElement(QStringLiteral("skipped"));
    } else if (!one.failure.isEmpty()) {
        xml.writeStartElement(QStringLiteral("failure"));
        xml.writeAttribute(QStringLiteral("message"),
                           xmlText(one.failure.section(QLatin1Char('\n'), 0, 0)));
        xml.writeCharacters(xmlText(one.failure));
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

} // namespace

QByteArray junitXml(const std::vector<ScriptResult>& results)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("workbench"));
    for (const ScriptResult& result : results) {
        xml.writeStartElement(QStringLiteral("testsuite"));
        xml.writeAttribute(QStringLiteral("name"), xmlText(result.name));
        xml.writeAttribute(QStringLiteral("tests"), QString::number(result.cases.size()));
        xml.writeAttribute(QStringLiteral("failures"), counted(result, [](const ScriptCase& one) {
                               return !one.failure.isEmpty();
                           }));
        xml.writeAttribute(QStringLiteral("skipped"),
                           counted(result, [](const ScriptCase& one) { return one.isSkipped; }));
        xml.writeAttribute(QStringLiteral("time"), secondsText(secondsOf(result)));
        for (const ScriptCase& one : result.cases)
            writeCase(xml, result, one);
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return text;
}

bool JUnitReport::check(QString& problem) const
{
    const QFileInfo existing(m_path);
    if (!existing.absoluteDir().exists()) {
        problem = problemText(QStringLiteral("its folder does not exist"));
        return false;
    }
    if (!existing.exists() && !existing.isSymLink())
        return true;
    if (!existing.isFile()) {
        problem = problemText(QStringLiteral("it is not a regular file"));
        return false;
    }
    QFile former(m_path);
    if (!former.open(QIODevice::ReadOnly)) {
        problem = problemText(former.errorString());
        return false;
    }
    const bool isReport = former.size() == 0 || former.read(start().size()) == start();
    if (!isReport)
        problem = problemText(QStringLiteral("the file that is there is not a report"));
    return isReport;
}

bool JUnitReport::write(const std::vector<ScriptResult>& results, QString& problem) const
{
    // Something else may be there by now.
    if (!check(problem))
        return false;
    const QByteArray text = junitXml(results);
    QSaveFile file(m_path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return true;
    problem = problemText(file.errorString());
    return false;
}

QString JUnitReport::problemText(const QString& reason) const
{
    return QStringLiteral("%1 cannot be written: %2").arg(QDir::toNativeSeparators(m_path), reason);
}
