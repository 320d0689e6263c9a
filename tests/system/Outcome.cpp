#include "tests/system/Outcome.h"

#include "tests/system/Screen.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>
#include <QUuid>

QStringList requests(const QStringList& calls)
{
    static const QRegularExpression question(
        QStringLiteral("^(Get|Is|Can|Uses|Check|Accept|ShowProcessorMore|ShowNodeMore)\\w*\\("));
    QStringList found;
    for (const QString& call : calls) {
        if (!question.match(call).hasMatch())
            found.append(call);
    }
    return found;
}

QString projectText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Stuck(QStringLiteral("%1 cannot be read").arg(path));
    const QJsonObject project = QJsonDocument::fromJson(file.readAll()).object();
    QMap<QString, QStringList> names; // by group
    const QJsonArray processors = project[QStringLiteral("processors")].toArray();
    for (const QJsonValue& processor : processors)
        names[QUuid(processor[QStringLiteral("groupId")].toString()).toString()].append(
            processor[QStringLiteral("name")].toString());
    QStringList texts;
    const QJsonArray groups = project[QStringLiteral("groups")].toArray();
    for (const QJsonValue& group : groups) {
        const QStringList members = names[QUuid(group[QStringLiteral("id")].toString()).toString()];
        texts.append(QStringLiteral("%1[%2]").arg(group[QStringLiteral("name")].toString(),
                                                  members.join(QStringLiteral(","))));
    }
    return (texts + names[QUuid().toString()]).join(QStringLiteral(","));
}

QString pickedProcessor(const char* name, const char* previous)
{
    return QStringLiteral("ReportSelection(<%1>, 1: [<%1>], 0, <%2>)")
        .arg(QString::fromUtf8(name), QString::fromUtf8(previous));
}

QString pickedGroup(const char* name, const char* previous)
{
    return QStringLiteral("ReportSelection(<%1>, 0: [], 1, <%2>)")
        .arg(QString::fromUtf8(name), QString::fromUtf8(previous));
}
