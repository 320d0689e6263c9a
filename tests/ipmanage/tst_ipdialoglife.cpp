// Dialogs that are open while the host changes or destroys the panel or the list.

#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "plugin/TargetSelectArea.h"
#include "tests/ipmanage/ManageTest.h"
#include "tests/support/Chinese.h"

#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace {

QPushButton* managementButton(CTargetSelectArea& area)
{
    const auto buttons = area.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == QLatin1String("IP address management..."))
            return button;
    }
    return nullptr;
}

/// The panel in a window, with its management button.
struct DockedPanel : DialogTest
{
    DockedPanel()
    {
        host().ipManagementAvailable = true;
        host().ipList =
            QStringList({QStringLiteral("10.0.0.1(One)"), QStringLiteral("10.0.0.2(Two)")});
        panel.area().setParent(&window);
        panel.area().Initialize();
        panel.area().show();
        host().clearCalls();
    }

    void openManagement() { QTest::mouseClick(managementButton(panel.area()), Qt::LeftButton); }

    /// Destroys the panel in the next iteration of the innermost event loop.
    void destroyPanelSoon()
    {
        QMetaObject::invokeMethod(
            qApp, [area = QPointer<QWidget>(&panel.area())] { delete area; }, Qt::QueuedConnection);
    }
};

} // namespace

Q_DECLARE_METATYPE(std::function<void(DockedPanel&)>)

class IPDialogLifeTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowTheButtonIfTheHostAllowsIt();
    void shouldReportChangesToTheHost_data();
    void shouldReportChangesToTheHost();
    void shouldSurviveThePanel_data();
    void shouldSurviveThePanel();
    void shouldSurviveThePanelInAHostCall_data();
    void shouldSurviveThePanelInAHostCall();
    void shouldSurviveThePanelInAnyHostCall_data();
    void shouldSurviveThePanelInAnyHostCall();
    void shouldRejectWithoutThePanel_data();
    void shouldRejectWithoutThePanel();
    void shouldShowTheLastDeviceSets();
    void shouldFollowTheLanguageWhileItIsBuilt();
    void shouldEndARunWithoutAHandler();
    void shouldKeepTheFileWithoutAHandler();
    void shouldHandleOneOkAtATime();
    void shouldSurviveTheHandler();
    void shouldNotFailWhenEntriesVanish();
    void shouldFollowTheLanguageInEveryOpenDialog();
};

void IPDialogLifeTest::shouldShowTheButtonIfTheHostAllowsIt()
{
    DockedPanel test;
    QPushButton* button = managementButton(test.panel.area());
    QVERIFY(button->isVisible());
    QCOMPARE(button->width(), 200);
    for (const int strategy : {0, 2, 1, 2, 3}) {
        test.panel.area().onDetectStrategyChanged(strategy);
        QCOMPARE(button->isVisible(), strategy == 2);
    }
    test.panel.area().onCurrentProcessorChanged(QUuid());
    QVERIFY(button->isVisible());
    test.host().ipManagementAvailable = false;
    test.panel.area().onCurrentProcessorChanged(QUuid());
    QVERIFY(!button->isVisible());
    test.host().ipManagementAvailable = true;
    test.panel.area().Initialize();
    QVERIFY(button->isVisible());
}

void IPDialogLifeTest::shouldReportChangesToTheHost_data()
{
    QTest::addColumn<bool>("detects");
    QTest::newRow("detect again") << true;
    QTest::newRow("leave it") << false;
}

void IPDialogLifeTest::shouldReportChangesToTheHost()
{
    QFETCH(bool, detects);
    DockedPanel test;
    test.host().ipListChanged = detects;
    test.driver.then([](QWidget& shown) {
        const ManageDriver drive(shown);
        drive.clickRow(0);
        drive.click("Delete");
        drive.close();
    });
    test.openManagement();
    QVERIFY(test.driver.isDone());
    const QStringList asked = test.asked();
    QCOMPARE(asked.first(), QStringLiteral("GetIPList"));
    const QString changed =
        QStringLiteral("IpListChanged(10.0.0.1(One),10.0.0.2(Two)|10.0.0.2(Two))");
    QCOMPARE(asked.mid(asked.size() - (detects ? 3 : 2)),
             detects ? QStringList(
                 {QStringLiteral("GetIPList"), changed, QStringLiteral("DetectProcessorsOnly")})
                     : QStringList({QStringLiteral("GetIPList"), changed}));
}

