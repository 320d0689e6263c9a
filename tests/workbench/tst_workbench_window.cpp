#include "host/widgets/HostTheme.h"
#include "host/workbench/Actions.h"
#include "host/workbench/FieldJson.h"
#include "host/workbench/Language.h"
#include "host/workbench/LogPanel.h"
#include "host/workbench/MainWindow.h"
#include "host/workbench/ProjectFile.h"
#include "host/workbench/ProjectFiles.h"
#include "host/workbench/RaiseEventDialog.h"
#include "host/workbench/RecordFields.h"
#include "host/workbench/RecordsPanel.h"
#include "host/workbench/Session.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/SampleRecords.h"

#include "Interface/TargetSelectAreaInterface.h"
#include "Interface/TargetSelectInterfaceHandler.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStatusBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>

namespace {

/// A workbench with the real library, the panel docked and the small project open.
struct WorkbenchUnderTest
{
    explicit WorkbenchUnderTest(Notifier::Delivery delivery = Notifier::Delivery::NotifyingThread)
    {
        session.notifier().setDelivery(delivery);
        QString problem;
        if (!session.library().load(QStringLiteral(WORKBENCH_PANEL_LIBRARY), problem))
            QTest::qFail(qPrintable(problem), __FILE__, __LINE__);
        window.openPanel();
        window.files().setAskBeforeLoss(false);
        session.store().replace(smallProject());
        window.show();
        QApplication::setActiveWindow(&window);
        waitForPanel();
    }
    ~WorkbenchUnderTest() { language.choose(Language::Choice::English); }
    WorkbenchUnderTest(const WorkbenchUnderTest&) = delete;
    WorkbenchUnderTest& operator=(const WorkbenchUnderTest&) = delete;

    void waitForPanel()
    {
        QVERIFY(QTest::qWaitFor(
            [this] { return session.notifier().isIdle() && session.panelShowsProject(); }));
    }

    /// The panel's tree as it is on the screen.
    QString panelTree()
    {
        for (const auto* view : session.layer()->GetWidget()->findChildren<QTreeView*>()) {
            if (view->model())
                return dumpTree(*view->model());
        }
        return {};
    }

    /// The handler as the panel has it.
    std::shared_ptr<ITargetSelectInterfaceHandler> handler()
    {
        return std::dynamic_pointer_cast<ITargetSelectInterfaceHandler>(
            session.layer()->m_controlHandler);
    }

    QAction* action(Do what) { return window.actions()[what]; }
    ProjectStore& store() { return session.store(); }
    ProcessorNode processor(quint32 n)
    {
        const Project project = store().snapshot();
        const ProcessorNode* node = project.processor(sampleId(n));
        return node ? *node : ProcessorNode();
    }

    WarningTrap warnings;
    Session session;
    Language language;
    MainWindow window{session, language};
};

/// The dialog of that type that is open.
template <typename Dialog>
Dialog* openDialog()
{
    Dialog* dialog = nullptr;
    const bool inTime = QTest::qWaitFor([&] {
        dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        return dialog != nullptr;
    });
    if (!inTime)
        QTest::qFail("no such dialog is open", __FILE__, __LINE__);
    return dialog;
}

} // namespace

Q_DECLARE_METATYPE(Notifier::Delivery)

class WorkbenchWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldRefuseOtherLibraries();
    void shouldShowTheSampleProject_data() { deliveries(); }
    void shouldShowTheSampleProject();
    void shouldBringEveryChangeIntoThePanel_data() { deliveries(); }
    void shouldBringEveryChangeIntoThePanel();
    void shouldDestroyThePanelAndInitialiseItAgain();
    void shouldOutliveAPanelDestroyedUnderEvents();
    void shouldWorkByKeyboard();
    void shouldWorkByMouse();
    void shouldShowTheIpListWhileNoRecordIsSelected();
    void shouldShowTipsForAWhile();
    void shouldForceChecksOfAddresses();
    void shouldSwitchEveryAnswer();
    void shouldReplyToThePanelInEveryWay_data() { deliveries(); }
    void shouldReplyToThePanelInEveryWay();
    void shouldTakeARefusedGroupNameBack();
    void shouldShowWhoseFrontPanelsAreLit();
    void shouldShowARowInTheLog();
    void shouldMarkProcessors();
    void shouldRaiseAnyEvent();
    void shouldLogTheTree();
    void shouldShowHowFarADetectionIs();
    void shouldLockByKey();
    void shouldWarnOfTheSelectedProcessors();
    void shouldFollowTheLanguage();
    void shouldKeepTheProjectWhenAFileIsDamaged();
    void shouldSaveAndRemember();
    void shouldAskBeforeChangesAreLost();
    void shouldEditDeviceSets();
    void shouldOfferOnlyWhatIsPossible();
    void shouldNameItsWidgets();
    void shouldLeaveTheTreesKeysToThePanel();

private:
    void deliveries();

    QTemporaryDir m_settings;
};

