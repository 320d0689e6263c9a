#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/FieldTexts.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/project/ProjectJson.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/SampleRecords.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <limits>

#ifdef Q_OS_UNIX
#include "tests/workbench/FileSizeLimit.h"

#include <sys/stat.h>
#endif

namespace {

QByteArray fileContent(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), static_cast<qint64>(content.size()));
}

/// The path as a user reads it.
QString shown(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

class ProjectFileTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepEveryField();
    void shouldKeepNumbersBeyond53Bits();
    void shouldGiveMissingFieldsTheirDefaults();
    void shouldReadTheShippedProjects();
    void shouldRefuse_data();
    void shouldRefuse();
    void shouldRefuseMoreThan255Processors();
    void shouldRefuseMoreThan255IpEntries();
    void shouldRefuseTooManyGroups();
#ifdef Q_OS_UNIX // Windows keeps its pipes in a folder of their own.
    void shouldNotWaitForAPipe();
#endif
    void shouldRefuseAnOversizedFile();
    void shouldRefuseEveryTruncation();
    void shouldNameTheFileAndLeaveItAsItIs();
    void shouldNotReadADirectoryOrAMissingFile();
    void shouldReplaceTheOldFile();
#ifdef Q_OS_UNIX // Windows limits no file.
    void shouldKeepTheOldFileWhenTheDiskIsFull();
#endif
    void shouldReportWhyItCannotSave_data();
    void shouldReportWhyItCannotSave();
};

void ProjectFileTest::shouldKeepEveryField()
{
    const Project before = unusualProject();
    QString problem;
    const auto after = parseProject(projectToJson(before), problem);
    QVERIFY2(after, qPrintable(problem));
    QCOMPARE(projectToJson(*after), projectToJson(before));

    const QList<FieldText> defaults = fieldTexts(ProcessorNode());
    QCOMPARE(defaults.size(), 28);
    for (int at = 0; at < before.processors.size(); ++at) {
        const QList<FieldText> expected = fieldTexts(before.processors.at(at));
        QCOMPARE(fieldTexts(after->processors.at(at)), expected);
        for (int field = 0; at == 0 && field < defaults.size(); ++field)
            QVERIFY2(expected.at(field).value != defaults.at(field).value,
                     qPrintable(expected.at(field).name));
    }
    for (int at = 0; at < before.groups.size(); ++at)
        QCOMPARE(fieldTexts(after->groups.at(at)), fieldTexts(before.groups.at(at)));
    QCOMPARE(after->deviceSets.at(1).info.hostAttribute3, 0xFFFFFFFFU);
    QCOMPARE(fromGuid(after->currentDeviceSet), sampleId(102));
    QCOMPARE(after->currentProcessor, sampleId(12));
    QCOMPARE(after->ipList.size(), awkwardNames().size());
    QVERIFY(after->ipList == before.ipList);
    QCOMPARE(after->answers.lanUsbAddresses, before.answers.lanUsbAddresses);
    QCOMPARE(after->answers.detectResult, 0xE0832005U);
    QVERIFY(!after->answers.frontPanelHighlightAvailable);
    QVERIFY(!after->answers.uniqueNames);
    QCOMPARE(after->answers.deleteSpares, 2);
    QVERIFY(after->answers.hostReply == HostReply::SecondLater);
    QVERIFY(after->answers.eventsOneByOne);
    QVERIFY(!after->answers.contextMenuEntries);
    QVERIFY(after->litFrontPanels.isEmpty());
    QVERIFY(after->network == before.network);
    QCOMPARE(after->answers.ipCheckCode, 0xE0832003U);
    QCOMPARE(after->answers.ipCheckCount, 3);
    QCOMPARE(after->answers.readOnlineCode, 0xE0831028U);
    QCOMPARE(after->answers.importCode, 0xE0831033U);
}