void IPDialogLifeTest::shouldSurviveThePanel_data()
{
    QTest::addColumn<QString>("open");
    for (const char* name :
         {"management", "menu", "add one", "message", "question", "edit", "import", "export"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void IPDialogLifeTest::shouldSurviveThePanel()
{
    QFETCH(QString, open);
    DockedPanel test;
    const QPointer<QWidget> panel(&test.panel.area());
    const auto destroy = [&](QWidget&) { test.destroyPanelSoon(); };
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        if (open == QLatin1String("management")) {
            test.destroyPanelSoon();
        } else if (open == QLatin1String("menu")) {
            test.driver.then(destroy);
            drive.click("Add");
        } else if (open == QLatin1String("add one")) {
            test.driver.then(destroy);
            drive.pickAdd(test.driver, 1);
        } else if (open == QLatin1String("message")) {
            test.driver
                .then([&](QWidget& entry) {
                    test.host().checkIp = [](quint32, bool) { return 1u; };
                    clickButton(entry, QStringLiteral("OK"));
                })
                .then(destroy);
            drive.pickAdd(test.driver, 1);
        } else if (open == QLatin1String("edit")) {
            test.driver.then(destroy);
            drive.clickRow(0);
            drive.click("Edit");
        } else {
            test.driver.then(destroy);
            drive.click(open == QLatin1String("question") ? "Clear"
                        : open == QLatin1String("import") ? "Import"
                                                          : "Export");
        }
    });
    test.openManagement();
    QVERIFY(test.driver.isDone());
    QVERIFY(!panel);
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(test.host().callCount(QStringLiteral("IpListChanged")), 0);
}

void IPDialogLifeTest::shouldSurviveThePanelInAHostCall_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<int>("dialogs");
    QTest::newRow("before the management opens") << QStringLiteral("GetIPNameLists") << 0;
    QTest::newRow("before the entry opens") << QStringLiteral("RefreshIPList") << 1;
    QTest::newRow("while an address is proposed") << QStringLiteral("CheckIPAddress") << 1;
    QTest::newRow("while the list is counted") << QStringLiteral("GetIPCount") << 2;
    QTest::newRow("while the address is added") << QStringLiteral("AddIPAddress") << 2;
    QTest::newRow("while the list is saved") << QStringLiteral("SaveIPList") << 2;
}

void IPDialogLifeTest::shouldSurviveThePanelInAHostCall()
{
    QFETCH(QString, question);
    QFETCH(int, dialogs);
    DockedPanel test;
    const QPointer<QWidget> panel(&test.panel.area());
    test.host().inside = [&](const QString& name) {
        if (name == question)
            delete panel;
    };
    if (dialogs > 0) {
        test.driver.then([&](QWidget& shown) { ManageDriver(shown).pickAdd(test.driver, 1); });
    }
    if (dialogs > 1) {
        test.driver.then([&](QWidget& entry) {
            retype(addressField(entry), QStringLiteral("10.0.0.77"));
            clickButton(entry, QStringLiteral("OK"));
        });
    }
    test.openManagement();
    QVERIFY(!panel);
    QVERIFY(test.driver.isDone());
    QVERIFY(!QApplication::activeModalWidget());
}

