#include "base/LogCategories.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/HostIPList.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "search/ProcessorCompleter.h"
#include "tests/processortree/DrivenTree.h"
#include "tests/support/MessageTrap.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QComboBox>
#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

#include <memory>

namespace {

/// Returns whether one of the messages so far begins with `start`.
bool isLogged(const QString& start)
{
    const QStringList messages = MessageTrap::take();
    for (const QString& message : messages) {
        if (message.startsWith(start))
            return true;
    }
    QTest::qFail(
        qPrintable(QStringLiteral("not logged: %1\nbut: %2").arg(start, messages.join(u'\n'))),
        __FILE__, __LINE__);
    return false;
}

QString about(quint32 event, quint32 id)
{
    return QStringLiteral("event %1 about %2").arg(event).arg(testId(id).toString());
}

} // namespace

/// The lines that tell why the panel did what it did.
class LogCategoriesTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldBeQuietByDefault();
    void shouldTellTheCourseOfAnEvent();
    void shouldTellWhyEventsAreDropped();
    void shouldTellOfRefusedNames();
    void shouldTellOfRefusedDeletions();
    void shouldTellOfRefusedDrops();
    void shouldTellOfRefusedAddresses();
    void shouldTellHowAnImportEnds();
    void shouldTellWhatASearchFinds();
    void shouldTellOfRefusedDeviceSets();
    void shouldTellWithoutAHandler();
};

void LogCategoriesTest::shouldBeQuietByDefault()
{
    for (const QLoggingCategory* category :
         {&lcBridge(), &lcTree(), &lcSearch(), &lcAddresses(), &lcPanel()}) {
        QVERIFY(QByteArray(category->categoryName()).startsWith("targetselect."));
        QVERIFY(!category->isDebugEnabled());
        QVERIFY(!category->isInfoEnabled());
        QVERIFY(category->isWarningEnabled());
    }
}

void LogCategoriesTest::shouldTellTheCourseOfAnEvent()
{
    TestPanel panel;
    const MessageTrap trap;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify<QUuid>(18, testId(1));
    QCOMPARE(
        MessageTrap::take(),
        QStringList(
            {QStringLiteral("targetselect.bridge: event 18 is taken"),
             QStringLiteral("targetselect.bridge: event 18 asks for %1").arg(testId(1).toString()),
             QStringLiteral("targetselect.bridge: event 18 got the record of %1")
                 .arg(testId(1).toString())}));
    panel.notify<QUuid>(18, testId(1));
    QVERIFY(isLogged(
        QStringLiteral("targetselect.bridge: %1 is dropped: the tree has it").arg(about(18, 1))));
}

void LogCategoriesTest::shouldTellWhyEventsAreDropped()
{
    TestPanel panel;
    const MessageTrap trap;
    panel.notify(31);
    QVERIFY(isLogged(
        QStringLiteral("targetselect.bridge: event 31 is dropped: its number is unknown")));
    panel.notify(400);
    QVERIFY(isLogged(
        QStringLiteral("targetselect.bridge: event 400 is dropped: its number is unknown")));
    panel.notify<QUuid>(25, testId(9));
    QVERIFY(isLogged(QStringLiteral("targetselect.bridge: %1 is dropped: the tree has no such row")
                         .arg(about(25, 9))));
    panel.data().SetSelectionEchoGuard(true);
    panel.notify(30);
    panel.data().SetSelectionEchoGuard(false);
    QVERIFY(isLogged(QStringLiteral("targetselect.bridge: event 30 is dropped: the user's own")));
    panel.data().Stop();
    panel.notify(37);
    panel.data().Start();
    QVERIFY(isLogged(
        QStringLiteral("targetselect.bridge: event 37 is dropped: the bridge has stopped")));
    CObserver* const observer = panel.host().observer;
    delete &panel.area();
    CSubject subject;
    subject.Attach(observer);
    subject.Notify<>(16);
    QVERIFY(
        isLogged(QStringLiteral("targetselect.bridge: event 16 is dropped: there is no panel")));
}

void LogCategoriesTest::shouldTellOfRefusedNames()
{
    DrivenTree tree;
    const MessageTrap trap;
    tree.host().acceptRename = false;
    tree.select({3});
    QTest::keyClick(tree.view.data(), Qt::Key_F2);
    QVERIFY(tree.editor());
    QTest::keyClicks(tree.editor(), QStringLiteral("other"));
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_COMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 1);
    QVERIFY(
        isLogged(QStringLiteral("targetselect.tree: %1 keeps its name").arg(testId(3).toString())));
}