void ProjectFileTest::shouldKeepNumbersBeyond53Bits()
{
    Project project;
    project.processors = {unusualProcessor(1, 0), unusualProcessor(2, 0)};
    project.processors[0].hostAttribute8 = 9007199254740993;
    project.processors[1].hostAttribute8 = std::numeric_limits<qint64>::min();
    QString problem;
    const auto after = parseProject(projectToJson(project), problem);
    QVERIFY2(after, qPrintable(problem));
    QCOMPARE(after->processors.at(0).hostAttribute8, 9007199254740993);
    QCOMPARE(after->processors.at(1).hostAttribute8, std::numeric_limits<qint64>::min());
}

void ProjectFileTest::shouldGiveMissingFieldsTheirDefaults()
{
    QString problem;
    const auto project = parseProject(
        R"({"version":1,"processors":[{"id":"5b2d1f0c-0000-4000-8000-000000000001"}]})", problem);
    QVERIFY2(project, qPrintable(problem));
    QList<FieldText> expected = fieldTexts(ProcessorNode());
    expected[0].value = QStringLiteral("5b2d1f0c-0000-4000-8000-000000000001");
    QCOMPARE(fieldTexts(project->processors.first()), expected);
    QCOMPARE(project->answers.nameMaxBytes, HandlerAnswers().nameMaxBytes);
}

void ProjectFileTest::shouldReadTheShippedProjects()
{
    const QString folder = QStringLiteral(WORKBENCH_PROJECTS "/");
    QString problem;
    const auto sample = loadProject(folder + QStringLiteral("sample.json"), problem);
    QVERIFY2(sample, qPrintable(problem));
    QCOMPARE(sample->groups.size(), 6);
    QCOMPARE(sample->processors.size(), 120);
    const auto count = [&](auto test) {
        return std::count_if(sample->processors.begin(), sample->processors.end(), test);
    };
    QVERIFY(count([](const ProcessorNode& node) { return node.reachedByIp; }) > 0);
    QVERIFY(count([](const ProcessorNode& node) { return !node.reachedByIp; }) > 0);
    QVERIFY(count([](const ProcessorNode& node) { return node.redundancyMode == 2; }) > 0);
    QVERIFY(count([](const ProcessorNode& node) { return !node.online; }) > 0);
    QVERIFY(count([](const ProcessorNode& node) { return node.groupId.isNull(); }) > 0);
    QVERIFY(count([](const ProcessorNode& node) { return node.name.size() > 80; }) > 0);
    QVERIFY(count([](const ProcessorNode& node) { return node.ipAddress == kNoProcessorAddress; })
            > 0);
    const auto empty = loadProject(folder + QStringLiteral("empty.json"), problem);
    QVERIFY2(empty, qPrintable(problem));
    QCOMPARE(empty->groups.size(), 0);
    QCOMPARE(empty->processors.size(), 0);
}