void WorkbenchWindowTest::initTestCase()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    ApplyHostTheme(*qApp);
}

void WorkbenchWindowTest::deliveries()
{
    QTest::addColumn<Notifier::Delivery>("delivery");
    QTest::newRow("notifying thread") << Notifier::Delivery::NotifyingThread;
    QTest::newRow("GUI thread") << Notifier::Delivery::GuiThread;
}

void WorkbenchWindowTest::shouldRefuseOtherLibraries()
{
    const QString panel = QStringLiteral(WORKBENCH_PANEL_LIBRARY);
    const QString missing = m_settings.filePath(QStringLiteral("libMissing.so"));
    QString problem;
    PanelLibrary library;
    QVERIFY(!library.load(missing, problem));
    QVERIFY2(
        problem.startsWith(QStringLiteral("The panel's library %1 does not exist.").arg(missing)),
        qPrintable(problem));
    QVERIFY(!library.isLoaded());
    QVERIFY(!library.init(nullptr));

    const QString damaged = m_settings.filePath(QStringLiteral("libDamaged.so"));
    QFile file(damaged);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("no library") > 0);
    file.close();
    PanelLibrary other;
    QVERIFY(!other.load(damaged, problem));
    QVERIFY2(problem.contains(QStringLiteral("cannot be loaded: ")), qPrintable(problem));

    PanelLibrary foreign;
    const QString common = QFileInfo(panel).dir().filePath(QStringLiteral("libHostCommon.so"));
    QVERIFY(!foreign.load(common, problem));
    QVERIFY2(problem.endsWith(QStringLiteral("it has no TargetSelectArea_Init.")),
             qPrintable(problem));

    PanelLibrary right;
    QVERIFY2(right.load(panel, problem), qPrintable(problem));
    QVERIFY(right.isLoaded());
}

void WorkbenchWindowTest::shouldShowTheSampleProject()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    test.action(Do::OpenSample)->trigger();
    test.waitForPanel();
    QCOMPARE(test.store().snapshot().processors.size(), 120);
    QVERIFY2(test.panelTree().startsWith(QStringLiteral("All processors(120)[Main stage[Stage 1,")),
             qPrintable(test.panelTree()));
    QCOMPARE(test.window.records().model().rowCount(), 6 + 10);
}

void WorkbenchWindowTest::shouldBringEveryChangeIntoThePanel()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    const auto panel = [&] {
        test.waitForPanel();
        return test.panelTree();
    };
    QTRY_COMPARE(panel(), QStringLiteral("All processors(4)[G1[P11,P12],G2[P13],P14]"));
    test.store().removeProcessors({sampleId(12)});
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[P11],G2[P13],P14]"));
    test.store().regroup({sampleId(11), sampleId(13)}, QUuid());
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],G2[],P11,P14,P13]"));
    test.store().regroup({sampleId(14)}, sampleId(2));
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],G2[P14],P11,P13]"));
    test.store().renameProcessor(sampleId(14), QStringLiteral("New"));
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],G2[New],P11,P13]"));
    test.store().renameGroup(sampleId(2), QStringLiteral("H"), true);
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],H[New],P11,P13]"));
    test.store().ungroup(sampleId(2));
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],P11,P13,New]"));
    ProcessorGroupNode group;
    group.name = QStringLiteral("J");
    test.store().addGroup(group);
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],J[],P11,P13,New]"));
    test.store().addProcessors(sampleId(1), 2);
    QTRY_COMPARE(panel(),
                 QStringLiteral("All processors(5)[G1[Processor 5,Processor 6],J[],P11,P13,New]"));
    test.store().replace(Project());
    QTRY_COMPARE(panel(), QStringLiteral("All processors(0)[]"));
}

void WorkbenchWindowTest::shouldDestroyThePanelAndInitialiseItAgain()
{
    WorkbenchUnderTest test;
    for (int round = 0; round < 3; ++round) {
        test.action(Do::ClosePanel)->trigger();
        QVERIFY(!test.session.layer());
        QVERIFY(!test.action(Do::Reconnect)->isEnabled());
        test.store().addProcessors(QUuid(), 1);
        QTRY_VERIFY(test.session.notifier().isIdle());
        test.action(Do::OpenPanel)->trigger();
        QVERIFY(test.session.layer());
        test.waitForPanel();
        test.action(Do::Reconnect)->trigger();
        test.action(Do::OpenPanel)->trigger();
        test.waitForPanel();
    }
    QCOMPARE(test.store().snapshot().processors.size(), 7);
}

void WorkbenchWindowTest::shouldOutliveAPanelDestroyedUnderEvents()
{
    WorkbenchUnderTest test;
    for (int n = 0; n < 50; ++n)
        test.store().addProcessors(QUuid(), 1);
    QVERIFY(!test.session.notifier().isIdle());
    test.action(Do::ClosePanel)->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(test.session.notifier().isIdle(), 30000);
    test.action(Do::OpenPanel)->trigger();
    test.waitForPanel();
    QCOMPARE(test.store().snapshot().processors.size(), 54);
}