void IPDialogLifeTest::shouldSurviveThePanelInAnyHostCall_data()
{
    using Action = std::function<void(DockedPanel&)>;
    QTest::addColumn<QString>("question");
    QTest::addColumn<Action>("action");
    const auto sets = [](DockedPanel& test) {
        SDeviceSetInfo one{};
        one.id.Data1 = 1;
        SDeviceSetInfo two{};
        two.id.Data1 = 2;
        test.panel.area().onCurrentDeviceSetChanged(one.id, {one, two});
    };
    QTest::newRow("before the management")
        << QStringLiteral("GetIPList") << Action([](DockedPanel& test) { test.openManagement(); });
    QTest::newRow("current processor")
        << QStringLiteral("IsIpManagementAvailable")
        << Action([](DockedPanel& test) { test.panel.area().onCurrentProcessorChanged(QUuid()); });
    QTest::newRow("initialising") << QStringLiteral("IsIpManagementAvailable")
                                  << Action(
                                         [](DockedPanel& test) { test.panel.area().Initialize(); });
    QTest::newRow("registering") << QStringLiteral(
        "SetObserver") << Action([](DockedPanel& test) { test.panel.area().Initialize(); });
    QTest::newRow("LAN-USB") << QStringLiteral("IsLanUsbMode") << Action([](DockedPanel& test) {
        test.panel.area().onLANUSBGetProcessorIP();
    });
    QTest::newRow("device set") << QStringLiteral("GetDeviceSetText") << Action(sets);
}

void IPDialogLifeTest::shouldSurviveThePanelInAnyHostCall()
{
    using Action = std::function<void(DockedPanel&)>;
    QFETCH(QString, question);
    QFETCH(Action, action);
    DockedPanel test;
    const QPointer<QWidget> panel(&test.panel.area());
    test.host().inside = [&](const QString& name) {
        if (name == question)
            delete panel;
    };
    action(test);
    QVERIFY(!panel);
}

void IPDialogLifeTest::shouldRejectWithoutThePanel_data()
{
    QTest::addColumn<bool>("batch");
    QTest::newRow("one address") << false;
    QTest::newRow("a run") << true;
}

void IPDialogLifeTest::shouldRejectWithoutThePanel()
{
    QFETCH(bool, batch);
    DockedPanel test;
    const QPointer<QWidget> panel(&test.panel.area());
    std::unique_ptr<CDialog> dialog;
    if (batch)
        dialog = std::make_unique<CAddBatchIPDialog>(false, panel);
    else
        dialog = std::make_unique<CAddSingleIPDialog>(false, panel);
    int told = 0;
    connect(dialog.get(), &QDialog::finished, this, [&told] { ++told; });
    test.driver.then([&](QWidget& entry) {
        test.host().inside = [&](const QString& name) {
            if (name == QLatin1String("CheckIPAddress"))
                delete panel;
        };
        retype(addressField(entry), QStringLiteral("10.0.0.77"));
        clickButton(entry, QStringLiteral("OK"));
    });
    QCOMPARE(dialog->exec(), 0);
    QVERIFY(!panel);
    QCOMPARE(told, 0);
}

void IPDialogLifeTest::shouldShowTheLastDeviceSets()
{
    DockedPanel test;
    QList<SDeviceSetInfo> sets;
    for (quint32 n = 1; n <= 3; ++n) {
        SDeviceSetInfo set{};
        set.id.Data1 = n;
        sets.append(set);
    }
    bool announced = false;
    test.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetDeviceSetText") && !announced) {
            announced = true;
            test.panel.area().onCurrentDeviceSetChanged(sets.at(1).id, sets);
        }
    };
    test.panel.area().onCurrentDeviceSetChanged(sets.first().id, sets.mid(0, 2));
    const auto* selector = test.panel.area().findChild<QComboBox*>();
    QCOMPARE(selector->count(), 3);
    QCOMPARE(selector->currentIndex(), 1);
}

void IPDialogLifeTest::shouldFollowTheLanguageWhileItIsBuilt()
{
    DockedPanel test;
    std::unique_ptr<Chinese> chinese;
    test.host().inside = [&](const QString&) {
        if (!chinese) {
            chinese = std::make_unique<Chinese>();
            QCoreApplication::processEvents();
        }
    };
    const CAddBatchIPDialog dialog(true, &test.window);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("自定义添加处理器"));
}

