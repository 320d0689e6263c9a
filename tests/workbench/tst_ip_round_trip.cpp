// The panel's dialogs over the workbench's list: what is exported comes back.

#include "plugin/TargetSelectArea.h"
#include "tests/ipmanage/ManageTest.h"
#include "tests/support/LocaleCodec.h"
#include "tests/support/UnusualFolder.h"
#include "tests/workbench/HandlerUnderTest.h"

#include <QTemporaryDir>

namespace {

/// Names that survive an export: it ends a name at its first ")".
QStringList exportableNames()
{
    QStringList names;
    const QStringList awkward = awkwardNames();
    for (const QString& name : awkward) {
        if (!name.contains(QLatin1Char(')')))
            names.append(name);
    }
    return names
           + QStringList({QStringLiteral("("), QStringLiteral("a (b"), QString(32, QChar(0x5927)),
                          QStringLiteral("10.0.0.1,x")});
}

QStringList entriesOf(WorkbenchHandler& handler)
{
    QStringList entries;
    handler.GetIPList(entries);
    return entries;
}

} // namespace

class IpRoundTripTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldImportWhatWasExported_data();
    void shouldImportWhatWasExported();
};

void IpRoundTripTest::shouldImportWhatWasExported_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QString>("place");
    QTest::newRow("the system's encoding") << QByteArray() << QString();
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << QString();
    QTest::newRow("Chinese letters") << QByteArray() << QStringLiteral("Chinese");
    QTest::newRow("long path") << QByteArray() << QStringLiteral("long");
}

void IpRoundTripTest::shouldImportWhatWasExported()
{
    QFETCH(QByteArray, encoding);
    QFETCH(QString, place);
    const LocaleCodec usual(encoding.isEmpty() ? nullptr : QTextCodec::codecForName(encoding));
    const QStringList names = encodableTexts(exportableNames(), *QTextCodec::codecForLocale());
    QVERIFY(names.size() > 5);
    const QTemporaryDir folder;
    const QString path =
        (place.isEmpty() ? folder.path()
                         : makeUnusualFolder(folder.path(), place == QLatin1String("long")))
        + QStringLiteral("/ipList.txt");
    HandlerUnderTest workbench;
    DialogTest test;
    test.panel.area().m_controlHandler =
        std::shared_ptr<IAbstractControlInterface>(std::shared_ptr<void>(), &workbench.handler);
    workbench.handler.ClearIPList();
    for (int n = 0; n < 255; ++n) {
        workbench.handler.AddIPAddress(QStringLiteral("10.20.%1.%2").arg(n / 100).arg(n + 1),
                                       names.at(n % names.size()));
    }
    const QStringList before = entriesOf(workbench.handler);
    QCOMPARE(before.size(), 255);

    CIPManageDialog dialog(&test.window);
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.click("Export");
            drive.click("Clear");
            QCOMPARE(drive.rows(), 0);
            QCOMPARE(entriesOf(workbench.handler), QStringList());
            drive.click("Import");
            QCOMPARE(drive.rows(), 255);
            drive.close();
        })
        .then([&](QWidget& file) { chooseFile(file, path); })
        .then([&](QWidget& question) { clickButton(question, QStringLiteral("Yes")); })
        .then([&](QWidget& file) { chooseFile(file, path); });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(entriesOf(workbench.handler), before);
}

TSA_TEST_MAIN(IpRoundTripTest)
#include "tst_ip_round_trip.moc"
