#include "Interface/TargetSelectAreaInterface.h"
#include "host/workbench/trace/ShortIds.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/RecordsPanel.h"
#include "host/workbench/window/WindowSettings.h"
#include "tests/support/DialogDriver.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QTreeWidget>

/// The window's own parts: records, log, menus and keys.
class WorkbenchWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldWorkByKeyboard();
    void shouldWorkByMouse();
    void shouldShowTheIpListWhileNoRecordIsSelected();
    void shouldShowTipsForAWhile();
    void shouldShowWhoseFrontPanelsAreLit();
    void shouldShowARowInTheLog();
    void shouldHideWhatPaintingAsks();
    void shouldCopyWholeLines();
    void shouldExportTheLinesThatAreShown();
    void shouldMarkProcessors();
    void shouldLogTheTree();
    void shouldFollowTheLanguage();
    void shouldEnableOnlyPossibleActions();
    void shouldNameItsWidgets();
    void shouldLeaveTheTreesKeysToThePanel();
    void shouldRememberItself();
    void shouldComeBackToTheScreen();

private:
    const TestSettings m_settings;
};

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
    auto* button =
        test.window.findChild<QToolBar*>()->widgetForAction(test.action(ActionId::GoOnline));
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(test.processor(13).online && test.processor(14).online);

    test.action(ActionId::MoveToGroup)->trigger();
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
    clickButton(test.window.log(), QStringLiteral("Clear"));
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

    test.action(ActionId::Chinese)->trigger();
    QMenu chinese;
    test.handler()->AppendContextMenu(NodeGroup, sampleId(1), false, &chinese);
    QCOMPARE(chinese.actions().constLast()->text(), QString::fromUtf8("宿主：在日志中显示"));
}

void WorkbenchWindowTest::shouldHideWhatPaintingAsks()
{
    WorkbenchUnderTest test;
    LogPanel& log = test.window.log();
    test.window.resize(1400, 800);
    auto* tree = test.session.layer()->GetWidget()->findChild<QTreeView*>();
    test.store().setCurrentProcessor(sampleId(12));
    test.waitForPanel();
    QTRY_COMPARE(tree->currentIndex().data().toString(), test.processor(12).name);
    const auto shown = [&] {
        test.session.trace().flush();
        return log.view()->model()->rowCount();
    };
    const int before = shown();
    const int all = test.session.trace().rowCount();
    tree->viewport()->repaint();
    QCOMPARE(shown(), before);
    QVERIFY(test.session.trace().rowCount() > all);
    QTest::mouseClick(log.paintingBox(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    QCOMPARE(shown(), test.session.trace().rowCount());
}

void WorkbenchWindowTest::shouldCopyWholeLines()
{
    WorkbenchUnderTest test;
    TraceModel& trace = test.session.trace();
    trace.clear();
    trace.add(TraceEntry::Kind::Log, QStringLiteral("first"));
    trace.add(TraceEntry::Kind::Event, QStringLiteral("second\nline"));
    trace.flush();
    QTableView* view = test.window.log().view();
    view->setFocus();
    view->selectAll();
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0), traceLine(trace.entry(0)));
    QCOMPARE(lines.at(1), traceLine(trace.entry(1)));
    QVERIFY(lines.at(1).endsWith(QStringLiteral("\tevent\tGUI\tsecond\\nline")));
}

