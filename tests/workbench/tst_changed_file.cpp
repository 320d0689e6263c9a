#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/window/ChangedFileBar.h"
#include "tests/support/DialogDriver.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>

#include <functional>
#include <optional>

namespace {

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64{text.size()});
}

std::optional<Project> projectIn(const QString& path)
{
    QString problem;
    return loadProject(path, problem);
}

/// The small project with another name for processor 12.
QByteArray othersProject(const QString& name = QStringLiteral("Other"))
{
    Project project = smallProject();
    project.renameProcessor(sampleId(12), name);
    return projectToJson(project);
}

struct OwnFolder
{
    const QTemporaryDir folder;
};

/// A workbench whose project is saved in a folder of its own, which is removed when nobody watches
/// it any more.
struct SavedWorkbench : OwnFolder, WorkbenchUnderTest
{
    SavedWorkbench()
    {
        QString problem;
        QDir(folder.path()).mkdir(QStringLiteral("inner"));
        path = folder.filePath(QStringLiteral("inner/mine.json"));
        if (!window.files().save(path, problem))
            QTest::qFail(qPrintable(problem), __FILE__, __LINE__);
        saved = content(path);
    }

    ChangedFileBar& bar() { return *window.files().bar(); }
    void save()
    {
        QApplication::setActiveWindow(&window);
        QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    }
    void click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    QString path;
    QByteArray saved;
};

/// Returns a step that reads the text of a message box and closes it.
std::function<void(QWidget&)> reading(QString& text)
{
    return [&text](QWidget& box) {
        const auto* message = qobject_cast<QMessageBox*>(&box);
        text = message ? message->text() : QStringLiteral("no message box");
        QTest::keyClick(&box, Qt::Key_Escape);
    };
}

void clickInBox(QWidget& box, const char* text)
{
    clickButton(box, QString::fromLatin1(text));
}

} // namespace

/// The project's file, changed by another program.
class ChangedFileTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTellWhatHappenedToTheFile();
    void shouldIgnoreItsOwnFile();
    void shouldNeverReplaceUnknownContent_data();
    void shouldNeverReplaceUnknownContent();
    void shouldReplaceItWhenTold();
    void shouldReload();
    void shouldStayWhenTheFileIsDamaged();
    void shouldCompare();
    void shouldKeep();
    void shouldKeepOnlyWhatWasTold();
    void shouldAskAgainWhenTheFileChangesMeanwhile();

private:
    const TestSettings m_settings;
};

void ChangedFileTest::shouldTellWhatHappenedToTheFile()
{
    SavedWorkbench test;
    QVERIFY(!test.bar().isVisible());
    writeFile(test.path, othersProject());
    QTRY_VERIFY(test.bar().isVisible());
    QCOMPARE(test.bar().text(), QStringLiteral("mine.json was changed by another program."));
    writeFile(test.path, test.saved);
    QTRY_VERIFY(!test.bar().isVisible());

    // Another file takes its place, as editors save.
    const QString other = test.folder.filePath(QStringLiteral("inner/other.json"));
    for (const char* name : {"One", "Two"}) {
        writeFile(other, othersProject(QString::fromLatin1(name)));
        QVERIFY(QFile::remove(test.path) && QFile::rename(other, test.path));
        QTRY_VERIFY(test.bar().isVisible());
        test.click(test.bar().reloadButton());
        QCOMPARE(test.processor(12).name, QString::fromLatin1(name));
        QVERIFY(!test.bar().isVisible());
    }

    QVERIFY(QFile::remove(test.path));
    QTRY_VERIFY(test.bar().isVisible());
    QCOMPARE(test.bar().text(), QStringLiteral("mine.json was removed by another program."));
    QVERIFY(!test.bar().reloadButton()->isVisible());
    QVERIFY(test.window.isWindowModified());
    writeFile(test.path, othersProject(QStringLiteral("Two")));
    QTRY_VERIFY(!test.bar().isVisible());

    const QString folder = QFileInfo(test.path).absolutePath();
    QVERIFY(QDir().rename(folder, folder + QStringLiteral("-away")));
    QTRY_VERIFY(test.bar().isVisible());
    QVERIFY(QDir().rename(folder + QStringLiteral("-away"), folder));
    QTRY_VERIFY(!test.bar().isVisible());
}

