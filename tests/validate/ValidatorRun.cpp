#include "tests/validate/ValidatorRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <chrono>

namespace {

constexpr std::chrono::minutes kLimit(5);

} // namespace

ValidatorRun::ValidatorRun(const QStringList& arguments)
{
    static const QTemporaryDir folder;
    static int runs = 0;
    m_folder = folder.filePath(QString::number(++runs));
    m_run = runProgram(QStringLiteral(TSA_VALIDATOR),
                       QStringList{QStringLiteral("--json"), m_folder + QStringLiteral(".json"),
                                   QStringLiteral("--junit"), m_folder + QStringLiteral(".xml")}
                           + arguments,
                       {}, kLimit);
}

QString ValidatorRun::wholeLibrary()
{
    return QStringLiteral(TSA_LIBRARY_FILE);
}

QString ValidatorRun::broken(const QString& name)
{
    return QStringLiteral(TSA_BROKEN_FOLDER "/%1" TSA_MODULE_SUFFIX).arg(name);
}

QJsonObject ValidatorRun::json() const
{
    return QJsonDocument::fromJson(contentOf(m_folder + QStringLiteral(".json"))).object();
}

QByteArray ValidatorRun::junit() const
{
    return contentOf(m_folder + QStringLiteral(".xml"));
}

QJsonObject ValidatorRun::onlyTest() const
{
    const QJsonArray tests = json().value(QLatin1String("tests")).toArray();
    return tests.size() == 1 ? tests.first().toObject() : QJsonObject();
}

QStringList ValidatorRun::codes() const
{
    QStringList found;
    const QJsonArray tests = json().value(QLatin1String("tests")).toArray();
    for (const QJsonValue& test : tests) {
        const QJsonArray findings = test.toObject().value(QLatin1String("findings")).toArray();
        for (const QJsonValue& finding : findings)
            found.append(finding.toObject().value(QLatin1String("code")).toString());
    }
    found.removeDuplicates();
    return found;
}

QByteArray ValidatorRun::description() const
{
    return (output() + errors()).toUtf8();
}
