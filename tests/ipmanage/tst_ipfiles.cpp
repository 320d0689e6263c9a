#include "Interface/IPStatusCodes.h"
#include "ipmanage/IPListFile.h"
#include "tests/ipmanage/ManageTest.h"
#include "tests/ipmanage/OtherDesktop.h"
#include "tests/support/LocaleCodec.h"
#include "tests/support/TextFile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextCodec>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

/// A device that accepts `room` bytes.
class SmallDevice final : public QIODevice
{
public:
    explicit SmallDevice(qint64 room)
        : m_room(room)
    {
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }

    qint64 writeData(const char*, qint64 size) override
    {
        if (size > m_room) {
            setErrorString(QStringLiteral("No space left on device"));
            return -1;
        }
        m_room -= size;
        return size;
    }

private:
    qint64 m_room;
};

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

/// Presses a button of the next dialog, and closes the dialog after the further steps.
DialogDriver& press(DialogTest& test, const char* button)
{
    return test.driver.then([&test, button](QWidget& shown) {
        const ManageDriver drive(shown);
        test.host().clearCalls();
        drive.click(button);
        QVERIFY(shown.isVisible());
        drive.close();
    });
}

} // namespace

class IPFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldWriteALinePerEntry_data();
    void shouldWriteALinePerEntry();
    void shouldNoticeReplacedCharacters_data();
    void shouldNoticeReplacedCharacters();
    void shouldReportAFullDevice_data();
    void shouldReportAFullDevice();
    void shouldExport();
    void shouldReplaceAnOldFile();
#ifdef Q_OS_UNIX // Windows has no device that is always full.
    void shouldNotAnnounceAnExportThatFailed();
#endif
    void shouldIgnoreAnExportToAnUnwritableFile();
    void shouldIgnoreACancelledExport();
    void shouldProposeTheDesktop_data();
    void shouldProposeTheDesktop();
    void shouldReportReplacedCharacters_data();
    void shouldReportReplacedCharacters();
#ifdef Q_OS_WIN // Only Windows has code pages.
    void shouldExportInTheCodePage();
#endif
    void shouldReportAnEmptyName();
    void shouldImport_data();
    void shouldImport();
    void shouldIgnoreAnImport_data();
    void shouldIgnoreAnImport();
};

void IPFilesTest::shouldWriteALinePerEntry_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QByteArray>("text");
    const auto one = [](const char* text) { return QStringList(QString::fromUtf8(text)); };
    QTest::newRow("none") << QStringList() << QByteArray();
    QTest::newRow("name") << one("10.0.0.1(Hall)") << QByteArray("10.0.0.1,Hall\n");
    QTest::newRow("empty name") << one("10.0.0.1()") << QByteArray("10.0.0.1,\n");
    QTest::newRow("no name") << one("10.0.0.1") << QByteArray("10.0.0.1,10.0.0.1\n");
    QTest::newRow("comma") << one("10.0.0.1(a, b)") << QByteArray("10.0.0.1,a, b\n");
    QTest::newRow("several") << one("10.0.0.1(a (b) c)") << QByteArray("10.0.0.1,a (b\n");
    QTest::newRow("Chinese") << one("10.0.0.1(大厅)") << QByteArray("10.0.0.1,大厅\n");
    QTest::newRow("two") << one("10.0.0.1(a)") + one("10.0.0.2(b)")
                         << QByteArray("10.0.0.1,a\n10.0.0.2,b\n");
}

void IPFilesTest::shouldWriteALinePerEntry()
{
    QFETCH(QStringList, entries);
    QFETCH(QByteArray, text);
    const LocaleCodec usual("UTF-8");
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly | QIODevice::Text));
    QCOMPARE(IPListFile::write(buffer, entries), IPListFile::Result::Written);
    QCOMPARE(buffer.data(), asTextFile(text));
}

void IPFilesTest::shouldNoticeReplacedCharacters_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("in every encoding") << QStringLiteral("Hall");
    QTest::newRow("in some") << QString::fromUtf8("大厅");
    QTest::newRow("in none") << QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b");
}