void ProjectFileTest::shouldRefuse_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char* name, const QByteArray& json, const char* problem) {
        QTest::newRow(name) << json << QString::fromUtf8(problem);
    };
    row("empty file", "", "line 1, column 1: illegal value");
    row("no JSON", "hello", "line 1, column 2: illegal value");
    row("broken syntax", "{\n \"version\": 1,\n \"groups\" []\n}",
        "line 3, column 12: missing name separator");
    row("truncated", "{\n \"version\": 1,\n \"groups\": [",
        "line 3, column 13: unterminated array");
    row("no object", "[1]", "line 1, column 1: an object is expected here");
    row("no version", "{\n}", "line 1, column 1: version: the version number is missing");
    row("newer version", "{\n  \"groups\": 3,\n  \"version\": 2}",
        "line 3, column 14: version: the file has version 2; this program reads up to version 1");
    row("version of another type", R"({"version": "1"})",
        "line 1, column 13: version: a whole number from -2147483648 to 2147483647 is expected");
    row("unknown field", "{\"version\": 1,\n \"gruops\": []}",
        "line 2, column 12: gruops: this field is not known");
    row("list of another type", "{\"version\": 1,\n \"groups\": {}}",
        "line 2, column 12: groups: a list is expected");
    row("record of another type", "{\"version\": 1,\n \"groups\": [\n7]}",
        "line 3, column 1: groups[0]: an object is expected here");
    row("text for a number",
        "{\"version\": 1, \"processors\": [\n"
        "{\"id\": \"00000001-0000-0000-0000-000000000001\"},\n"
        "{\"id\": \"00000001-0000-0000-0000-000000000002\", \"number\": \"2\"}]}",
        "line 3, column 58: processors[1].number: a whole number from -2147483648 to 2147483647 is "
        "expected");
    row("fraction for a number",
        "{\"version\": 1, \"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"number\": 2.5}]}",
        "line 2, column 11: processors[0].number: a whole number from -2147483648 to 2147483647 is "
        "expected");
    row("number too large",
        "{\"version\": 1, \"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"hostAttribute21\": 65536}]}",
        "line 2, column 20: processors[0].hostAttribute21: a whole number from 0 to 65535 is "
        "expected");
    row("64 bits as a number",
        "{\"version\": 1, \"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"hostAttribute8\": 1}]}",
        "line 2, column 19: processors[0].hostAttribute8: a whole number of 64 bits, written as a "
        "text, is expected");
    row("number for a flag",
        "{\"version\": 1, \"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"online\": 1}]}",
        "line 2, column 11: processors[0].online: true or false is expected");
    row("number for a text",
        "{\"version\": 1, \"groups\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"name\": 1}]}",
        "line 2, column 9: groups[0].name: a text is expected");
    row("three numbers of four",
        "{\"version\": 1, \"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"hostAttribute10\": [1, 2, 3]}]}",
        "line 2, column 20: processors[0].hostAttribute10: a list of four numbers is expected");
    row("bad address",
        "{\"version\": 1, \"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"ipAddress\": \"192.168.0.256\"}]}",
        "line 2, column 14: processors[0].ipAddress: an address such as 192.168.0.1 is expected");
    row("bad identity", "{\"version\": 1, \"groups\": [\n{\"id\": \"seven\"}]}",
        "line 2, column 8: groups[0].id: an identity such as 5b2d1f0c-0000-4000-8000-000000000001 "
        "is "
        "expected");
    row("no identity", "{\"version\": 1, \"groups\": [\n{\"name\": \"A\"}]}",
        "line 2, column 1: groups[0]: the record has no identity");
    row("identity twice",
        "{\"version\": 1,\n\"groups\": [{\"id\": \"00000001-0000-0000-0000-000000000001\"}],\n"
        "\"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\"}]}",
        "line 3, column 23: processors[0].id: identity 00000001-0000-0000-0000-000000000001 occurs "
        "twice");
    row("unknown group",
        "{\"version\": 1,\n\"processors\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
        "\"groupId\": \"00000001-0000-0000-0000-000000000009\"}]}",
        "line 3, column 12: processors[0].groupId: there is no group "
        "00000001-0000-0000-0000-000000000009");
    row("unknown current processor",
        "{\"version\": 1,\n\"currentProcessor\": \"00000001-0000-0000-0000-000000000009\"}",
        "line 2, column 21: currentProcessor: there is no processor "
        "00000001-0000-0000-0000-000000000009");
    row("unknown device set",
        "{\"version\": 1,\n\"currentDeviceSet\": \"00000001-0000-0000-0000-000000000009\"}",
        "line 2, column 21: currentDeviceSet: there is no device set "
        "00000001-0000-0000-0000-000000000009");
    row("bad IP entry", "{\"version\": 1, \"ipList\": [\"10.0.0.1(A)\",\n \"10.0.0(B)\"]}",
        "line 2, column 2: ipList[1]: an entry such as 192.168.0.10(Left wing) is expected");
    row("IP address twice", "{\"version\": 1, \"ipList\": [\"10.0.0.1(A)\",\n \"10.0.0.1()\"]}",
        "line 2, column 2: ipList[1]: address 10.0.0.1 occurs twice");
    row("IP entry with a long name",
        QByteArray(R"({"version": 1, "ipList": ["10.0.0.1(@"]})")
            .replace('@', QByteArray(257, 'x')),
        "line 1, column 27: ipList[0]: the name has more than 256 characters");
    row("bad answer", "{\"version\": 1, \"answers\": {\n \"lanUsbAddresses\": [\"10.0.0.1\", 4]}}",
        "line 2, column 34: answers.lanUsbAddresses[1]: an address such as 192.168.0.1 is "
        "expected");
    row("bad reply", "{\"version\": 1, \"answers\": {\n \"hostReply\": \"never\"}}",
        "line 2, column 15: answers.hostReply: one of whenRaised, beforeReturn, afterReturn, "
        "secondLater is expected");
    row("field twice", "{\"version\": 1,\n \"groups\": [],\n \"groups\": []}",
        "line 3, column 2: groups: this field occurs twice");
    row("field of a record twice",
        "{\"version\": 1, \"groups\": [{\"id\": \"00000001-0000-0000-0000-000000000001\"},\n"
        "{\"id\": \"00000001-0000-0000-0000-000000000002\", \"name\": \"a:{[\", \"id\": 1}]}",
        "line 2, column 64: id: this field occurs twice");
    row("field twice, once escaped", R"({"version": 1, "groups": [], "gr\u006fups": []})",
        "line 1, column 30: groups: this field occurs twice");
    row("long key twice",
        QByteArray(R"({"version": 1, "@": 1, "@": 2})").replace("@", QByteArray(100, 'k')),
        "line 1, column 123: " + QByteArray(60, 'k') + ": this field occurs twice");
    row("key of two lines twice", R"({"version": 1, "a\nb": 1, "a\nb": 2})",
        "line 1, column 27: a b: this field occurs twice");
    row("pause too long", "{\"version\": 1, \"answers\": {\n \"detectPauseMs\": 10001}}",
        "line 2, column 19: answers.detectPauseMs: a whole number from 0 to 10000 is expected");
    row("negative pause", "{\"version\": 1, \"answers\": {\n \"detectPauseMs\": -1}}",
        "line 2, column 19: answers.detectPauseMs: a whole number from 0 to 10000 is expected");
    row("port of others", "{\"version\": 1, \"network\": {\n \"port\": 1023}}",
        "line 2, column 10: network.port: a whole number from 1024 to 65535 is expected");
    row("port as a text", "{\"version\": 1, \"network\": {\n \"port\": \"47800\"}}",
        "line 2, column 10: network.port: a whole number from -2147483648 to 2147483647 is "
        "expected");
    row("hasty probe", "{\"version\": 1, \"network\": {\n \"probeTimeoutMs\": 49}}",
        "line 2, column 20: network.probeTimeoutMs: a whole number from 50 to 10000 is expected");
    row("question an hour", "{\"version\": 1, \"network\": {\n \"aliveIntervalMs\": 3600000}}",
        "line 2, column 21: network.aliveIntervalMs: a whole number from 50 to 60000 is expected");
    row("no silence", "{\"version\": 1, \"network\": {\n \"deadTimeoutMs\": 999}}",
        "line 2, column 19: network.deadTimeoutMs: at least twice aliveIntervalMs is expected");
    row("unknown field of the network", "{\"version\": 1, \"network\": {\n \"host\": \"::\"}}",
        "line 2, column 10: network.host: this field is not known");
    row("names of any length", "{\"version\": 1, \"answers\": {\n \"nameMaxBytes\": 4097}}",
        "line 2, column 18: answers.nameMaxBytes: a whole number from 0 to 4096 is expected");
    row("long name of a group",
        QByteArray(
            "{\"version\": 1, \"groups\": [{\"id\": \"00000001-0000-0000-0000-000000000001\",\n"
            "\"name\": \"@\"}]}")
            .replace('@', QByteArray(4097, 'x')),
        "line 2, column 9: groups[0].name: the name has more than 4096 characters");
    row("long name of a processor",
        QByteArray("{\"version\": 1, \"processors\": [{\"id\": "
                   "\"00000001-0000-0000-0000-000000000001\",\n\"name\": \"@\"}]}")
            .replace('@', QByteArray(4097, 'x')),
        "line 2, column 9: processors[0].name: the name has more than 4096 characters");
    row("column counted in characters",
        "{\"version\": 1, \"x\": \"\xE5\xA4\xA7\xE5\x8E\x85\", \"y\": 1}",
        "line 1, column 21: x: this field is not known");
    row("escaped key", R"({"version": 1, "a\"b": 1})",
        "line 1, column 24: a\"b: this field is not known");
    row("bytes that are no UTF-8", "{\"version\": 1, \"x\": \"\xFF\xFE\"}",
        "line 1, column 22: invalid UTF8 string");
}