void ChangedFileTest::shouldIgnoreItsOwnFile()
{
    SavedWorkbench test;
    test.store().addProcessors(QUuid(), 1);
    test.save();
    QCOMPARE(projectIn(test.path)->processors.size(), 5);
    // What is told is told after this: the signals of both changes come in their order.
    const QByteArray own = content(test.path);
    writeFile(test.path, own);
    QVERIFY(!test.window.isWindowModified());
    test.save();
    QCOMPARE(content(test.path), own);
    QVERIFY(!test.bar().isVisible());
}

void ChangedFileTest::shouldNeverReplaceUnknownContent_data()
{
    QTest::addColumn<QString>("what");
    for (const char* what : {"changed", "removed", "folder"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void ChangedFileTest::shouldNeverReplaceUnknownContent()
{
    QFETCH(QString, what);
    SavedWorkbench test;
    const QString folder = QFileInfo(test.path).absolutePath();
    if (what == QStringLiteral("changed"))
        writeFile(test.path, othersProject());
    else if (what == QStringLiteral("removed"))
        QVERIFY(QFile::remove(test.path));
    else
        QVERIFY(QDir(folder).removeRecursively());
    const QByteArray before = content(test.path);
    test.store().addProcessors(QUuid(), 1);
    // At once, before the watch can have told of it.
    QString problem;
    QVERIFY(!test.window.files().save(test.path, problem));
    QVERIFY2(problem.contains(QStringLiteral("another program")), qPrintable(problem));
    DialogDriver dialogs;
    QString asked;
    dialogs.then(reading(asked));
    test.save();
    QVERIFY(dialogs.isDone());
    QVERIFY2(asked.contains(QStringLiteral("another program")), qPrintable(asked));
    QCOMPARE(content(test.path), before);
    QCOMPARE(QFile::exists(test.path), !before.isEmpty());
    QVERIFY(test.window.isWindowModified());
    QCOMPARE(test.store().snapshot().processors.size(), 5);
}

void ChangedFileTest::shouldReplaceItWhenTold()
{
    SavedWorkbench test;
    writeFile(test.path, othersProject());
    test.store().addProcessors(QUuid(), 1);
    DialogDriver dialogs;
    dialogs.then([](QWidget& box) { clickInBox(box, "Save"); });
    test.save();
    QCOMPARE(projectIn(test.path)->processors.size(), 5);
    QVERIFY(!test.window.isWindowModified());
    // Without its folder the file cannot be written: the project stays unsaved.
    QVERIFY(QDir(QFileInfo(test.path).absolutePath()).removeRecursively());
    test.store().addProcessors(QUuid(), 1);
    QString problem;
    dialogs.then([](QWidget& box) { clickInBox(box, "Save"); }).then(reading(problem));
    test.save();
    QTRY_VERIFY(dialogs.isDone());
    QVERIFY2(problem.contains(QStringLiteral("cannot be written")), qPrintable(problem));
    QVERIFY(test.window.isWindowModified());
}

void ChangedFileTest::shouldReload()
{
    SavedWorkbench test;
    test.store().addProcessors(QUuid(), 1);
    writeFile(test.path, othersProject());
    DialogDriver dialogs;
    dialogs.then([](QWidget& box) { clickInBox(box, "Reload"); });
    test.save();
    QCOMPARE(test.processor(12).name, QStringLiteral("Other"));
    QCOMPARE(test.store().snapshot().processors.size(), 4);
    QVERIFY(!test.window.isWindowModified());
    QVERIFY(!test.action(ActionId::Undo)->isEnabled());
    test.waitForPanel();
}

void ChangedFileTest::shouldStayWhenTheFileIsDamaged()
{
    SavedWorkbench test;
    writeFile(test.path, "{");
    QTRY_VERIFY(test.bar().isVisible());
    DialogDriver dialogs;
    QString problem;
    dialogs.then(reading(problem));
    test.click(test.bar().reloadButton());
    QTRY_VERIFY(dialogs.isDone());
    QVERIFY2(problem.contains(QStringLiteral("line 1")), qPrintable(problem));
    QVERIFY(test.bar().isVisible());
    QCOMPARE(test.store().snapshot().processors.size(), 4);
}

void ChangedFileTest::shouldCompare()
{
    SavedWorkbench test;
    Project other = smallProject();
    other.renameProcessor(sampleId(12), QStringLiteral("Other"));
    other.removeProcessors({sampleId(14)});
    other.addGroup({sampleId(3), QStringLiteral("G3"), -1, 1, {}});
    other.ipList.append({0x0A000009, QStringLiteral("nine")});
    other.answers.selectionMode = 2;
    std::swap(other.processors[0], other.processors[1]);
    writeFile(test.path, projectToJson(other));
    QTRY_VERIFY(test.bar().isVisible());
    DialogDriver dialogs;
    QStringList rows;
    dialogs.then([&](QWidget& dialog) {
        const auto* list = dialog.findChild<QTreeWidget*>();
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            const QTreeWidgetItem* item = list->topLevelItem(row);
            QStringList cells;
            for (int column = 0; column < 4; ++column)
                cells.append(item->text(column));
            rows.append(cells.join(QLatin1Char('|')));
        }
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    test.click(test.bar().compareButton());
    QVERIFY(dialogs.isDone());
    QCOMPARE(rows, (QStringList{QStringLiteral("Group G3|||exists"),
                                QStringLiteral("Processor P12|name|P12|Other"),
                                QStringLiteral("Processor P14||exists|"),
                                QStringLiteral("Processors|order||another"),
                                QStringLiteral("IP list|||10.0.0.9(nine)"),
                                QStringLiteral("Handler answers|selectionMode|0|2")}));
    QVERIFY(test.bar().isVisible());
}

void ChangedFileTest::shouldKeep()
{
    SavedWorkbench test;
    writeFile(test.path, othersProject());
    QTRY_VERIFY(test.bar().isVisible());
    test.click(test.bar().keepButton());
    QVERIFY(!test.bar().isVisible());
    QVERIFY(test.window.isWindowModified());
    // What was decided is not asked again, another change is.
    test.save();
    QCOMPARE(content(test.path), test.saved);
    QVERIFY(!test.window.isWindowModified());
    writeFile(test.path, othersProject());
    QTRY_VERIFY(test.bar().isVisible());
    test.click(test.bar().keepButton());
    writeFile(test.path, othersProject(QStringLiteral("Third")));
    DialogDriver dialogs;
    dialogs.thenEscape();
    test.save();
    QVERIFY(dialogs.isDone());
    QVERIFY(content(test.path).contains("Third"));
}

void ChangedFileTest::shouldKeepOnlyWhatWasTold()
{
    SavedWorkbench test;
    writeFile(test.path, othersProject());
    QTRY_VERIFY(test.bar().isVisible());
    // At once, before the watch can have told of the second change.
    writeFile(test.path, othersProject(QStringLiteral("Third")));
    test.click(test.bar().keepButton());
    QVERIFY(test.bar().isVisible());
    QCOMPARE(test.bar().text(), QStringLiteral("mine.json was changed again by another program."));
    DialogDriver dialogs;
    QString asked;
    dialogs.then(reading(asked));
    test.save();
    QVERIFY(dialogs.isDone());
    QVERIFY2(asked.contains(QStringLiteral("another program")), qPrintable(asked));
    QVERIFY(content(test.path).contains("Third"));

    // Now the user has been told.
    test.click(test.bar().keepButton());
    QVERIFY(!test.bar().isVisible());
    test.save();
    QCOMPARE(content(test.path), test.saved);
}

void ChangedFileTest::shouldAskAgainWhenTheFileChangesMeanwhile()
{
    SavedWorkbench test;
    writeFile(test.path, othersProject());
    test.store().addProcessors(QUuid(), 1);
    DialogDriver dialogs;
    QString again;
    dialogs
        .then([&](QWidget& box) {
            writeFile(test.path, othersProject(QStringLiteral("Third")));
            clickInBox(box, "Save");
        })
        .then(reading(again));
    test.save();
    QVERIFY(dialogs.isDone());
    QVERIFY2(again.contains(QStringLiteral("changed again")), qPrintable(again));
    QVERIFY(content(test.path).contains("Third"));
    QVERIFY(test.window.isWindowModified());

    dialogs
        .then([&](QWidget& box) {
            QVERIFY(QFile::remove(test.path));
            clickInBox(box, "Save");
        })
        .then([](QWidget& box) { clickInBox(box, "Save"); });
    test.save();
    QVERIFY(dialogs.isDone());
    QCOMPARE(projectIn(test.path)->processors.size(), 5);
}

TSA_TEST_MAIN(ChangedFileTest)

#include "tst_changed_file.moc"
