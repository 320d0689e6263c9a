#include "tests/validate/ValidatorRun.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

namespace {

constexpr int kLimitMs = 300000;

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

ValidatorRun::ValidatorRun(const QStringList& arguments)
{
    static const QTemporaryDir folder;
    static int runs = 0;
    m_folder = folder.filePath(QString::number(++runs));
    QProcess process;
    process.start(QStringLiteral(TSA_VALIDATOR),
                  QStringList{QStringLiteral("--json"), m_folder + QStringLiteral(".json"),
                              QStringLiteral("--junit"), m_folder + QStringLiteral(".xml")}
                      + arguments);
    m_hasEnded = process.waitForFinished(kLimitMs) && process.exitStatus() == QProcess::NormalExit;
    m_exitCode = process.exitCode();
    m_output = QString::fromUtf8(process.readAllStandardOutput());
    m_errors = QString::fromUtf8(process.readAllStandardError());
}

QString ValidatorRun::wholeLibrary()
{
    return QStringLiteral(TSA_LIBRARY_FILE);
}

QString ValidatorRun::broken(const QString& name)
{
    return QStringLiteral(TSA_BROKEN_FOLDER "/%1.so").arg(name);
}

QJsonObject ValidatorRun::json() const
{
    return QJsonDocument::fromJson(contents(m_folder + QStringLiteral(".json"))).object();
}

QByteArray ValidatorRun::junit() const
{
    return contents(m_folder + QStringLiteral(".xml"));
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
    return (m_output + m_errors).toUtf8();
}