void LogCategoriesTest::shouldTellOfRefusedDeletions()
{
    DrivenTree tree;
    const MessageTrap trap;
    ProcessorNode backup = testProcessor(3);
    backup.redundancyMode = 2;
    tree.fill({}, {testProcessor(1), backup});
    tree.select({3});
    QString message;
    tree.driver.thenReadMessage(message);
    QTest::keyClick(tree.view.data(), Qt::Key_Delete);
    QVERIFY(message.contains(QStringLiteral("backup redundancy")));
    QVERIFY(isLogged(QStringLiteral("targetselect.tree: nothing is deleted: ") + message));
}

void LogCategoriesTest::shouldTellOfRefusedDrops()
{
    DrivenTree tree;
    const std::unique_ptr<QMimeData> rows(tree.model().mimeData({tree.index(3)}));
    QDragEnterEvent enter(tree.place(10), Qt::MoveAction, rows.get(), Qt::LeftButton, {});
    QApplication::sendEvent(tree.view->viewport(), &enter);
    QVERIFY(enter.isAccepted());
    tree.host().restrictedMode = true;
    const MessageTrap trap;
    QDragMoveEvent move(tree.place(10), Qt::MoveAction, rows.get(), Qt::LeftButton, {});
    QApplication::sendEvent(tree.view->viewport(), &move);
    QVERIFY(!move.isAccepted());
    QVERIFY(isLogged(QStringLiteral("targetselect.tree: no drop here: the host is restricted")));
}

void LogCategoriesTest::shouldTellOfRefusedAddresses()
{
    TestPanel panel;
    QWidget window;
    window.show();
    CAddSingleIPDialog dialog(false, &window);
    panel.host().checkIp = [](quint32, bool) -> quint32 { return 0xE0832001; };
    const MessageTrap trap;
    DialogDriver driver;
    QString message;
    driver
        .then([&](QWidget& shown) {
            clickButton(shown, QStringLiteral("OK"));
            QTest::keyClick(&shown, Qt::Key_Escape);
        })
        .thenReadMessage(message);
    QCOMPARE(dialog.exec(), 0);
    const QStringList messages = MessageTrap::take();
    QVERIFY(!messages.filter(QStringLiteral("is rejected, code 0xe0832001")).isEmpty());
    QVERIFY(messages.contains(
        QStringLiteral("targetselect.addresses: CAddSingleIPDialog refuses the entry: ")
        + message));
}

void LogCategoriesTest::shouldTellHowAnImportEnds()
{
    TestPanel panel;
    const MessageTrap trap;
    panel.host().importResult = 7;
    QCOMPARE(HostIPList::importFile(QStringLiteral("list.txt")), 7U);
    QVERIFY(isLogged(
        QStringLiteral("targetselect.addresses: the import of \"list.txt\" ends with code 0x7")));
}

void LogCategoriesTest::shouldTellWhatASearchFinds()
{
    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2), testProcessor(12)});
    panel.notify(16);
    QLineEdit field;
    CProcessorCompleter completer(&field, *CTargetSelectData::Instance()->GetModel());
    const MessageTrap trap;
    completer.setFilterText(QStringLiteral("2"));
    QVERIFY(isLogged(QStringLiteral("targetselect.search: \"2\" finds 2 processors")));
}

void LogCategoriesTest::shouldTellOfRefusedDeviceSets()
{
    TestPanel panel;
    panel.notify<GUID, QList<SDeviceSetInfo>>(1, deviceSet(1).id, {deviceSet(1), deviceSet(2)});
    auto* selector = panel.area().findChild<QComboBox*>();
    QTRY_COMPARE(selector->count(), 2);
    panel.host().confirmDeviceSet = false;
    const MessageTrap trap;
    selector->setCurrentIndex(1);
    QCOMPARE(selector->currentIndex(), 0);
    QVERIFY(isLogged(QStringLiteral("targetselect.panel: the host refuses device set 1")));
}

void LogCategoriesTest::shouldTellWithoutAHandler()
{
    TestPanel panel;
    panel.area().m_controlHandler.reset();
    const MessageTrap trap;
    QVERIFY(panel.area().Reconnect());
    QVERIFY(isLogged(QStringLiteral("targetselect.panel: no observer is registered")));
}

TSA_TEST_MAIN(LogCategoriesTest)
#include "tst_logcategories.moc"