void WorkbenchWindowTest::shouldExportTheLinesThatAreShown()
{
    WorkbenchUnderTest test;
    TraceModel& trace = test.session.trace();
    trace.clear();
    trace.add(TraceEntry::Kind::Log, QStringLiteral("first"));
    trace.add(TraceEntry::Kind::Log, QStringLiteral("second"));
    trace.flush();
    LogPanel& log = test.window.log();
    QTest::keyClicks(log.filterField(), QStringLiteral("second"));
    const auto exportTo = [&](const QString& path) {
        QTimer::singleShot(0, &test.window, [path] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            auto* name = dialog->findChild<QLineEdit*>();
            name->setText(path);
            QTest::keyClick(name, Qt::Key_Return);
        });
        clickButton(log, QStringLiteral("Export..."));
    };
    const QString path = m_settings.filePath(QStringLiteral("log.txt"));
    exportTo(path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), traceLine(trace.entry(1)) + QLatin1Char('\n'));

    const QString live = m_settings.filePath(QStringLiteral("live.txt"));
    test.window.files().addInUse(live);
    exportTo(live);
    auto* problem = openDialog<QMessageBox>();
    QVERIFY(problem);
    QVERIFY2(problem->text().contains(QStringLiteral("the workbench writes something else there")),
             qPrintable(problem->text()));
    QVERIFY(!QFile::exists(live));
}

void WorkbenchWindowTest::shouldMarkProcessors()
{
    WorkbenchUnderTest test(Notifier::Delivery::GuiThread);
    test.window.records().select({sampleId(11), sampleId(13)});
    test.action(ActionId::ToggleHasBackup)->trigger();
    QCOMPARE(test.processor(13).redundancyMode, 1);
    test.action(ActionId::ToggleBackup)->trigger();
    QCOMPARE(test.processor(13).redundancyMode, 2);
    test.action(ActionId::ToggleBackup)->trigger();
    QCOMPARE(test.processor(13).redundancyMode, 0);
    test.action(ActionId::ToggleProtected)->trigger();
    QVERIFY(test.handler()->IsDeleteBlocked(sampleId(13)));
    QVERIFY(!test.handler()->IsDeleteBlocked(sampleId(12)));
    test.action(ActionId::ToggleProtected)->trigger();
    QVERIFY(!test.handler()->IsDeleteBlocked(sampleId(13)));
}

void WorkbenchWindowTest::shouldLogTheTree()
{
    WorkbenchUnderTest test;
    test.session.trace().clear();
    test.action(ActionId::LogTree)->trigger();
    test.session.trace().flush();
    QCOMPARE(test.session.trace().rowCount(), 7);
    QVERIFY(test.session.trace().entry(2).text.contains(QStringLiteral("P11 10.0.0.1 offline")));
    test.session.trace().clear();
    test.action(ActionId::LogProcessors)->trigger();
    test.session.trace().flush();
    QCOMPARE(test.session.trace().rowCount(), 6);
    test.action(ActionId::RemoveAllGroups)->trigger();
    QCOMPARE(test.panelTree(), QStringLiteral("All processors(1)[P14]"));
    test.action(ActionId::AnnounceProject)->trigger();
    test.waitForPanel();
    test.action(ActionId::SetReadOnly)->trigger();
    test.action(ActionId::LockOperations)->trigger();
    test.action(ActionId::ApplyLock)->trigger();
    test.action(ActionId::DetectDevices)->trigger();
    QVERIFY(test.processor(11).online);
    test.waitForPanel();
}

void WorkbenchWindowTest::shouldFollowTheLanguage()
{
    WorkbenchUnderTest test;
    const QString english = test.action(ActionId::SaveProject)->text();
    test.action(ActionId::Chinese)->trigger();
    QTRY_COMPARE(test.action(ActionId::SaveProject)->text(), QString::fromUtf8("保存(&S)"));
    QTRY_COMPARE(test.panelTree(), QString::fromUtf8("全部处理器(4)[G1[P11,P12],G2[P13],P14]"));
    QCOMPARE(test.window.records().model().headerData(0, Qt::Horizontal).toString(),
             QString::fromUtf8("名称"));
    QVERIFY(buttonOf(test.window.log(), QString::fromUtf8("清空")));
    for (const QAction* action : test.window.findChild<QToolBar*>()->actions())
        QVERIFY2(!action->iconText().contains(QLatin1Char('(')), qPrintable(action->iconText()));
    test.action(ActionId::English)->trigger();
    QTRY_COMPARE(test.action(ActionId::SaveProject)->text(), english);
    QTRY_VERIFY(test.panelTree().startsWith(QStringLiteral("All processors(4)")));
}

