#include "Interface/ProjectLimits.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/project/ProjectChecks.h"
#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/session/RecoveryFile.h"
#include "host/workbench/trace/TraceFile.h"
#include "host/workbench/window/RecordsModel.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTextDocument>
#include <QTimer>
#include <QWindow>

namespace {

/// A project that has all that the checks allow, in texts that take as many bytes as they can.
Project largestProject()
{
    const QString text(ProjectRanges::kMaxNameLength, QChar(1));
    Project project;
    quint32 n = 0;
    while (project.groups.size() < ProjectRanges::kMaxGroups)
        project.groups.append({sampleId(++n), text, -1, 1, {}});
    while (project.processors.size() < ProjectLimits::kMaxProcessors) {
        ProcessorNode node = unusualProcessor(++n, 1);
        node.name = node.hostText14 = node.hostText24 = text;
        project.processors.append(node);
    }
    while (project.deviceSets.size() < ProjectRanges::kMaxDeviceSets)
        project.deviceSets.append({{toGuid(sampleId(++n)), 1, 2}, text});
    const QString name(IpList::kMaxNameLength, QChar(1));
    while (project.ipList.size() < ProjectLimits::kMaxIpEntries)
        project.ipList.append({0x0A000000 + ++n, name});
    return project;
}

} // namespace

/// Opening and saving projects by the window.
class WorkbenchFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepTheProjectWhenAFileIsDamaged();
    void shouldSaveAndRemember();
    void shouldAskBeforeChangesAreDiscarded();
    void shouldShowNamesAsTheyAre();
    void shouldSaveNothingOverTheTrace();
    void shouldSaveAndRecoverTheLargestProject();

private:
    const TestSettings m_settings;
};

