#include "tests/processortree/DrivenTree.h"
#include "tests/support/Chinese.h"

namespace {
const QString kGroup = QStringLiteral("Add processor group|--");
const QString kAll = QStringLiteral("|Add 1 processor|Add 2 processor|Custom adds...|--");
const QString kAllDisabled =
    QStringLiteral("|(Add 1 processor)|(Add 2 processor)|(Custom adds...)|--");

/// The host's answers that the menu of a row depends on.
struct Answers
{
    int listed = 4;
    bool canAdd = true;
    bool addEnabled = true;
    bool readOnly = false;
    bool guarded = false; // hostFlag13
    bool canRename = false;
    bool managed = false;
    bool panelAvailable = false;
    bool panelLit = false;
};

QList<ProcessorNode> processors(int count, bool guarded = false)
{
    QList<ProcessorNode> list;
    for (int n = 0; n < count; ++n) {
        ProcessorNode processor = testProcessor(static_cast<quint32>(n) + 1);
        processor.id = testId(1000 + static_cast<quint32>(n));
        processor.hostFlag13 = guarded;
        list.append(processor);
    }
    return list;
}

void apply(DrivenTree& tree, const Answers& answers)
{
    tree.fill({testGroup(10), testGroup(11)}, processors(answers.listed, answers.guarded));
    tree.host().canAdd = answers.canAdd;
    tree.host().addEnabled = answers.addEnabled;
    tree.host().canRename = answers.canRename;
    tree.host().ipManagementAvailable = answers.managed;
    tree.host().frontPanelAvailable = answers.panelAvailable;
    tree.host().frontPanelLit = answers.panelLit;
    tree.panel.data().SetReadOnly(answers.readOnly);
}

} // namespace

Q_DECLARE_METATYPE(Answers)

class TreeViewMenusTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldOfferWhatTheHostAllows_data();
    void shouldOfferWhatTheHostAllows();
    void shouldLetTheHostAppendEntries();
    void shouldRunTheHostsEntries();
    void shouldRunItsEntries_data();
    void shouldRunItsEntries();
    void shouldOpenTheSameMenuByButtonAndKey();
    void shouldRunAnEntryThatAssistiveTechnologyTriggers();
    void shouldOpenNoneWhenLocked();
    void shouldDoNothingOnceLocked_data();
    void shouldDoNothingOnceLocked();
    void shouldNotDeleteWhatWasSelectedSince();
    void shouldSpeakTheUsersLanguage();
    void shouldRenameNothingThatIsGone();
    void shouldOutliveAViewDestroyedMeanwhile_data();
    void shouldOutliveAViewDestroyedMeanwhile();
};

void TreeViewMenusTest::shouldOfferWhatTheHostAllows_data()
{
    QTest::addColumn<quint32>("row");
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<QString>("entries");
    const quint32 root = 0;
    const quint32 group = 10;
    const quint32 processor = 1000;
    const auto answers = [](void (*change)(Answers&)) {
        Answers changed;
        change(changed);
        return changed;
    };
    const QString rename = QStringLiteral("|Rename|--|Delete");
    QTest::newRow("root") << root << Answers() << kGroup + kAll;
    QTest::newRow("group") << group << Answers() << kGroup + kAll + rename;
    QTest::newRow("processor") << processor << Answers() << kGroup + kAll + rename;
    const Answers readOnly = answers([](Answers& a) { a.readOnly = a.panelAvailable = true; });
    QTest::newRow("root, read-only") << root << readOnly << "";
    QTest::newRow("group, read-only") << group << readOnly << "Rename|--|(Delete)";
    QTest::newRow("processor, read-only") << processor << readOnly << "Rename|--|(Delete)";
    const QString oneAndCustom = QStringLiteral("|Add 1 processor|Custom adds...|--");
    const std::pair<int, QString> limits[] = {{0, kAll},   {1, kAll},           {252, kAll},
                                              {253, kAll}, {254, oneAndCustom}, {255, QString()}};
    for (const auto& [listed, entries] : limits) {
        Answers full;
        full.listed = listed;
        QTest::addRow("%d listed", listed) << root << full << kGroup + entries;
    }
    QTest::newRow("none listed") << root << answers([](Answers& a) {
        a.listed = 0;
        a.canAdd = a.addEnabled = false;
    }) << kGroup + kAll;
    QTest::newRow("not addable") << group << answers([](Answers& a) { a.canAdd = false; })
                                 << kGroup + rename;
    QTest::newRow("adding disabled") << group << answers([](Answers& a) { a.addEnabled = false; })
                                     << kGroup + kAllDisabled + rename;
    QTest::newRow("the only one") << processor << answers([](Answers& a) { a.listed = 1; })
                                  << kGroup + kAll + QStringLiteral("|Rename|--");
    QTest::newRow("guarded") << processor << answers([](Answers& a) { a.guarded = true; })
                             << kGroup + kAll;
    QTest::newRow("guarded, renamable")
        << processor << answers([](Answers& a) { a.guarded = a.canRename = true; })
        << kGroup + kAll + QStringLiteral("|Rename|--");
    QTest::newRow("guarded, managed")
        << processor << answers([](Answers& a) { a.guarded = a.managed = true; })
        << kGroup + kAll + QStringLiteral("|Delete");
    QTest::newRow("dark panel") << processor << answers([](Answers& a) {
        a.panelAvailable = true;
    }) << kGroup + kAll + rename + QStringLiteral("|--|Highlight the front panel");
    QTest::newRow("lit panel") << processor << answers([](Answers& a) {
        a.panelAvailable = a.panelLit = true;
    }) << kGroup + kAll + rename + QStringLiteral("|--|Cancel highlighting the front panel");
}

