#include "host/workbench/project/ProjectJson.h"

#include "Interface/ProjectLimits.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/JsonLocator.h"
#include "host/workbench/project/ProjectChecks.h"
#include "host/workbench/project/RecordFields.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

namespace {

struct ProjectJsonMessages
{
    Q_DECLARE_TR_FUNCTIONS(ProjectJson)
};

using Problem = std::optional<JsonProblem>;

/// How many characters of a key a message shows.
constexpr int kKeyShown = 60;

QString located(const QByteArray& json, int offset, const QString& reason)
{
    const TextPosition position = textPosition(json, offset);
    return ProjectJsonMessages::tr("line %1, column %2: %3")
        .arg(position.line)
        .arg(position.column)
        .arg(reason);
}

/// Returns the path as text, such as "processors[3].number".
QString pathText(const QStringList& path)
{
    QString text;
    for (const QString& step : path) {
        bool isNumber = false;
        step.toInt(&isNumber);
        if (isNumber)
            text += QLatin1Char('[') + step + QLatin1Char(']');
        else
            text += (text.isEmpty() ? QString() : QStringLiteral(".")) + step;
    }
    return text;
}

template <typename Item, typename ReadItem>
void readList(FieldReader& reader, const char* name, QList<Item>& items, Problem& problem,
              const ReadItem& readItem)
{
    const auto json = reader.take(name);
    if (!json)
        return;
    if (!json->isArray())
        reader.report(reader.pathTo(name), ProjectJsonMessages::tr("a list is expected"));
    const QJsonArray array = json->toArray();
    for (int at = 0; !problem && at < array.size(); ++at) {
        FieldReader fields(array.at(at), reader.pathTo(name) + QStringList(QString::number(at)),
                           problem);
        Item item{};
        readItem(item, fields);
        fields.refuseUnknown();
        items.append(item);
    }
}

void readIpList(FieldReader& reader, IpList& list)
{
    QStringList texts;
    reader("ipList", texts);
    for (int at = 0; at < texts.size(); ++at) {
        const QStringList path = reader.pathTo("ipList") + QStringList(QString::number(at));
        const auto entry = ipEntryOfText(texts.at(at));
        if (!entry) {
            reader.report(path, ProjectJsonMessages::tr("an entry such as %1 is expected")
                                    .arg(QLatin1String("192.168.0.10(Left wing)")));
            return;
        }
        switch (list.append(*entry)) {
        case IpRefusal::None:
            continue;
        case IpRefusal::Duplicate:
            reader.report(path, ProjectJsonMessages::tr("address %1 occurs twice")
                                    .arg(dottedAddress(entry->address)));
            return;
        case IpRefusal::NameTooLong:
            reader.report(path, ProjectJsonMessages::tr("the name has more than %1 characters")
                                    .arg(IpList::kMaxNameLength));
            return;
        default:
            reader.report(path, ProjectJsonMessages::tr("the IP list holds at most %1 entries")
                                    .arg(ProjectLimits::kMaxIpEntries));
            return;
        }
    }
}

QStringList ipListTexts(const IpList& list)
{
    QStringList texts;
    for (const IpEntry& entry : list.entries())
        texts.append(ipEntryText(entry));
    return texts;
}

/// Checks the version first, because a newer file may contain anything.
void readVersion(FieldReader& reader)
{
    qint32 version = 0;
    reader("version", version);
    if (version > kProjectFileVersion)
        reader.report(
            reader.pathTo("version"),
            ProjectJsonMessages::tr("the file has version %1; this program reads up to version %2")
                .arg(version)
                .arg(kProjectFileVersion));
    else if (version < 1)
        reader.report(reader.pathTo("version"),
                      ProjectJsonMessages::tr("the version number is missing"));
}

Project readProject(const QJsonDocument& document, Problem& problem)
{
    Project project;
    FieldReader reader(document.isObject() ? QJsonValue(document.object())
                                           : QJsonValue(document.array()),
                       {}, problem);
    readVersion(reader);
    readList(reader, "groups", project.groups, problem,
             [](auto& item, auto& fields) { visitGroupFields(item, fields); });
    readList(reader, "processors", project.processors, problem,
             [](auto& item, auto& fields) { visitProcessorFields(item, fields); });
    readList(reader, "deviceSets", project.deviceSets, problem,
             [](auto& item, auto& fields) { visitDeviceSetFields(item, fields); });
    reader("currentDeviceSet", project.currentDeviceSet);
    reader("currentProcessor", project.currentProcessor);
    readIpList(reader, project.ipList);
    if (const auto answers = reader.take("answers")) {
        FieldReader fields(*answers, reader.pathTo("answers"), problem);
        visitAnswerFields(project.answers, fields);
        fields.refuseUnknown();
    }
    readList(reader, "faults", project.faults, problem,
             [](auto& item, auto& fields) { visitFaultFields(item, fields); });
    if (const auto network = reader.take("network")) {
        FieldReader fields(*network, reader.pathTo("network"), problem);
        visitNetworkFields(project.network, fields);
        fields.refuseUnknown();
    }
    reader.refuseUnknown();
    if (!problem)
        problem = checkProject(project);
    return project;
}

template <typename List, typename Visit>
QJsonArray writeList(const List& items, const Visit& visit)
{
    QJsonArray array;
    for (const auto& item : items) {
        FieldWriter writer;
        visit(item, writer);
        array.append(writer.object);
    }
    return array;
}

} // namespace