void WorkbenchWindowTest::shouldEnableOnlyPossibleActions()
{
    WorkbenchUnderTest test;
    QVERIFY(!test.action(ActionId::Remove)->isEnabled());
    QVERIFY(!test.action(ActionId::GoOnline)->isEnabled());
    test.window.records().select({sampleId(11), sampleId(12)});
    QVERIFY(test.action(ActionId::GoOnline)->isEnabled());
    QVERIFY(!test.action(ActionId::MakeCurrent)->isEnabled());
    QVERIFY(!test.action(ActionId::Rename)->isEnabled());
    test.window.records().select({sampleId(1)});
    QVERIFY(test.action(ActionId::Rename)->isEnabled());
    QVERIFY(!test.action(ActionId::GoOnline)->isEnabled());
    test.store().addProcessors(QUuid(), 251);
    QVERIFY(!test.action(ActionId::AddProcessor)->isEnabled());
    QVERIFY(!test.action(ActionId::AddProcessors)->isEnabled());
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
    for (const ActionId id : {ActionId::AddProcessors, ActionId::DeviceSets,
                              ActionId::HandlerAnswers, ActionId::RaiseEvent}) {
        test.action(id)->trigger();
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

void WorkbenchWindowTest::shouldRememberItself()
{
    const QRect place(20, 30, 1100, 500);
    QList<int> sizes;
    {
        WorkbenchUnderTest test;
        test.action(ActionId::Chinese)->trigger();
        test.window.setGeometry(place);
        QCoreApplication::processEvents();
        test.window.records().splitter()->setSizes({100, 900});
        sizes = test.window.records().splitter()->sizes();
        QVERIFY(sizes.at(0) < sizes.at(1));
        test.window.findChild<QDockWidget*>(QStringLiteral("logDock"))->setFloating(true);
        QTest::keyClicks(test.window.log().filterField(), QStringLiteral("notify -Get"));
        test.window.log().kindSelector()->setCurrentIndex(2);
        test.window.log().paintingBox()->click();
        WindowSettings::save(test.window);
    }
    WorkbenchUnderTest test;
    QCOMPARE(test.language.choice(), Language::Choice::English);
    WindowSettings::restore(test.window);
    QCOMPARE(test.language.choice(), Language::Choice::Chinese);
    QVERIFY(test.action(ActionId::Chinese)->isChecked());
    QCOMPARE(test.window.height(), place.height());
    QVERIFY(test.window.findChild<QDockWidget*>(QStringLiteral("logDock"))->isFloating());
    const QList<int> restored = test.window.records().splitter()->sizes();
    QVERIFY(restored.at(0) < restored.at(1));
    QCOMPARE(test.window.log().filterField()->text(), QStringLiteral("notify -Get"));
    QCOMPARE(test.window.log().kindSelector()->currentIndex(), 2);
    QVERIFY(test.window.log().paintingBox()->isChecked());
}

void WorkbenchWindowTest::shouldComeBackToTheScreen()
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QRect& place : {QRect(room.right() - 10, 100, 600, 400), QRect(-590, 100, 600, 400),
                               QRect(5000, 5000, 600, 400), QRect(10, 10, 5000, 4000)}) {
        {
            WorkbenchUnderTest test;
            test.window.setGeometry(place);
            WindowSettings::save(test.window);
        }
        WorkbenchUnderTest test;
        WindowSettings::restore(test.window);
        // The screen of the test may be narrower than the window.
        const QPoint corner = test.window.geometry().topLeft();
        QVERIFY(room.contains(QRect(corner, QSize(200, 200))));
    }
}

TSA_TEST_MAIN(WorkbenchWindowTest)

#include "tst_workbench_window.moc"