/// With the encoding that the system has: that of Windows counts nothing that it replaces.
void IPFilesTest::shouldNoticeReplacedCharacters()
{
    QFETCH(QString, name);
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly | QIODevice::Text));
    const IPListFile::Result result =
        IPListFile::write(buffer, {QStringLiteral("10.0.0.1(%1)").arg(name)});
    const QString text = QTextCodec::codecForLocale()->toUnicode(buffer.data());
    const bool isWhole = text.trimmed() == QStringLiteral("10.0.0.1,") + name;
    QCOMPARE(result, isWhole ? IPListFile::Result::Written : IPListFile::Result::Replaced);
    QVERIFY(isWhole || name != QLatin1String("Hall"));
}

void IPFilesTest::shouldReportAFullDevice_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<bool>("fits");
    const int size = 255 * asTextFile("10.0.0.9,x\n").size();
    QTest::newRow("always full") << 0 << false;
    QTest::newRow("a byte too small") << size - 1 << false;
    QTest::newRow("just enough") << size << true;
}

void IPFilesTest::shouldReportAFullDevice()
{
    QFETCH(int, room);
    QFETCH(bool, fits);
    QStringList entries;
    for (int n = 0; n < 255; ++n)
        entries.append(QStringLiteral("10.0.0.9(x)"));
    SmallDevice device(room);
    QVERIFY(device.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Unbuffered));
    const IPListFile::Result result = IPListFile::write(device, entries);
    QCOMPARE(result, fits ? IPListFile::Result::Written : IPListFile::Result::Failed);
}

void IPFilesTest::shouldExport()
{
    DialogTest test;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.txt"));
    test.host().ipList = QStringList({QStringLiteral("10.0.0.1(Hall)"),
                                      QStringLiteral("10.0.0.2()"), QStringLiteral("10.0.0.3")});
    CIPManageDialog dialog(&test.window);
    press(test, "Export").then([&](QWidget& file) {
        QCOMPARE(file.windowTitle(), QStringLiteral("Export an IP address list"));
        chooseFile(file, path);
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(contents(path), asTextFile("10.0.0.1,Hall\n10.0.0.2,\n10.0.0.3,10.0.0.3\n"));
    QCOMPARE(test.asked(), QStringList({QStringLiteral("GetIPList"),
                                        QStringLiteral("ShowTipMessage(Export successfully.)")}));
}

void IPFilesTest::shouldReplaceAnOldFile()
{
    DialogTest test;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.txt"));
    {
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(5000, 'x'));
    }
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1(Hall)"));
    CIPManageDialog dialog(&test.window);
    press(test, "Export")
        .then([&](QWidget& file) { chooseFile(file, path); })
        .then([](QWidget& overwrite) { clickButton(overwrite, QStringLiteral("Yes")); });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(contents(path), asTextFile("10.0.0.1,Hall\n"));
}

#ifdef Q_OS_UNIX
void IPFilesTest::shouldNotAnnounceAnExportThatFailed()
{
    const QString path = QStringLiteral("/dev/full");
    QVERIFY2(QFile::exists(path), "Linux has a device that is always full");
    DialogTest test;
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1(Hall)"));
    CIPManageDialog dialog(&test.window);
    QString message;
    press(test, "Export")
        .then([&](QWidget& file) { chooseFile(file, path); })
        .then([](QWidget& overwrite) { clickButton(overwrite, QStringLiteral("Yes")); })
        .thenReadMessage(message);
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(message, QStringLiteral("Export failed, the file could not be written completely."));
    QCOMPARE(test.host().callCount(QStringLiteral("ShowTipMessage")), 0);
}
#endif

void IPFilesTest::shouldIgnoreAnExportToAnUnwritableFile()
{
    DialogTest test;
    const QTemporaryDir folder;
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1(Hall)"));
    CIPManageDialog dialog(&test.window);
    press(test, "Export").then([&](QWidget& file) {
        chooseFile(file, folder.filePath(QStringLiteral("no/such/folder.txt")));
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.asked(), QStringList());
}

void IPFilesTest::shouldIgnoreACancelledExport()
{
    DialogTest test;
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1(Hall)"));
    CIPManageDialog dialog(&test.window);
    press(test, "Export").thenEscape();
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.asked(), QStringList());
}

void IPFilesTest::shouldProposeTheDesktop_data()
{
    QTest::addColumn<QString>("desktop");
    QTest::addColumn<bool>("exists");
    QTest::newRow("usual") << QStringLiteral("Desktop") << true;
    QTest::newRow("elsewhere") << QString::fromUtf8("我的 桌面") << true;
    QTest::newRow("missing") << QStringLiteral("Gone") << false;
}

void IPFilesTest::shouldProposeTheDesktop()
{
    QFETCH(QString, desktop);
    QFETCH(bool, exists);
    const QTemporaryDir folder;
    desktop.prepend(folder.path() + QLatin1Char('/'));
    if (exists)
        QVERIFY(QDir().mkpath(desktop));
    const OtherDesktop other(folder, desktop);
    QCOMPARE(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation), desktop);
    if (!exists)
        desktop = QDir::homePath();

    DialogTest test;
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1(Hall)"));
    CIPManageDialog dialog(&test.window);
    QStringList proposed;
    QStringList folders;
    QStringList filters;
    const auto look = [&](QWidget& shown) {
        auto& file = dynamic_cast<QFileDialog&>(shown);
        proposed.append(file.selectedFiles().value(0));
        folders.append(file.directory().path());
        filters += file.nameFilters();
        file.reject();
    };
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.click("Export");
            drive.click("Import");
            drive.close();
        })
        .then(look)
        .then([&](QWidget& shown) {
            QCOMPARE(shown.windowTitle(), QStringLiteral("Import an IP address list"));
            look(shown);
        });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(proposed.first(), desktop + QStringLiteral("/ipList.txt"));
    QCOMPARE(folders, QStringList({desktop, desktop}));
    QCOMPARE(
        filters,
        QStringList({QStringLiteral("IP Address File(*.txt)"), QStringLiteral("*.txt"),
                     QStringLiteral("IP Address File(*.txt)"), QStringLiteral("AllFile(*.*)")}));
}