void IPDialogLifeTest::shouldEndARunWithoutAHandler()
{
    DockedPanel test;
    CAddBatchIPDialog dialog(false, &test.window);
    int checks = 0;
    test.driver.then([&](QWidget& entry) {
        retype(addressField(entry), QStringLiteral("10.0.0.10"));
        entry.findChild<QSpinBox*>()->setValue(5);
        test.host().inside = [&](const QString& name) {
            if (name == QLatin1String("CheckIPAddress") && ++checks == 3)
                test.panel.area().m_controlHandler.reset();
        };
        clickButton(entry, QStringLiteral("OK"));
        QVERIFY(entry.isVisible());
        QTest::keyClick(&entry, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(checks, 3);
}

void IPDialogLifeTest::shouldKeepTheFileWithoutAHandler()
{
    DockedPanel test;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.txt"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.click("Export");
            drive.close();
        })
        .then([&](QWidget& dialog) {
            test.panel.area().m_controlHandler.reset();
            chooseFile(dialog, path);
        })
        .then([](QWidget& overwrite) { clickButton(overwrite, QStringLiteral("Yes")); });
    test.openManagement();
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("precious"));
}

void IPDialogLifeTest::shouldHandleOneOkAtATime()
{
    DockedPanel test;
    CAddSingleIPDialog dialog(true, &test.window);
    bool pressed = false;
    test.driver.then([&](QWidget& entry) {
        retype(addressField(entry), QStringLiteral("10.0.0.77"));
        test.host().inside = [&](const QString& name) {
            if (name == QLatin1String("CheckIPAddress") && !pressed) {
                pressed = true;
                clickButton(entry, QStringLiteral("OK"));
            }
        };
        clickButton(entry, QStringLiteral("OK"));
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(test.host().callCount(QStringLiteral("AddIPAddress")), 1);
}

void IPDialogLifeTest::shouldSurviveTheHandler()
{
    DockedPanel test;
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        test.panel.area().m_controlHandler.reset();
        drive.clickRow(0);
        drive.click("Delete");
        QCOMPARE(drive.rows(), 0);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Import"));
        drive.pickAdd(test.driver, 0);
        test.driver.then([](QWidget& entry) {
            QCOMPARE(addressField(entry)->text(), QString());
            QTest::keyClick(&entry, Qt::Key_Escape);
        });
        drive.pickAdd(test.driver, 1);
        drive.close();
    });
    test.openManagement();
    QVERIFY(test.driver.isDone());
}

void IPDialogLifeTest::shouldNotFailWhenEntriesVanish()
{
    DockedPanel test;
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.clickRow(1);
            drive.click("Edit");
            QCOMPARE(drive.rows(), 0);
            QCOMPARE(drive.enabled(), QStringLiteral("Add Import"));
            drive.close();
        })
        .then([&](QWidget& entry) {
            test.host().ipList.clear();
            clickButton(entry, QStringLiteral("OK"));
        });
    test.openManagement();
    QVERIFY(test.driver.isDone());
}

void IPDialogLifeTest::shouldFollowTheLanguageInEveryOpenDialog()
{
    DockedPanel test;
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.pickAdd(test.driver, 1);
            QCOMPARE(shown.windowTitle(), QStringLiteral("IP address management"));
            drive.close();
        })
        .then([&](QWidget& entry) {
            const QWidget* management = entry.parentWidget();
            {
                const Chinese chinese;
                QTRY_COMPARE(entry.windowTitle(), QStringLiteral("添加 IP"));
                QCOMPARE(management->windowTitle(), QStringLiteral("IP 地址管理"));
                QVERIFY(!managementButton(test.panel.area()));
            }
            QTRY_COMPARE(entry.windowTitle(), QStringLiteral("Add IP"));
            QTest::keyClick(&entry, Qt::Key_Escape);
        });
    test.openManagement();
    QVERIFY(test.driver.isDone());
}

TSA_TEST_MAIN(IPDialogLifeTest)
#include "tst_ipdialoglife.moc"
