#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/session/PictureFile.h"
#include "host/workbench/session/RecoveryFile.h"
#include "host/workbench/window/ChangedFileBar.h"
#include "tests/support/UnusualFolder.h"
#include "tests/support/WorkbenchRun.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QSettings>
#include <QTemporaryDir>

namespace {

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// A folder that is removed when nobody watches it any more.
struct UnusualPlace
{
    explicit UnusualPlace(bool isLong)
        : path(makeUnusualFolder(folder.path(), isLong))
    {
    }

    QString file(const char* name) const { return path + QLatin1Char('/') + text(name); }

    const QTemporaryDir folder;
    const QString path;
};

} // namespace

/// Files in folders with Chinese letters, and in those whose paths are longer than 260 characters.
class FileNamesTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTakeFilesFromTheCommandLine_data() { addPlaces(); }
    void shouldTakeFilesFromTheCommandLine();
    void shouldSaveOpenAndNoticeChanges_data() { addPlaces(); }
    void shouldSaveOpenAndNoticeChanges();
    void shouldRecover_data() { addPlaces(); }
    void shouldRecover();

private:
    static void addPlaces();

    const TestSettings m_settings;
};

void FileNamesTest::addPlaces()
{
    QTest::addColumn<bool>("isLong");
    QTest::newRow("Chinese letters") << false;
    QTest::newRow("long path") << true;
}

void FileNamesTest::shouldTakeFilesFromTheCommandLine()
{
    QFETCH(bool, isLong);
    const UnusualPlace place(isLong);
    const QString project = place.file("工程.json");
    QVERIFY(QFile::copy(sampleProject(), project));
    QVERIFY(writeFile(place.file("脚本.script"), "expect shown\n"
                                                 "picture \"图片\"\n"
                                                 "save \"另存.json\"\n"
                                                 "open \"另存.json\"\n"
                                                 "expect shown\n"));
    const QString recording = place.file("记录.jsonl");
    const ProgramRun run = runWorkbench(
        {text("--project"), project, text("--script"), place.file("脚本.script"), text("--junit"),
         place.file("结果.xml"), text("--pictures"), place.file("图片"), text("--trace"),
         place.file("日志.txt"), text("--record"), recording});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    for (const char* name : {"另存.json", "结果.xml", "日志.txt", "记录.jsonl"})
        QVERIFY2(QFileInfo(place.file(name)).size() > 0, name);
    const QFileInfoList pictures = QDir(place.file("图片")).entryInfoList(QDir::Files);
    QCOMPARE(pictures.size(), 1);
    QVERIFY(!QImage(pictures.first().filePath()).isNull());

    const ProgramRun again = runWorkbench({text("--replay"), recording});
    QVERIFY2(again.exitCode == 0, qPrintable(again.errors));
}

void FileNamesTest::shouldSaveOpenAndNoticeChanges()
{
    QFETCH(bool, isLong);
    const UnusualPlace place(isLong);
    WorkbenchUnderTest test;
    const QString path = place.file("工程.json");
    QString problem;
    QVERIFY2(test.window.files().save(path, problem), qPrintable(problem));
    QVERIFY(test.window.windowTitle().startsWith(text("工程.json")));
    test.action(ActionId::NewProject)->trigger();
    QVERIFY2(test.window.files().open(path, problem), qPrintable(problem));
    QCOMPARE(test.store().snapshot().processors.size(), 4);

    QVERIFY(!test.window.files().bar()->isVisible());
    QVERIFY(writeFile(path, contentOf(path) + '\n'));
    QTRY_VERIFY(test.window.files().bar()->isVisible());
    QVERIFY(QFile::remove(path));
    QTRY_VERIFY(test.window.files().bar()->text().contains(text("removed")));

    const QString picture = place.file("图片.png");
    for (int round = 0; round < 2; ++round)
        QVERIFY2(savePicture(test.window.grab(), picture, problem), qPrintable(problem));
    QVERIFY(!QImage(picture).isNull());
}

void FileNamesTest::shouldRecover()
{
    QFETCH(bool, isLong);
    const UnusualPlace place(isLong);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, place.path);
    QString problem;
    RecoveryFile copy;
    QVERIFY(copy.path().startsWith(place.path));
    const QString project = place.file("工程.json");
    QVERIFY2(copy.write({project, {}, QDateTime::currentDateTime()}, smallProject(), problem),
             qPrintable(problem));
    // Another program leaves it alone while it is locked.
    QVERIFY(RecoveryFile::findLeft().empty());
    QCOMPARE(copy.note().path, project);
    const auto recovered = copy.read(problem);
    QVERIFY2(recovered, qPrintable(problem));
    QCOMPARE(recovered->processors.size(), 4);
    copy.remove();
    QCOMPARE(QDir(RecoveryFile::folder()).entryList(QDir::Files), QStringList());
}

TSA_TEST_MAIN(FileNamesTest)

#include "tst_file_names.moc"