void WorkbenchWindowTest::shouldWorkByKeyboard()
{
    WorkbenchUnderTest test;
    QTreeView* view = test.window.records().view();
    QTest::keyClick(&test.window, Qt::Key_2, Qt::ControlModifier);
    QTRY_VERIFY(view->hasFocus());
    QTest::keyClick(view, Qt::Key_Home);
    QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(test.window.records().selectedProcessors(),
             (QList<QUuid>{sampleId(11), sampleId(12)}));
    QTest::keyClick(&test.window, Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(test.processor(11).online && test.processor(12).online);
    QTest::keyClick(&test.window, Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(test.processor(12).hostFlag17);
    QTest::keyClick(&test.window, Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(test.processor(12).redundancyMode, 2);
    QTest::keyClick(&test.window, Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(test.processor(12).redundancyMode, 0);

    test.window.records().select({sampleId(12)});
    QTest::keyClick(view, Qt::Key_F2);
    auto* rename = openDialog<QInputDialog>();
    QVERIFY(rename);
    QCOMPARE(rename->textValue(), QStringLiteral("P12"));
    QTest::keyClicks(rename->findChild<QLineEdit*>(), QStringLiteral("Typed"));
    QTest::keyClick(rename, Qt::Key_Return);
    QCOMPARE(test.processor(12).name, QStringLiteral("Typed"));
    QTRY_VERIFY(!QApplication::activeModalWidget());

    QTest::keyClick(&test.window, Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    auto* address = openDialog<QInputDialog>();
    QVERIFY(address);
    QTest::keyClicks(address->findChild<QLineEdit*>(), QStringLiteral("10.0.0.77"));
    QTest::keyClick(address, Qt::Key_Return);
    QCOMPARE(test.processor(12).ipAddress, 0x0A00004DU);
    QTRY_VERIFY(!QApplication::activeModalWidget());

    QApplication::setActiveWindow(&test.window);
    view->setFocus();
    QTRY_VERIFY(view->hasFocus());
    QTest::keyClick(view, Qt::Key_Delete);
    QVERIFY(test.processor(12).id.isNull());
    test.window.records().select({sampleId(2)});
    QTest::keyClick(&test.window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    test.waitForPanel();
    QCOMPARE(test.panelTree(),
             QStringLiteral("All processors(4)[G1[P11],G2[P13,Processor 5],P14]"));
    QTest::keyClick(&test.window, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(test.store().snapshot().currentProcessor,
             test.store().snapshot().processors.last().id);

    QTest::keyClick(&test.window, Qt::Key_3, Qt::ControlModifier);
    QTRY_VERIFY(test.window.log().filterField()->hasFocus());
    QTest::keyClicks(test.window.log().filterField(), QStringLiteral("no such line"));
    QCOMPARE(test.window.log().view()->model()->rowCount(), 0);
    QTest::keyClick(&test.window, Qt::Key_1, Qt::ControlModifier);
    QTRY_VERIFY(test.session.layer()->GetWidget()->isAncestorOf(QApplication::focusWidget()));
}

void WorkbenchWindowTest::shouldWorkByMouse()
{
    WorkbenchUnderTest test;
    QTreeView* view = test.window.records().view();
    const auto clickRow = [&](quint32 n, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QModelIndex index = test.window.records().model().indexOf(sampleId(n));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers,
                          view->visualRect(index).center());
    };
    clickRow(13);
    clickRow(14, Qt::ControlModifier);
    QCOMPARE(test.window.records().selectedProcessors(),
             (QList<QUuid>{sampleId(13), sampleId(14)}));
    QCOMPARE(test.window.records().fields()->topLevelItemCount(), 28);
    auto* button = test.window.findChild<QToolBar*>()->widgetForAction(test.action(Do::GoOnline));
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(test.processor(13).online && test.processor(14).online);

    test.action(Do::MoveToGroup)->trigger();
    auto* move = openDialog<QInputDialog>();
    QVERIFY(move);
    auto* list = move->findChild<QListView*>();
    QVERIFY(list);
    const QModelIndex first = list->model()->index(1, 0);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualRect(first).center());
    QTest::mouseClick(move->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
    test.waitForPanel();
    QCOMPARE(test.panelTree(), QStringLiteral("All processors(4)[G1[P11,P12,P13,P14],G2[]]"));

    clickRow(2);
    QCOMPARE(test.window.records().selectedGroups(), QList<QUuid>{sampleId(2)});
    QCOMPARE(test.window.records().fields()->topLevelItemCount(), 5);
    QTest::mouseClick(test.window.log().clearButton(), Qt::LeftButton);
    QCOMPARE(test.session.trace().rowCount(), 0);
}

void WorkbenchWindowTest::shouldShowTheIpListWhileNoRecordIsSelected()
{
    WorkbenchUnderTest test;
    const RecordsPanel& records = test.window.records();
    const auto rowText = [&](int row) {
        const QTreeWidgetItem* item = records.fields()->topLevelItem(row);
        return item ? item->text(0) + QLatin1Char('|') + item->text(1) : QString();
    };
    const auto handler = test.handler();
    QVERIFY(handler);
    QCOMPARE(records.fields()->topLevelItemCount(), 0);
    handler->AddIPAddress(QStringLiteral("10.0.0.8"), QStringLiteral("a (b), c"));
    QCOMPARE(rowText(0), QStringLiteral("10.0.0.8|a (b), c"));
    QCOMPARE(records.fields()->headerItem()->text(0), QStringLiteral("Address"));
    QVERIFY(test.window.isWindowModified());
    test.window.records().select({sampleId(11)});
    QCOMPARE(rowText(0).section(QLatin1Char('|'), 0, 0), QStringLiteral("id"));
    QCOMPARE(records.fields()->headerItem()->text(0), QStringLiteral("Field"));
    handler->AddIPAddress(QStringLiteral("10.0.0.9"), QString());
    QCOMPARE(records.fields()->topLevelItemCount(), 28);
    records.view()->clearSelection();
    QCOMPARE(rowText(1), QStringLiteral("10.0.0.9|"));
    QCOMPARE(records.fields()->accessibleName(), QStringLiteral("IP list (entries: 2)"));
}

void WorkbenchWindowTest::shouldShowTipsForAWhile()
{
    WorkbenchUnderTest test;
    const auto handler = test.handler();
    QVERIFY(handler);
    handler->ShowTipMessage(QStringLiteral("Import successfully."));
    QCOMPARE(test.window.statusBar()->currentMessage(), QStringLiteral("Import successfully."));
}

void WorkbenchWindowTest::shouldForceChecksOfAddresses()
{
    WorkbenchUnderTest test;
    test.action(Do::HandlerAnswers)->trigger();
    auto* dialog = openDialog<QDialog>();
    QVERIFY(dialog);
    // A smaller screen than anybody has leaves the buttons in reach.
    QVERIFY2(dialog->height() <= 720, qPrintable(QString::number(dialog->height())));
    for (auto* field : dialog->findChildren<QLineEdit*>()) {
        if (field->accessibleName() == QLatin1String("ipCheckCode"))
            field->setText(QStringLiteral("0xE0832003"));
    }
    for (auto* field : dialog->findChildren<QSpinBox*>()) {
        if (field->accessibleName() == QLatin1String("ipCheckCount"))
            field->setValue(2);
    }
    dialog->accept();
    QCOMPARE(test.store().snapshot().answers.ipCheckCount, 2);
    QCOMPARE(test.store().takeForcedIpCheck(), 0xE0832003U);
    QCOMPARE(test.store().takeForcedIpCheck(), 0xE0832003U);
    QCOMPARE(test.store().takeForcedIpCheck(), 0U);
}

void WorkbenchWindowTest::shouldSwitchEveryAnswer()
{
    WorkbenchUnderTest test;
    test.action(Do::HandlerAnswers)->trigger();
    auto* dialog = openDialog<QDialog>();
    QVERIFY(dialog);
    QHash<QString, QWidget*> fields;
    for (auto* field : dialog->findChildren<QWidget*>())
        fields.insert(field->accessibleName(), field);
    const HandlerAnswers wanted = unusualProject().answers;
    FieldWriter before;
    visitAnswerFields(wanted, before);
    for (auto it = before.object.constBegin(); it != before.object.constEnd(); ++it) {
        QWidget* field = fields.value(it.key());
        QVERIFY2(field, qPrintable(it.key()));
        if (auto* box = qobject_cast<QCheckBox*>(field))
            box->setChecked(it.value().toBool());
        else if (auto* number = qobject_cast<QSpinBox*>(field))
            number->setValue(it.value().toInt());
        else if (auto* choice = qobject_cast<QComboBox*>(field))
            choice->setCurrentText(it.value().toString());
        else if (auto* line = qobject_cast<QLineEdit*>(field))
            line->setText(it.value().isArray()
                              ? it.value().toVariant().toStringList().join(QLatin1Char(','))
                              : QString::number(it.value().toVariant().toLongLong()));
    }
    dialog->accept();
    QTRY_VERIFY(!QApplication::activeModalWidget());
    FieldWriter after;
    const HandlerAnswers answers = test.store().snapshot().answers;
    visitAnswerFields(answers, after);
    QCOMPARE(after.object, before.object);
    QVERIFY(test.handler()->IsRestrictedMode());
    QVERIFY(test.window.isWindowModified());
}

void WorkbenchWindowTest::shouldReplyToThePanelInEveryWay()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    const auto handler = test.handler();
    int count = 4;
    for (const HostReply reply : allHostReplies()) {
        test.store().changeAnswers([&](HandlerAnswers& answers) { answers.hostReply = reply; });
        ProcessorGroupNode group;
        group.name = QStringLiteral("Short-lived");
        const QUuid id = handler->CreateGroup(group);
        handler->AddProcessors(id, 3);
        if (reply == HostReply::BeforeReturn)
            QVERIFY(test.session.panelShowsProject());
        QTRY_COMPARE(test.store().snapshot().processors.size(), count + 3);
        test.waitForPanel();
        const ProcessorGroupNode members = handler->GetGroupNode(id);
        QCOMPARE(members.processors.size(), 3);
        handler->DeleteProcessors({members.processors.at(0).id, members.processors.at(2).id});
        handler->Ungroup(id);
        ++count;
        QTRY_COMPARE(test.store().snapshot().groups.size(), 2);
        QCOMPARE(test.store().snapshot().processors.size(), count);
        test.waitForPanel();
    }
    QTRY_VERIFY2(
        test.panelTree().startsWith(QStringLiteral("All processors(8)[G1[P11,P12],G2[P13],P14,")),
        qPrintable(test.panelTree()));
}

void WorkbenchWindowTest::shouldTakeARefusedGroupNameBack()
{
    WorkbenchUnderTest test;
    test.store().changeAnswers([](HandlerAnswers& answers) { answers.acceptNewNames = false; });
    for (auto* view : test.session.layer()->GetWidget()->findChildren<QTreeView*>()) {
        if (QAbstractItemModel* model = view->model())
            model->setData(model->index(0, 0, model->index(0, 0)), QStringLiteral("Refused"));
    }
    QVERIFY(test.panelTree().contains(QStringLiteral("Refused[")));
    test.handler()->RenameGroup(sampleId(1), QStringLiteral("Refused"));
    QTRY_COMPARE(test.panelTree(), QStringLiteral("All processors(4)[G1[P11,P12],G2[P13],P14]"));
}

void WorkbenchWindowTest::shouldShowWhoseFrontPanelsAreLit()
{
    WorkbenchUnderTest test;
    const auto handler = test.handler();
    const auto cell = [&](quint32 n, int column) {
        const QModelIndex row = test.window.records().model().indexOf(sampleId(n));
        return row.siblingAtColumn(column).data().toString();
    };
    QCOMPARE(cell(12, RecordsModel::FrontPanelColumn), QString());
    for (const quint32 n : {12U, 1U}) {
        handler->IsFrontPanelHighlighted(sampleId(n));
        handler->SetFrontPanelHighlight(true);
    }
    QCOMPARE(cell(12, RecordsModel::FrontPanelColumn), QStringLiteral("lit"));
    QCOMPARE(cell(1, RecordsModel::NameColumn), QStringLiteral("G1 (2), front panel lit"));
    handler->SetFrontPanelHighlight(false);
    QCOMPARE(cell(1, RecordsModel::NameColumn), QStringLiteral("G1 (2)"));
    test.session.trace().flush();
    QStringList lines;
    for (int row = 0; row < test.session.trace().rowCount(); ++row)
        lines.append(test.session.trace().entry(row).text);
    QVERIFY(lines.contains(QStringLiteral("SetFrontPanelHighlight(false)")));
    QVERIFY(lines.constLast().endsWith(
        QStringLiteral("the front panel of %1 is dark").arg(shortId(sampleId(1)))));
}

void WorkbenchWindowTest::shouldShowARowInTheLog()
{
    WorkbenchUnderTest test;
    test.store().setOnline({sampleId(13)}, true);
    test.waitForPanel();
    test.window.log().kindSelector()->setCurrentIndex(3);
    QMenu menu;
    test.handler()->AppendContextMenu(NodeProcessor, sampleId(13), false, &menu);
    menu.actions().constLast()->trigger();
    QCOMPARE(test.window.log().filterField()->text(), shortId(sampleId(13)));
    test.session.trace().flush();
    const QAbstractItemModel* lines = test.window.log().view()->model();
    QVERIFY(lines->rowCount() > 0);
    QVERIFY(lines->rowCount() < test.session.trace().rowCount());

    test.action(Do::Chinese)->trigger();
    QMenu chinese;
    test.handler()->AppendContextMenu(NodeGroup, sampleId(1), false, &chinese);
    QCOMPARE(chinese.actions().constLast()->text(), QString::fromUtf8("宿主：在日志中显示"));
}

void WorkbenchWindowTest::shouldMarkProcessors()
{
    WorkbenchUnderTest test(Notifier::Delivery::GuiThread);
    test.window.records().select({sampleId(11), sampleId(13)});
    test.action(Do::ToggleHasBackup)->trigger();
    QCOMPARE(test.processor(13).redundancyMode, 1);
    test.action(Do::ToggleBackup)->trigger();
    QCOMPARE(test.processor(13).redundancyMode, 2);
    test.action(Do::ToggleBackup)->trigger();
    QCOMPARE(test.processor(13).redundancyMode, 0);
    test.action(Do::ToggleProtected)->trigger();
    QVERIFY(test.handler()->IsDeleteBlocked(sampleId(13)));
    QVERIFY(!test.handler()->IsDeleteBlocked(sampleId(12)));
    test.action(Do::ToggleProtected)->trigger();
    QVERIFY(!test.handler()->IsDeleteBlocked(sampleId(13)));
}

void WorkbenchWindowTest::shouldRaiseAnyEvent()
{
    WorkbenchUnderTest test(Notifier::Delivery::GuiThread);
    test.window.records().select({sampleId(12)});
    test.session.trace().clear();
    const auto raise = [&](int number, int type, const QString& value) {
        test.action(Do::RaiseEvent)->trigger();
        auto* dialog = openDialog<RaiseEventDialog>();
        dialog->numberField()->setValue(number);
        if (type >= 0)
            dialog->typeField()->setCurrentIndex(type);
        if (!value.isNull())
            dialog->valueField()->setText(value);
        dialog->accept();
        const bool accepted = !dialog->isVisible();
        dialog->reject();
        test.session.trace().flush();
        return accepted;
    };
    QVERIFY(raise(25, -1, QString()));
    // A panel that paints asks its questions, too.
    int logged = 0;
    for (int row = 0; row < test.session.trace().rowCount(); ++row) {
        if (test.session.trace().entry(row).text.startsWith(
                QStringLiteral("25 ProcessorChanged({")))
            ++logged;
    }
    QCOMPARE(logged, 1);
    QVERIFY(raise(39, -1, QString()));
    QVERIFY(raise(26, -1, QString()));
    QVERIFY(raise(1, -1, QString()));
    QVERIFY(raise(16, -1, QString()));
    QVERIFY(raise(0, -1, QStringLiteral("2")));
    QVERIFY(!raise(0, -1, QStringLiteral("two")));
    QVERIFY(!raise(18, -1, QStringLiteral("nonsense")));
    QVERIFY(!raise(18, -1, QString::fromLatin1("")));
    QVERIFY(raise(250, 0, QString()));
    test.session.trace().clear();
    // The event does not carry what the type says: the panel's complaint is in the log.
    QVERIFY(raise(20, 1, QStringLiteral("7")));
    bool complained = false;
    for (int row = 0; row < test.session.trace().rowCount(); ++row)
        complained =
            complained
            || test.session.trace().entry(row).text.contains(QStringLiteral("bad type cast"));
    QVERIFY(complained);
    test.waitForPanel();
}

void WorkbenchWindowTest::shouldLogTheTree()
{
    WorkbenchUnderTest test;
    test.session.trace().clear();
    test.action(Do::LogTree)->trigger();
    test.session.trace().flush();
    QCOMPARE(test.session.trace().rowCount(), 7);
    QVERIFY(test.session.trace().entry(2).text.contains(QStringLiteral("P11 10.0.0.1 offline")));
    test.session.trace().clear();
    test.action(Do::LogProcessors)->trigger();
    test.session.trace().flush();
    QCOMPARE(test.session.trace().rowCount(), 6);
    test.action(Do::RemoveAllGroups)->trigger();
    QCOMPARE(test.panelTree(), QStringLiteral("All processors(1)[P14]"));
    test.action(Do::AnnounceProject)->trigger();
    test.waitForPanel();
    test.action(Do::SetReadOnly)->trigger();
    test.action(Do::LockOperations)->trigger();
    test.action(Do::ApplyLock)->trigger();
    test.action(Do::DetectDevices)->trigger();
    QVERIFY(test.processor(11).online);
    test.waitForPanel();
}

void WorkbenchWindowTest::shouldShowHowFarADetectionIs()
{
    WorkbenchUnderTest test;
    test.store().changeAnswers([](HandlerAnswers& answers) { answers.detectPauseMs = 1; });
    const auto* bar = test.window.statusBar()->findChild<QProgressBar*>();
    QVERIFY(bar);
    QVERIFY(!bar->isVisible());
    auto* button = test.session.layer()->GetWidget()->findChild<QToolButton*>();
    const QSignalSpy values(bar, &QProgressBar::valueChanged);
    // The panel that asked for it waits.
    bool waits = true;
    connect(bar, &QProgressBar::valueChanged, bar,
            [button, waits = &waits] { *waits = *waits && !button->isEnabled(); });
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(waits);
    QCOMPARE(values.size(), 3);
    for (int step = 0; step < 3; ++step)
        QCOMPARE(values.at(step).first().toInt(), step);
    QVERIFY(!bar->isVisible());
    QCOMPARE(test.window.statusBar()->currentMessage(), QStringLiteral("Processors found: 2"));
    QVERIFY(test.processor(12).online);
    test.waitForPanel();
}

void WorkbenchWindowTest::shouldLockByKey()
{
    WorkbenchUnderTest test;
    auto* panel = test.session.layer()->GetWidget();
    const auto* selector = panel->findChild<QComboBox*>();
    const auto act = [&](int key, int what) {
        test.action(Do::LockByKey)->trigger();
        auto* dialog = openDialog<QDialog>();
        dialog->findChild<QSpinBox*>()->setValue(key);
        dialog->findChild<QComboBox*>()->setCurrentIndex(what);
        QTest::keyClick(dialog, Qt::Key_Return);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    };
    act(7, 0);
    QVERIFY(!selector->isEnabled());
    act(8, 1);
    QVERIFY(selector->isEnabled());
    auto* tree = panel->findChild<QTreeView*>();
    QCOMPARE(tree->contextMenuPolicy(), Qt::DefaultContextMenu);
    act(7, 2);
    QCOMPARE(tree->contextMenuPolicy(), Qt::PreventContextMenu);
    // Another panel knows nothing of the locks.
    test.action(Do::LockOperations)->trigger();
    test.action(Do::ClosePanel)->trigger();
    test.action(Do::OpenPanel)->trigger();
    QVERIFY(!test.action(Do::LockOperations)->isChecked());
    QVERIFY(test.session.layer()->GetWidget()->findChild<QComboBox*>()->isEnabled());
    test.waitForPanel();
}

void WorkbenchWindowTest::shouldWarnOfTheSelectedProcessors()
{
    WorkbenchUnderTest test;
    const auto warning = [&] {
        QStringList lines;
        DialogDriver driver;
        driver.then([&](QWidget& dialog) {
            lines = dialog.accessibleDescription().split(QLatin1Char('\n'));
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        test.action(Do::LanUsbWarning)->trigger();
        const bool isAnswered = QTest::qWaitFor([&] { return driver.isDone(); });
        return isAnswered ? lines.mid(1) : QStringList({QStringLiteral("not shown")});
    };
    QCOMPARE(warning().size(), 3);
    test.window.records().select({sampleId(12)});
    QCOMPARE(warning(), QStringList({QStringLiteral("P12 (IP:10.0.0.2)")}));
    test.store().removeProcessors({sampleId(11), sampleId(12), sampleId(13), sampleId(14)});
    QCOMPARE(warning(), QStringList());
    test.waitForPanel();
}

void WorkbenchWindowTest::shouldFollowTheLanguage()
{
    WorkbenchUnderTest test;
    const QString english = test.action(Do::SaveProject)->text();
    test.action(Do::Chinese)->trigger();
    QTRY_COMPARE(test.action(Do::SaveProject)->text(), QString::fromUtf8("保存(&S)"));
    QTRY_COMPARE(test.panelTree(), QString::fromUtf8("全部处理器(4)[G1[P11,P12],G2[P13],P14]"));
    QCOMPARE(test.window.records().model().headerData(0, Qt::Horizontal).toString(),
             QString::fromUtf8("名称"));
    QCOMPARE(test.window.log().clearButton()->text(), QString::fromUtf8("清空"));
    for (const QAction* action : test.window.findChild<QToolBar*>()->actions())
        QVERIFY2(!action->iconText().contains(QLatin1Char('(')), qPrintable(action->iconText()));
    test.action(Do::English)->trigger();
    QTRY_COMPARE(test.action(Do::SaveProject)->text(), english);
    QTRY_VERIFY(test.panelTree().startsWith(QStringLiteral("All processors(4)")));
}

void WorkbenchWindowTest::shouldKeepTheProjectWhenAFileIsDamaged()
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

void WorkbenchWindowTest::shouldSaveAndRemember()
{
    WorkbenchUnderTest test;
    const QString path = m_settings.filePath(QStringLiteral("saved.json"));
    test.store().addProcessors(QUuid(), 1);
    QVERIFY(test.window.isWindowModified());
    QString problem;
    QVERIFY2(test.window.files().save(path, problem), qPrintable(problem));
    QVERIFY(!test.window.isWindowModified());
    QVERIFY(test.window.windowTitle().startsWith(QStringLiteral("saved.json")));
    QCOMPARE(test.window.actions().recentMenu()->actions().first()->text(), path);

    test.action(Do::NewProject)->trigger();
    QVERIFY(test.store().snapshot().processors.isEmpty());
    test.window.actions().recentMenu()->actions().first()->trigger();
    QCOMPARE(test.store().snapshot().processors.size(), 5);
    test.store().addProcessors(QUuid(), 1);
    test.action(Do::SaveProject)->trigger();
    QCOMPARE(loadProject(path, problem)->processors.size(), 6);
    QVERIFY(!test.window.files().save(QStringLiteral("/nowhere/x.json"), problem));
    QCOMPARE(test.window.files().path(), path);
}

void WorkbenchWindowTest::shouldAskBeforeChangesAreLost()
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
    test.action(Do::NewProject)->trigger();
    QCOMPARE(test.store().snapshot().processors.size(), 5);
    answer(QMessageBox::Cancel);
    QVERIFY(!test.window.close());
    answer(QMessageBox::Discard);
    test.action(Do::NewProject)->trigger();
    QCOMPARE(asked, 3);
    QVERIFY(test.store().snapshot().processors.isEmpty());
    QVERIFY(test.window.close());
}

void WorkbenchWindowTest::shouldEditDeviceSets()
{
    WorkbenchUnderTest test(Notifier::Delivery::GuiThread);
    const auto press = [](const QWidget* dialog, const QString& text) {
        for (auto* button : dialog->findChildren<QPushButton*>()) {
            if (button->text() == text)
                QTest::mouseClick(button, Qt::LeftButton);
        }
    };
    test.action(Do::DeviceSets)->trigger();
    auto* dialog = openDialog<QDialog>();
    QVERIFY(dialog);
    press(dialog, QStringLiteral("&Add"));
    press(dialog, QStringLiteral("&Add"));
    press(dialog, QStringLiteral("&Add"));
    dialog->findChild<QListWidget*>()->setCurrentRow(1);
    press(dialog, QStringLiteral("&Remove"));
    dialog->findChild<QListWidget*>()->item(0)->setText(QStringLiteral("Evening"));
    dialog->findChild<QComboBox*>()->setCurrentIndex(2);
    QTest::keyClick(dialog, Qt::Key_Return);
    const Project project = test.store().snapshot();
    QCOMPARE(project.deviceSets.size(), 2);
    QCOMPARE(project.deviceSets.first().text, QStringLiteral("Evening"));
    QVERIFY(project.currentDeviceSet == project.deviceSets.last().info.id);
    auto* selector = test.session.layer()->GetWidget()->findChild<QComboBox*>();
    QTRY_COMPARE(selector->count(), 2);
    QCOMPARE(selector->currentText(), QStringLiteral("Set 3"));
}

void WorkbenchWindowTest::shouldOfferOnlyWhatIsPossible()
{
    WorkbenchUnderTest test;
    QVERIFY(!test.action(Do::Remove)->isEnabled());
    QVERIFY(!test.action(Do::GoOnline)->isEnabled());
    test.window.records().select({sampleId(11), sampleId(12)});
    QVERIFY(test.action(Do::GoOnline)->isEnabled());
    QVERIFY(!test.action(Do::MakeCurrent)->isEnabled());
    QVERIFY(!test.action(Do::Rename)->isEnabled());
    test.window.records().select({sampleId(1)});
    QVERIFY(test.action(Do::Rename)->isEnabled());
    QVERIFY(!test.action(Do::GoOnline)->isEnabled());
    test.store().addProcessors(QUuid(), 251);
    QVERIFY(!test.action(Do::AddProcessor)->isEnabled());
    QVERIFY(!test.action(Do::AddProcessors)->isEnabled());
    test.waitForPanel();
}

void WorkbenchWindowTest::shouldNameItsWidgets()
{
    WorkbenchUnderTest test;
    const auto check = [](QWidget* top) {
        for (const QWidget* widget : top->findChildren<QWidget*>()) {
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            const bool isPart = widget->objectName().startsWith(QLatin1String("qt_"))
                                || qobject_cast<const QAbstractSpinBox*>(widget->parentWidget())
                                || qobject_cast<const QComboBox*>(widget->parentWidget())
                                || (button && qobject_cast<QLineEdit*>(widget->parentWidget()));
            const bool takesKeys = widget->focusPolicy() & Qt::TabFocus;
            const bool named =
                !widget->accessibleName().isEmpty() || (button && !button->text().isEmpty());
            if (takesKeys && !isPart && widget->isVisible())
                QVERIFY2(named,
                         qPrintable(QStringLiteral("%1 \"%2\"")
                                        .arg(QLatin1String(widget->metaObject()->className()),
                                             widget->objectName())));
        }
    };
    check(&test.window);
    for (const Do what : {Do::AddProcessors, Do::DeviceSets, Do::HandlerAnswers, Do::RaiseEvent}) {
        test.action(what)->trigger();
        auto* dialog = openDialog<QDialog>();
        QVERIFY(dialog);
        check(dialog);
        dialog->reject();
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }
}

/// F2, Delete and their like mean something in the panel; no menu of the window takes them away.
void WorkbenchWindowTest::shouldLeaveTheTreesKeysToThePanel()
{
    WorkbenchUnderTest test;
    QSet<QString> seen;
    for (const QAction* action : test.window.findChildren<QAction*>()) {
        const QString keys = action->shortcut().toString();
        if (keys.isEmpty())
            continue;
        QVERIFY2(!seen.contains(keys), qPrintable(keys));
        seen.insert(keys);
    }
    for (const char* keys : {"F2", "Del", "Ctrl+A", "Ctrl+G", "Ctrl+F", "Esc", "Return"})
        QVERIFY2(!seen.contains(QLatin1String(keys)), keys);
    QVERIFY(seen.size() > 35);
}

QTEST_MAIN(WorkbenchWindowTest)
#include "tst_workbench_window.moc"