void ProjectFileTest::shouldRefuse()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, problem);
    QString found;
    QVERIFY(!parseProject(json, found));
    QCOMPARE(found, problem);
}

void ProjectFileTest::shouldRefuseMoreThan255Processors()
{
    Project project;
    for (quint32 n = 1; n <= 256; ++n)
        project.processors.append(unusualProcessor(n, 0));
    const QByteArray json = projectToJson(project);
    QString problem;
    QVERIFY(!parseProject(json, problem));
    QVERIFY2(problem.endsWith(QStringLiteral(
                 "processors[255]: a project holds at most 255 processors; this one has 256")),
             qPrintable(problem));
    project.processors.removeLast();
    QVERIFY(parseProject(projectToJson(project), problem));
}

void ProjectFileTest::shouldRefuseTooManyGroups()
{
    Project project;
    for (quint32 n = 1; n <= 1001; ++n) {
        ProcessorGroupNode group;
        group.id = sampleId(n);
        project.groups.append(group);
    }
    QString problem;
    QVERIFY(!parseProject(projectToJson(project), problem));
    QVERIFY2(problem.endsWith(QStringLiteral(
                 "groups[1000]: a project holds at most 1000 groups; this one has 1001")),
             qPrintable(problem));
    project.groups.removeLast();
    QVERIFY(parseProject(projectToJson(project), problem));
    QVERIFY(project.addGroup(ProcessorGroupNode()).isNull());
}