void TreeViewMenusTest::shouldOfferWhatTheHostAllows()
{
    QFETCH(quint32, row);
    QFETCH(Answers, answers);
    QFETCH(QString, entries);
    DrivenTree tree;
    apply(tree, answers);
    QString offered;
    int width = row == 1000 ? 240 : 120;
    if (!entries.isEmpty()) {
        tree.driver.then([&](QWidget& menu) {
            offered = entriesOf(menu);
            width -= menu.minimumWidth();
            for (const QAction* action : menu.actions())
                QVERIFY(action->shortcut().isEmpty());
            menu.close();
        });
    }
    tree.rightClick(row);
    QCOMPARE(offered, entries);
    QVERIFY(entries.isEmpty() || width == 0);
    const bool lists = !answers.readOnly;
    QCOMPARE(tree.host().callCount(QStringLiteral("GetAllProcessorNodes")), lists ? 1 : 0);
    QCOMPARE(tree.host().callCount(QStringLiteral("AppendContextMenu")), 1);
}

void TreeViewMenusTest::shouldLetTheHostAppendEntries()
{
    DrivenTree tree;
    tree.host().frontPanelAvailable = true;
    const QStringList names = {QStringLiteral("GetAllProcessorNodes"),
                               QStringLiteral("CanAddProcessors"),
                               QStringLiteral("IsAddProcessorsEnabled"),
                               QStringLiteral("AppendContextMenu"),
                               QStringLiteral("IsFrontPanelHighlightAvailable"),
                               QStringLiteral("IsFrontPanelHighlighted")};
    const QString before =
        QStringLiteral("GetAllProcessorNodes() CanAddProcessors(1) IsAddProcessorsEnabled(1) ");
    const std::pair<quint32, QString> rows[] = {
        {0, before + QStringLiteral("AppendContextMenu(0,0,false)")},
        {10, before + QStringLiteral("AppendContextMenu(1,10,false)")},
        {3, before
                + QStringLiteral("AppendContextMenu(2,3,false) IsFrontPanelHighlightAvailable() "
                                 "IsFrontPanelHighlighted(3)")}};
    for (const auto& [row, calls] : rows) {
        tree.host().clearCalls();
        tree.driver.thenEscape();
        tree.rightClick(row);
        QCOMPARE(tree.asked(names), calls);
    }
    tree.panel.data().SetReadOnly(true);
    tree.host().clearCalls();
    tree.driver.thenEscape();
    tree.rightClick(10);
    QCOMPARE(tree.asked(names), QStringLiteral("AppendContextMenu(1,10,true)"));
}

void TreeViewMenusTest::shouldRunTheHostsEntries()
{
    DrivenTree tree;
    tree.panel.data().SetReadOnly(true);
    int runs = 0;
    tree.host().appendEntries = [&](QMenu& menu) {
        menu.addAction(QStringLiteral("Of the host"), &menu, [&] { ++runs; });
    };
    tree.driver.then([](QWidget& menu) {
        QCOMPARE(entriesOf(menu), QStringLiteral("Of the host"));
        choose(menu, QStringLiteral("Of the host"));
    });
    tree.rightClick(0);
    QCOMPARE(runs, 1);
}