void IPFilesTest::shouldReportReplacedCharacters_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("tip");
    QTest::newRow("none") << QStringLiteral("Café") << QByteArray("10.0.0.1,Caf\xe9\n")
                          << QStringLiteral("Export successfully.");
    QTest::newRow("some") << QStringLiteral("大厅") << QByteArray("10.0.0.1,??\n")
                          << QStringLiteral("Export successfully. Characters that the file's "
                                            "encoding lacks were replaced.");
}

void IPFilesTest::shouldReportReplacedCharacters()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, text);
    QFETCH(QString, tip);
    DialogTest test;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.txt"));
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1(%1)").arg(name));
    CIPManageDialog dialog(&test.window);
    press(test, "Export").then([&](QWidget& file) { chooseFile(file, path); });
    QByteArray onTip;
    test.host().inside = [&](const QString& call) {
        if (call == QLatin1String("ShowTipMessage"))
            onTip = contents(path);
    };
    const LocaleCodec usual("ISO-8859-1");
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(onTip, asTextFile(text));
    const QStringList asked = test.asked();
    QCOMPARE(asked.last(), QStringLiteral("ShowTipMessage(%1)").arg(tip));
}

#ifdef Q_OS_WIN
void IPFilesTest::shouldExportInTheCodePage()
{
    const int codePage = static_cast<int>(GetACP());
    // Wine has the one that it was told to have, a PC any.
    if (qEnvironmentVariableIsSet("TSA_CODE_PAGE"))
        QCOMPARE(codePage, qEnvironmentVariableIntValue("TSA_CODE_PAGE"));
    const QMap<int, QByteArray> texts{{936, "10.0.0.1,\xB4\xF3\xCC\xFC \xA8\xA6\r\n"},
                                      {1252, "10.0.0.1,?? \xE9\r\n"},
                                      {65001, "10.0.0.1,大厅 é\r\n"}};
    const QByteArray text = texts.value(codePage);
    QVERIFY2(!text.isEmpty(), "a code page that this test knows");
    DialogTest test;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.txt"));
    test.host().ipList = QStringList(QString::fromUtf8("10.0.0.1(大厅 é)"));
    CIPManageDialog dialog(&test.window);
    press(test, "Export").then([&](QWidget& file) { chooseFile(file, path); });
    QCOMPARE(dialog.exec(), 0);
    const bool isWhole = codePage != 1252;
    QCOMPARE(contents(path), text);
    const QStringList asked = test.asked();
    QCOMPARE(asked.last() == QLatin1String("ShowTipMessage(Export successfully.)"), isWhole);
}
#endif