#ifdef Q_OS_UNIX
void ProjectFileTest::shouldNotWaitForAPipe()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR), 0);
    QString problem;
    QVERIFY(!loadProject(path, problem));
    QCOMPARE(problem, shown(path) + QStringLiteral(" cannot be read: it is not a regular file"));
}
#endif

void ProjectFileTest::shouldRefuseMoreThan255IpEntries()
{
    QStringList texts;
    for (quint32 n = 0; n < 256; ++n)
        texts.append(QLatin1Char('"') + dottedAddress(0x0A000000 + n) + QStringLiteral("()\""));
    const QString json = QStringLiteral("{\"version\": 1, \"ipList\": [%1]}");
    QString problem;
    QVERIFY(!parseProject(json.arg(texts.join(QLatin1Char(','))).toUtf8(), problem));
    QVERIFY2(problem.contains(QStringLiteral("ipList[255]: the IP list holds at most 255 entries")),
             qPrintable(problem));
    texts.removeLast();
    const auto project = parseProject(json.arg(texts.join(QLatin1Char(','))).toUtf8(), problem);
    QVERIFY2(project, qPrintable(problem));
    QCOMPARE(project->ipList.size(), 255);
}

void ProjectFileTest::shouldRefuseAnOversizedFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("large.json"));
    QByteArray content("{\"version\": 1}");
    content.append(QByteArray(static_cast<int>(kMaxProjectFileSize), ' '));
    writeFile(path, content);
    QString problem;
    QVERIFY(!loadProject(path, problem));
    QCOMPARE(problem, shown(path) + QStringLiteral(", the file is larger than 64 MiB"));
    // One byte less is read, and found to be no project at its first byte.
    content.fill('x', static_cast<int>(kMaxProjectFileSize));
    QVERIFY(!parseProject(content, problem));
    QVERIFY2(problem.contains(QStringLiteral("line 1")), qPrintable(problem));
}