void TreeViewMenusTest::shouldRunItsEntries_data()
{
    QTest::addColumn<quint32>("row");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("request");
    QTest::newRow("group") << 0U << "Add processor group"
                           << "CreateGroup(Group 3)";
    QTest::newRow("one") << 11U << "Add 1 processor"
                         << "AddProcessors(11,1)";
    QTest::newRow("two") << 1U << "Add 2 processor"
                         << "AddProcessors(10,2)";
    QTest::newRow("ungroup") << 11U << "Delete"
                             << "Ungroup(11)";
    QTest::newRow("dark panel") << 4U << "Highlight the front panel"
                                << "SetFrontPanelHighlight(true)";
    QTest::newRow("lit panel") << 4U << "Cancel highlighting the front panel"
                               << "SetFrontPanelHighlight(false)";
    QTest::newRow("rename a group") << 10U << "Rename"
                                    << "";
    QTest::newRow("rename a processor") << 2U << "Rename"
                                        << "";
}

void TreeViewMenusTest::shouldRunItsEntries()
{
    QFETCH(quint32, row);
    QFETCH(QString, entry);
    QFETCH(QString, request);
    DrivenTree tree;
    tree.host().canAdd = tree.host().addEnabled = true;
    tree.host().frontPanelAvailable = true;
    tree.host().frontPanelLit = entry.startsWith(QLatin1String("Cancel"));
    const QString name = tree.index(row).data().toString();
    tree.driver.then([&](QWidget& menu) { choose(menu, entry); });
    tree.rightClick(row);
    QCOMPARE(tree.asked({QStringLiteral("CreateGroup"), QStringLiteral("AddProcessors"),
                         QStringLiteral("Ungroup"), QStringLiteral("SetFrontPanelHighlight")}),
             request);
    QCOMPARE(tree.editor() != nullptr, request.isEmpty());
    if (tree.editor())
        QCOMPARE(tree.editor()->text(), name);
}