void IPFilesTest::shouldReportAnEmptyName()
{
    DialogTest test;
    CIPManageDialog dialog(&test.window);
    QString message;
    test.driver.thenReadMessage(message);
    // Qt's file dialog always returns a name, but a native one may not.
    QVERIFY(QMetaObject::invokeMethod(&dialog, "importFiles",
                                      Q_ARG(QStringList, QStringList(QString()))));
    QCOMPARE(message, QStringLiteral("Import failed, file name is empty."));
    QCOMPARE(test.host().callCount(QStringLiteral("ImportIPFile")), 0);
}

void IPFilesTest::shouldImport_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("tip");
    QTest::newRow("success") << 0u << QString() << QStringLiteral("Import successfully.");
    QTest::newRow("no address") << quint32{IPIMPORT_NO_VALID_IP}
                                << QStringLiteral("Import failed, no valid IP.") << QString();
    QTest::newRow("not opened") << quint32{IPIMPORT_OPEN_FAILED}
                                << QStringLiteral("Import failed with file opening error.")
                                << QString();
    QTest::newRow("any other") << 1u << QString() << QString();
}

void IPFilesTest::shouldImport()
{
    QFETCH(quint32, code);
    QFETCH(QString, message);
    QFETCH(QString, tip);
    DialogTest test;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.txt"));
    CIPManageDialog dialog(&test.window);
    test.host().importResult = code;
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1(Hall)"));
    QString shownMessage;
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            test.host().clearCalls();
            drive.click("Import");
            QCOMPARE(drive.rows(), code == 0 ? 1 : 0);
            QCOMPARE(drive.enabled(), code == 0 ? QStringLiteral("Add Clear Import Export")
                                                : QStringLiteral("Add Import"));
            drive.close();
        })
        .then([&](QWidget& file) { chooseFile(file, path); });
    if (!message.isEmpty())
        test.driver.thenReadMessage(shownMessage);
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(shownMessage, message);
    const QStringList asked = test.asked();
    QCOMPARE(asked.first(), QStringLiteral("ImportIPFile(%1)").arg(path));
    QCOMPARE(asked.filter(QStringLiteral("ShowTipMessage")),
             tip.isEmpty() ? QStringList()
                           : QStringList(QStringLiteral("ShowTipMessage(%1)").arg(tip)));
}

void IPFilesTest::shouldIgnoreAnImport_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("cancelled") << QString();
    QTest::newRow("two files") << QStringLiteral("\"a.txt\" \"b.txt\"");
}

void IPFilesTest::shouldIgnoreAnImport()
{
    QFETCH(QString, typed);
    DialogTest test;
    const QTemporaryDir folder;
    for (const char* name : {"a.txt", "b.txt"}) {
        QFile file(folder.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    CIPManageDialog dialog(&test.window);
    press(test, "Import").then([&](QWidget& file) {
        if (typed.isEmpty()) {
            QTest::keyClick(&file, Qt::Key_Escape);
            return;
        }
        // A native dialog may let the user choose several files.
        auto& files = dynamic_cast<QFileDialog&>(file);
        files.setFileMode(QFileDialog::ExistingFiles);
        files.setDirectory(folder.path());
        chooseFile(file, typed);
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.asked(), QStringList());
}

TSA_TEST_MAIN(IPFilesTest)
#include "tst_ipfiles.moc"