void ProjectFileTest::shouldRefuseEveryTruncation()
{
    const QByteArray whole = projectToJson(unusualProject()).trimmed();
    for (int length = 0; length < whole.size(); ++length) {
        QString problem;
        QVERIFY2(!parseProject(whole.left(length), problem), qPrintable(QString::number(length)));
        QVERIFY2(problem.startsWith(QStringLiteral("line ")), qPrintable(problem));
    }
}

void ProjectFileTest::shouldNameTheFileAndLeaveItAsItIs()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("damaged.json"));
    const QByteArray content("{\"version\": 1,\n \"groups\": 5}");
    writeFile(path, content);
    QString problem;
    QVERIFY(!loadProject(path, problem));
    QCOMPARE(problem,
             shown(path) + QStringLiteral(", line 2, column 12: groups: a list is expected"));
    QCOMPARE(fileContent(path), content);
}

void ProjectFileTest::shouldNotReadADirectoryOrAMissingFile()
{
    const QTemporaryDir folder;
    QString problem;
    QVERIFY(!loadProject(folder.path(), problem));
    QCOMPARE(problem, shown(folder.path()) + QStringLiteral(" cannot be read: it is a directory"));
    const QString missing = folder.filePath(QStringLiteral("missing.json"));
    QVERIFY(!loadProject(missing, problem));
    QVERIFY2(problem.startsWith(shown(missing) + QStringLiteral(" cannot be read: ")),
             qPrintable(problem));
}

void ProjectFileTest::shouldReplaceTheOldFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("project.json"));
    QString problem;
    QVERIFY2(saveProject(unusualProject(), path, problem), qPrintable(problem));
    QVERIFY2(saveProject(smallProject(), path, problem), qPrintable(problem));
    QCOMPARE(fileContent(path), projectToJson(smallProject()));
    const QStringList files = QDir(folder.path()).entryList(QDir::Files);
    QCOMPARE(files, QStringList(QStringLiteral("project.json")));
}

#ifdef Q_OS_UNIX
void ProjectFileTest::shouldKeepTheOldFileWhenTheDiskIsFull()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("project.json"));
    QString problem;
    QVERIFY2(saveProject(smallProject(), path, problem), qPrintable(problem));
    {
        const FileSizeLimit limit(100);
        QVERIFY(!saveProject(unusualProject(), path, problem));
    }
    QVERIFY2(problem.startsWith(shown(path) + QStringLiteral(" cannot be written: ")),
             qPrintable(problem));
    QCOMPARE(fileContent(path), projectToJson(smallProject()));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files),
             QStringList(QStringLiteral("project.json")));
}
#endif

void ProjectFileTest::shouldReportWhyItCannotSave_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
#ifdef Q_OS_UNIX // A device of Windows is no path.
    QTest::newRow("device") << QStringLiteral("/dev/full")
                            << QStringLiteral("it is not a regular file");
#endif
    QTest::newRow("directory") << QDir::tempPath() << QStringLiteral("it is not a regular file");
    QTest::newRow("missing folder") << QStringLiteral("/nowhere/at/all.json") << QString();
}

void ProjectFileTest::shouldReportWhyItCannotSave()
{
    QFETCH(QString, path);
    QFETCH(QString, reason);
    QString problem;
    QVERIFY(!saveProject(smallProject(), path, problem));
    QVERIFY2(problem.startsWith(shown(path) + QStringLiteral(" cannot be written: ") + reason),
             qPrintable(problem));
}

TSA_GUILESS_TEST_MAIN(ProjectFileTest)
#include "tst_project_file.moc"