void TreeViewMenusTest::shouldOpenTheSameMenuByButtonAndKey()
{
    DrivenTree tree;
    tree.host().showNodeMoreButton = true;
    tree.select({10});
    QStringList menus;
    QStringList started;
    for (int n = 0; n < 3; ++n)
        tree.driver.then([&](QWidget& menu) {
            menus.append(entriesOf(menu));
            const QAction* active = static_cast<QMenu&>(menu).activeAction();
            started.append(active ? active->text() : QString());
            menu.close();
        });
    tree.rightClick(10);
    const QRect row = tree.view->visualRect(tree.index(10));
    QTest::mouseClick(tree.view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      {row.left() + row.width() - 30, row.center().y()});
    QTRY_COMPARE(menus.size(), 2);
    QTest::keyClick(tree.view.data(), Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(menus.size(), 3);
    QCOMPARE(menus.count(kGroup + QStringLiteral("|Rename|--|Delete")), 3);
    QCOMPARE(started, QStringList({QString(), QString(), QStringLiteral("Add processor group")}));
}

void TreeViewMenusTest::shouldRunAnEntryThatAssistiveTechnologyTriggers()
{
    DrivenTree tree;
    tree.driver.then([](QWidget& menu) {
        const QList<QAction*> entries = menu.actions();
        for (QAction* entry : entries) {
            if (entry->text() == QStringLiteral("Rename"))
                entry->trigger();
        }
        QVERIFY(menu.isHidden());
    });
    tree.rightClick(10);
    QVERIFY(tree.editor());
}

void TreeViewMenusTest::shouldOpenNoneWhenLocked()
{
    DrivenTree tree;
    tree.select({1, 2});
    tree.view->SetLocked(true);
    tree.rightClick(1);
    QTest::keyClick(tree.view.data(), Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(tree.view.data(), Qt::Key_Delete);
    tree.view->OnNotifyMoreClicked(tree.index(1), {10, 10});
    QCOMPARE(tree.host().callCount(QStringLiteral("AppendContextMenu")), 0);
    tree.view->SetLocked(false);
    tree.driver.thenEscape();
    tree.rightClick(1);
    QCOMPARE(tree.host().callCount(QStringLiteral("AppendContextMenu")), 1);
}

void TreeViewMenusTest::shouldDoNothingOnceLocked_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("locked"); // else read-only
    for (const char* entry : {"Add processor group", "Add 1 processor", "Delete"}) {
        QTest::addRow("%s, locked", entry) << entry << true;
        QTest::addRow("%s, read-only", entry) << entry << false;
    }
    QTest::newRow("Rename, locked") << "Rename" << true;
}

void TreeViewMenusTest::shouldDoNothingOnceLocked()
{
    QFETCH(QString, entry);
    QFETCH(bool, locked);
    DrivenTree tree;
    tree.host().canAdd = true;
    tree.host().addEnabled = true;
    tree.select({1});
    tree.driver.then([&](QWidget& menu) {
        if (locked)
            tree.view->SetLocked(true);
        else
            tree.panel.data().SetReadOnly(true);
        choose(menu, entry);
    });
    tree.rightClick(1);
    QCOMPARE(tree.asked({QStringLiteral("CreateGroup"), QStringLiteral("AddProcessors"),
                         QStringLiteral("DeleteProcessors")}),
             QString());
    QVERIFY(!tree.editor());
}

void TreeViewMenusTest::shouldNotDeleteWhatWasSelectedSince()
{
    DrivenTree tree;
    tree.select({1});
    tree.driver.then([&](QWidget& menu) {
        tree.select({4});
        choose(menu, QStringLiteral("Delete"));
    });
    tree.rightClick(1);
    QCOMPARE(tree.asked({QStringLiteral("DeleteProcessors")}), QString());
}

void TreeViewMenusTest::shouldSpeakTheUsersLanguage()
{
    DrivenTree tree;
    const Chinese chinese;
    QVERIFY(chinese.isLoaded());
    QTRY_COMPARE(tree.index(0).data().toString().contains(QLatin1String("All")), false);
    QString offered;
    tree.driver.then([&](QWidget& menu) {
        offered = entriesOf(menu);
        menu.close();
    });
    tree.rightClick(10);
    QCOMPARE(offered, QStringLiteral("添加处理器组|--|重命名|--|删除"));
}

void TreeViewMenusTest::shouldRenameNothingThatIsGone()
{
    DrivenTree tree;
    tree.driver.then([&](QWidget& menu) {
        tree.model().removeNode(testId(3));
        choose(menu, QStringLiteral("Rename"));
    });
    tree.rightClick(3);
    tree.select({0});
    QTest::keyClick(tree.view.data(), Qt::Key_F2);
    QVERIFY(!tree.editor());
}

void TreeViewMenusTest::shouldOutliveAViewDestroyedMeanwhile_data()
{
    QTest::addColumn<bool>("several");
    QTest::addColumn<QString>("question");
    for (const char* question :
         {"GetAllProcessorNodes", "CanAddProcessors", "IsAddProcessorsEnabled", "GetProcessorNode",
          "CanRenameProcessor", "IsIpManagementAvailable", "AppendContextMenu",
          "IsFrontPanelHighlightAvailable", "IsFrontPanelHighlighted"})
        QTest::addRow("row, %s", question) << false << question;
    for (const char* question : {"GetSelectionMode", "GetSelectedProcessors", "IsRestrictedMode",
                                 "GetProcessorNode", "IsDeleteBlocked", "AppendContextMenu",
                                 "IsFrontPanelHighlightAvailable", "IsFrontPanelHighlighted"})
        QTest::addRow("several, %s", question) << true << question;
}

void TreeViewMenusTest::shouldOutliveAViewDestroyedMeanwhile()
{
    QFETCH(bool, several);
    QFETCH(QString, question);
    DrivenTree tree;
    ProcessorNode first = testProcessor(1, 10);
    first.hostFlag13 = true;
    tree.host().setProcessor(first);
    tree.host().canAdd = true;
    tree.host().frontPanelAvailable = true;
    tree.select({1, 2});
    if (several) {
        tree.host().selectionMode = 2;
        tree.host().selectedProcessors = QList<QUuid>{testId(1), testId(2)};
    }
    tree.doInside(question, [&] { delete tree.view; });
    const QPoint position = tree.place(1);
    QContextMenuEvent event(QContextMenuEvent::Mouse, position,
                            tree.view->viewport()->mapToGlobal(position));
    QApplication::sendEvent(tree.view->viewport(), &event);
    QVERIFY(!tree.view);
}

TSA_TEST_MAIN(TreeViewMenusTest)

#include "tst_treeviewmenus.moc"