void WorkbenchFilesTest::shouldKeepTheProjectWhenAFileIsDamaged()
{
    WorkbenchUnderTest test;
    const QString path = m_settings.filePath(QStringLiteral("damaged.json"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("{\"version\": 1,\n\"processors\": [") > 0);
    file.close();
    QString problem;
    QVERIFY(!test.window.files().open(path, problem));
    QVERIFY2(problem.contains(QStringLiteral("line 2, column ")), qPrintable(problem));
    QCOMPARE(test.store().snapshot().processors.size(), 4);
    QVERIFY(test.window.files().path().isEmpty());
}

void WorkbenchFilesTest::shouldSaveAndRemember()
{
    WorkbenchUnderTest test;
    const QString path = m_settings.filePath(QStringLiteral("saved.json"));
    test.store().addProcessors(QUuid(), 1);
    QVERIFY(test.window.isWindowModified());
    QString problem;
    QVERIFY2(test.window.files().save(path, problem), qPrintable(problem));
    QVERIFY(!test.window.isWindowModified());
    QVERIFY(test.window.windowTitle().startsWith(QStringLiteral("saved.json")));
    QCOMPARE(test.window.actions().recentMenu()->actions().first()->text(),
             QDir::toNativeSeparators(path));

    test.action(ActionId::NewProject)->trigger();
    QVERIFY(test.store().snapshot().processors.isEmpty());
    test.window.actions().recentMenu()->actions().first()->trigger();
    QCOMPARE(test.store().snapshot().processors.size(), 5);
    test.store().addProcessors(QUuid(), 1);
    test.action(ActionId::SaveProject)->trigger();
    QCOMPARE(loadProject(path, problem)->processors.size(), 6);
    QVERIFY(!test.window.files().save(QStringLiteral("/nowhere/x.json"), problem));
    QCOMPARE(test.window.files().path(), path);
}

void WorkbenchFilesTest::shouldAskBeforeChangesAreDiscarded()
{
    WorkbenchUnderTest test;
    test.window.files().setAskBeforeLoss(true);
    test.store().addProcessors(QUuid(), 1);
    int asked = 0;
    const auto answer = [&](QMessageBox::StandardButton button) {
        QTimer::singleShot(0, &test.window, [&asked, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            ++asked;
            box->button(button)->click();
        });
    };
    answer(QMessageBox::Cancel);
    test.action(ActionId::NewProject)->trigger();
    QCOMPARE(test.store().snapshot().processors.size(), 5);
    answer(QMessageBox::Cancel);
    QVERIFY(!test.window.close());
    answer(QMessageBox::Discard);
    test.action(ActionId::NewProject)->trigger();
    QCOMPARE(asked, 3);
    QVERIFY(test.store().snapshot().processors.isEmpty());
    QVERIFY(test.window.close());
}

void WorkbenchFilesTest::shouldShowNamesAsTheyAre()
{
    WorkbenchUnderTest test;
#ifdef Q_OS_WIN // Windows refuses names with *, < or >.
    const QString fileName = QStringLiteral("a[] & b.json");
#else
    const QString fileName = QStringLiteral("a[*] & <b>b.json");
#endif
    QString problem;
    QVERIFY2(test.window.files().save(m_settings.filePath(fileName), problem), qPrintable(problem));
    const auto title = [&test] { return test.window.windowHandle()->title(); };
    QVERIFY2(title().startsWith(fileName + QStringLiteral(" - ")), qPrintable(title()));
    test.store().addProcessors(QUuid(), 1);
    QVERIFY2(title().startsWith(fileName + QStringLiteral("* - ")), qPrintable(title()));
    const QString shown = test.window.actions().recentMenu()->actions().first()->text();
    QVERIFY2(shown.endsWith(QString(fileName).replace(QStringLiteral("&"), QStringLiteral("&&"))),
             qPrintable(shown));

    const QString name = QStringLiteral("<b>Stage</b>");
    test.store().renameProcessor(sampleId(12), name);
    const auto* records = test.window.findChild<RecordsModel*>();
    const QString tip = records->indexOf(sampleId(12)).data(Qt::ToolTipRole).toString();
    QTextDocument document;
    document.setHtml(tip);
    QVERIFY(Qt::mightBeRichText(tip));
    QCOMPARE(document.toPlainText(), name);
}

void WorkbenchFilesTest::shouldSaveNothingOverTheTrace()
{
    WorkbenchUnderTest test;
    const QString path = m_settings.filePath(QStringLiteral("trace.txt"));
    TraceFile trace(test.session.trace(), path);
    QString problem;
    QVERIFY2(trace.open(problem), qPrintable(problem));
    test.window.files().addInUse(path);
#ifdef Q_OS_WIN // Qt makes shortcuts there, which are files of their own; letters have no case.
    const QString other = m_settings.filePath(QStringLiteral("TRACE.TXT"));
#else
    const QString other = m_settings.filePath(QStringLiteral("link.json"));
    QVERIFY(QFile::link(path, other));
#endif
    for (const QString& file : {path, other}) {
        QVERIFY(!test.window.files().save(file, problem));
        QCOMPARE(problem, QDir::toNativeSeparators(file)
                              + QStringLiteral(
                                  " cannot be written: the workbench writes something else there"));
    }
}

void WorkbenchFilesTest::shouldSaveAndRecoverTheLargestProject()
{
    const Project project = largestProject();
    QVERIFY(!checkProject(project));
    QString problem;
    RecoveryFile copy;
    QVERIFY2(copy.write({QStringLiteral("/large.json"), {}, QDateTime::currentDateTime()}, project,
                        problem),
             qPrintable(problem));
    QVERIFY(QFileInfo(copy.path()).size() > 32 * 1024 * 1024);
    const auto recovered = copy.read(problem);
    QVERIFY2(recovered, qPrintable(problem));
    QCOMPARE(recovered->deviceSets.size(), ProjectRanges::kMaxDeviceSets);
    QCOMPARE(recovered->processors.last().hostText24, project.processors.last().hostText24);
    const QString path = m_settings.filePath(QStringLiteral("large.json"));
    QVERIFY2(saveProject(project, path, problem), qPrintable(problem));

    // A larger one can only come out of a file.
    Project tooLarge;
    tooLarge.addGroup({sampleId(1), QString(), -1, 1, {}});
    tooLarge.groups[0].name.fill(QChar(1), kMaxProjectFileSize / 6);
    QVERIFY(!copy.write({}, tooLarge, problem));
    QVERIFY2(problem.contains(QStringLiteral("larger than 64 MiB")), qPrintable(problem));
    QVERIFY2(copy.read(problem), "the former copy is kept");
    QVERIFY(!saveProject(tooLarge, path, problem));
    QVERIFY2(problem.contains(QStringLiteral("larger than 64 MiB")), qPrintable(problem));
    QVERIFY2(loadProject(path, problem), "the former file is kept");
    copy.remove();
}

TSA_TEST_MAIN(WorkbenchFilesTest)

#include "tst_workbench_files.moc"
