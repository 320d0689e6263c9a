#include "host/common/SoftwareName.h"
#include "tests/contract/FoundBreaches.h"
#include "tests/packaging/LibraryHost.h"
#include "tests/support/Chinese.h"
#include "tests/support/DialogDriver.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>

#include <mutex>

namespace {

QStringList buttonTexts(const QWidget& widget)
{
    QStringList texts;
    for (const auto* button : widget.findChildren<QPushButton*>())
        texts.append(button->text());
    return texts;
}

} // namespace

/// What docs/integrating.md says of a host's lock, log, name and language.
class TestHostSurroundings final : public QObject
{
    Q_OBJECT

private slots:
    void shouldAskOnTheThreadThatTells();
    void shouldSendItsLinesToTheSink();
    void shouldShowTheNameOfTheHost();
    void shouldSpeakTheLanguageOfTheHost();
    void shouldKeepRowsThatTheHostDoesNotKnow();
    void shouldLieInTheCornerOfADockThatDoesNotHoldIt();
};

void TestHostSurroundings::shouldAskOnTheThreadThatTells()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().setProject({}, {processor(1)});
    std::recursive_mutex mutex;
    host.handler().inside = [&mutex](const QString&) { const std::lock_guard guard(mutex); };
    HostThread teller;
    host.handler().clearCalls();
    QVERIFY(teller.run([&] {
        CSubject subject;
        subject.Attach(host.handler().observer);
        const std::lock_guard guard(mutex);
        subject.Notify<QUuid>(18, identity(1));
    }));
    QCOMPARE(host.tree(), QStringLiteral("1"));
    const auto calls = host.handler().calls();
    QCOMPARE(calls.first().name, QStringLiteral("GetProcessorNode"));
    QCOMPARE(calls.first().thread, teller.qtThread());
    host.handler().inside = nullptr;
}

void TestHostSurroundings::shouldSendItsLinesToTheSink()
{
    LibraryHost host;
    QVERIFY(host.open());
    LogTrap log;
    QVERIFY(host.notify<QString>(18, QStringLiteral("1")));
    QCOMPARE(log.take(), QStringList{QStringLiteral("CSubject::GetArgument:bad type cast!")});
}

void TestHostSurroundings::shouldShowTheNameOfTheHost()
{
    const QString before = custom_software_name();
    const auto restore = qScopeGuard([&] { set_custom_software_name(before); });
    set_custom_software_name(QStringLiteral("Stage Control"));
    LibraryHost host;
    QVERIFY(host.open());
    host.window()->show();
    QString title;
    DialogDriver driver;
    driver.then([&title](QWidget& dialog) {
        title = dialog.windowTitle();
        clickButton(dialog, QStringLiteral("OK"));
    });
    host.area()->ShowLanUsbWarning({{"10.0.0.1", "Left", "Device"}});
    QTRY_COMPARE(title, QStringLiteral("Stage Control"));
}

void TestHostSurroundings::shouldSpeakTheLanguageOfTheHost()
{
    LibraryHost host;
    QVERIFY(host.open());
    host.window()->show();
    const QStringList english = buttonTexts(*host.layer()->GetWidget());
    const Chinese chinese;
    QVERIFY(chinese.isLoaded());
    QTRY_VERIFY(buttonTexts(*host.layer()->GetWidget()) != english);
    DialogDriver driver;
    driver.then([](QWidget& dialog) { clickButton(dialog, QStringLiteral("确定")); });
    host.area()->ShowLanUsbWarning({{"10.0.0.1", "Left", "Device"}});
    QTRY_VERIFY(driver.isDone());
}

void TestHostSurroundings::shouldKeepRowsThatTheHostDoesNotKnow()
{
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().setProject({group(100)}, {processor(1, 100)});
    host.notify(16);
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[1]"));
    host.handler().setProject({}, {});
    QVERIFY(host.notify<QUuid>(17, identity(101)));
    QVERIFY(host.notify<QUuid>(18, identity(2)));
    QVERIFY(host.notify<QUuid>(25, identity(1)));
    QCOMPARE(host.tree(), QStringLiteral("G100[1]"));
    QVERIFY(host.notify<QList<QUuid>>(21, {identity(1), identity(100)}));
    QTRY_COMPARE(host.tree(), QString());
}

void TestHostSurroundings::shouldLieInTheCornerOfADockThatDoesNotHoldIt()
{
    QMainWindow window;
    auto* const dock = new QDockWidget(&window);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    IAbstractLayerInterface* layer = nullptr;
    QVERIFY(Library::init()(&layer, dock));
    window.resize(800, 600);
    window.show();
    QVERIFY(layer->GetWidget()->isVisible());
    QCOMPARE(layer->GetWidget()->pos(), QPoint());
    QVERIFY(layer->GetWidget()->height() < dock->height());
    dock->setWidget(layer->GetWidget());
    QTRY_COMPARE(layer->GetWidget()->width(), dock->width());
    QVERIFY(layer->GetWidget()->y() > 0);
}

TSA_TEST_MAIN(TestHostSurroundings)

#include "tst_hostsurroundings.moc"