std::optional<Project> parseProject(const QByteArray& json, QString& problem)
{
    if (json.size() > kMaxProjectFileSize) {
        problem = ProjectJsonMessages::tr("the file is larger than %1 MiB")
                      .arg(kMaxProjectFileSize >> 20);
        return std::nullopt;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        problem = located(json, error.offset, error.errorString());
        return std::nullopt;
    }
    if (const auto repeated = locateRepeatedMember(json)) {
        const QString key = repeated->key.left(kKeyShown).simplified();
        problem = located(json, repeated->offset,
                          ProjectJsonMessages::tr("%1: %2").arg(
                              key, ProjectJsonMessages::tr("this field occurs twice")));
        return std::nullopt;
    }
    Problem found;
    Project project = readProject(document, found);
    if (!found)
        return project;
    const QString place = pathText(found->path);
    const QString reason = place.isEmpty()
                               ? found->reason
                               : ProjectJsonMessages::tr("%1: %2").arg(place, found->reason);
    problem = located(json, locateJsonValue(json, found->path), reason);
    return std::nullopt;
}

std::optional<Project> loadProject(const QString& path, QString& problem)
{
    const QString shown = QDir::toNativeSeparators(path);
    QFile file(path);
    const QFileInfo existing(path);
    // Opening a pipe could block.
    if (existing.exists() && !existing.isFile()) {
        problem =
            ProjectJsonMessages::tr("%1 cannot be read: %2")
                .arg(shown, existing.isDir() ? ProjectJsonMessages::tr("it is a directory")
                                             : ProjectJsonMessages::tr("it is not a regular file"));
        return std::nullopt;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        problem = ProjectJsonMessages::tr("%1 cannot be read: %2").arg(shown, file.errorString());
        return std::nullopt;
    }
    // Reading one byte more than is allowed shows that the file is too long, whatever size it
    // reports.
    const QByteArray json = file.read(kMaxProjectFileSize + 1);
    if (file.error() != QFile::NoError) {
        problem = ProjectJsonMessages::tr("%1 cannot be read: %2").arg(shown, file.errorString());
        return std::nullopt;
    }
    QString reason;
    auto project = parseProject(json, reason);
    if (!project)
        problem = ProjectJsonMessages::tr("%1, %2").arg(shown, reason);
    return project;
}

QByteArray projectToJson(const Project& project)
{
    FieldWriter writer;
    writer("version", kProjectFileVersion);
    writer("currentDeviceSet", project.currentDeviceSet);
    writer("currentProcessor", project.currentProcessor);
    writer("ipList", ipListTexts(project.ipList));
    FieldWriter answers;
    visitAnswerFields(project.answers, answers);
    FieldWriter network;
    visitNetworkFields(project.network, network);
    QJsonObject& object = writer.object;
    object.insert(QStringLiteral("answers"), answers.object);
    object.insert(QStringLiteral("network"), network.object);
    object.insert(QStringLiteral("groups"),
                  writeList(project.groups, [](const auto& item, auto& fields) {
                      visitGroupFields(item, fields);
                  }));
    object.insert(QStringLiteral("processors"),
                  writeList(project.processors, [](const auto& item, auto& fields) {
                      visitProcessorFields(item, fields);
                  }));
    object.insert(QStringLiteral("deviceSets"),
                  writeList(project.deviceSets, [](const auto& item, auto& fields) {
                      visitDeviceSetFields(item, fields);
                  }));
    // Without faults, programs that do not know them read the file, too.
    if (!project.faults.isEmpty()) {
        object.insert(QStringLiteral("faults"),
                      writeList(project.faults, [](const auto& item, auto& fields) {
                          visitFaultFields(item, fields);
                      }));
    }
    return QJsonDocument(object).toJson();
}

bool saveProject(const Project& project, const QString& path, QString& problem)
{
    const QString shown = QDir::toNativeSeparators(path);
    const QFileInfo existing(path);
    if (existing.exists() && !existing.isFile()) {
        problem =
            ProjectJsonMessages::tr("%1 cannot be written: it is not a regular file").arg(shown);
        return false;
    }
    QSaveFile file(path);
    const QByteArray json = projectToJson(project);
    if (json.size() > kMaxProjectFileSize) {
        problem = ProjectJsonMessages::tr("%1 cannot be written: the file is larger than %2 MiB")
                      .arg(shown)
                      .arg(kMaxProjectFileSize >> 20);
        return false;
    }
    // commit() ignores a failure to write buffered data; flush() reports it.
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.flush()
        || !file.commit()) {
        problem =
            ProjectJsonMessages::tr("%1 cannot be written: %2").arg(shown, file.errorString());
        return false;
    }
    return true;
}
