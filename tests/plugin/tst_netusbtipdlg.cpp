#include "host/common/SoftwareName.h"
#include "host/widgets/HostTheme.h"
#include "plugin/NetUsbTipDlg.h"
#include "plugin/WrappedLabel.h"
#include "tests/support/Chinese.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace {
using Records = std::vector<LanUsbProcessorInfo>;

LanUsbProcessorInfo record(int n)
{
    const std::string number = std::to_string(n);
    return {"192.168.0." + number, "Processor " + number, "Device " + number};
}

Records records(int count)
{
    Records list;
    for (int n = 1; n <= count; ++n)
        list.push_back(record(n));
    return list;
}

QString header(const QString& devices)
{
    return devices
           + QStringLiteral(" does not support LAN-USB connections. The following processors are "
                            "using this connection type. Please check:");
}

/// A dialog on the screen.
class ShownDialog final
{
public:
    explicit ShownDialog(const Records& processors)
        : dialog(processors, nullptr)
    {
        dialog.show();
    }

    /// The labels of the body from the top.
    QList<CWrappedLabel*> labels() const
    {
        auto found = dialog.findChildren<CWrappedLabel*>();
        std::sort(found.begin(), found.end(),
                  [](const QWidget* a, const QWidget* b) { return a->y() < b->y(); });
        return found;
    }

    QStringList texts() const
    {
        QStringList texts;
        for (const CWrappedLabel* label : labels())
            texts.append(label->text());
        return texts;
    }

    int lineHeight() const { return dialog.fontMetrics().height(); }

    CNetUsbTipDlg dialog;
};

/// The rightmost column in which something is written.
int inkRight(QWidget& widget)
{
    const QImage image = widget.grab().toImage();
    const QRgb paper = image.pixel(image.width() - 1, image.height() - 1);
    for (int x = image.width() - 1; x >= 0; --x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixel(x, y) != paper)
                return x;
        }
    }
    return -1;
}

} // namespace

class NetUsbTipDlgTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldNameTheDeviceAndItsProcessors();
    void shouldShowTheFirstFiveOnly_data();
    void shouldShowTheFirstFiveOnly();
    void shouldShowAHeaderAboutNothing();
    void shouldNameADeviceAsOftenAsItComes();
    void shouldCutALongNameAndKeepTheAddress_data();
    void shouldCutALongNameAndKeepTheAddress();
    void shouldTakePlaceholdersForText();
    void shouldTakeMarkupForText();
    void shouldShowInvalidTextAsGoodAsItCan();
    void shouldKeepItsOwnCopy();
    void shouldWrapALongListOfDevices();
    void shouldCutNamesAndNotTheSentence_data();
    void shouldCutNamesAndNotTheSentence();
    void shouldKeepItsButtonOnTheScreenWhateverItIsTold();
    void shouldLeaveRoomBelowTheHeaderAndTheLastLine();
    void shouldBeAnsweredByKeysAndMouse_data();
    void shouldBeAnsweredByKeysAndMouse();
    void shouldBeReadOutWhole();
    void shouldSpeakChineseToo();
    void shouldFollowALanguageChangeWhileOpen();

private:
};

void NetUsbTipDlgTest::initTestCase()
{
    Q_INIT_RESOURCE(TargetSelectAreaTranslations);
    set_custom_software_name(QStringLiteral("Stage Control"));
    ApplyHostTheme(*qApp);
}

void NetUsbTipDlgTest::shouldNameTheDeviceAndItsProcessors()
{
    const ShownDialog shown(records(2));
    QCOMPARE(shown.dialog.windowTitle(), QStringLiteral("Stage Control"));
    QCOMPARE(shown.dialog.width(), 293);
    QCOMPARE(shown.texts(), QStringList({header(QStringLiteral("Device 1,Device 2")),
                                         QStringLiteral("Processor 1 (IP:192.168.0.1)"),
                                         QStringLiteral("Processor 2 (IP:192.168.0.2)")}));
    QVERIFY(shown.labels().constFirst()->wordWrap());
    const auto buttons = shown.dialog.findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 1);
    QCOMPARE(buttons.first()->text(), QStringLiteral("OK"));
    QVERIFY(buttons.first()->isDefault());
}

void NetUsbTipDlgTest::shouldShowTheFirstFiveOnly_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("five") << 5;
    QTest::newRow("six") << 6;
    QTest::newRow("a thousand") << 1000;
}

void NetUsbTipDlgTest::shouldShowTheFirstFiveOnly()
{
    QFETCH(int, count);
    const ShownDialog shown(records(count));
    const QStringList texts = shown.texts();
    QCOMPARE(texts.size(), 6);
    QCOMPARE(texts.first(), header(QStringLiteral("Device 1,Device 2,Device 3,Device 4,Device 5")));
    QCOMPARE(texts.last(), QStringLiteral("Processor 5 (IP:192.168.0.5)"));
}

void NetUsbTipDlgTest::shouldShowAHeaderAboutNothing()
{
    const ShownDialog shown({});
    QCOMPARE(shown.texts(), QStringList({header(QString())}));
}

void NetUsbTipDlgTest::shouldNameADeviceAsOftenAsItComes()
{
    Records list = records(2);
    list[1].deviceName = list[0].deviceName;
    const ShownDialog shown(list);
    QCOMPARE(shown.texts().constFirst(), header(QStringLiteral("Device 1,Device 1")));
}

void NetUsbTipDlgTest::shouldCutALongNameAndKeepTheAddress_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("words") << QByteArray("Left wing lower row ").repeated(3);
    QTest::newRow("one word") << QByteArray("W").repeated(60);
    QTest::newRow("Chinese") << QByteArray("大厅左侧立柱显示屏").repeated(4);
    QTest::newRow("ten thousand characters") << QByteArray("x").repeated(10000);
    QTest::newRow("ten thousand lines") << QByteArray("x\n").repeated(5000);
}

void NetUsbTipDlgTest::shouldCutALongNameAndKeepTheAddress()
{
    QFETCH(QByteArray, name);
    const ShownDialog shown({{"192.168.200.100", name.toStdString(), "Device"}});
    CWrappedLabel* line = shown.labels().constLast();
    const QString end = QStringLiteral(" (IP:192.168.200.100)");
    QVERIFY2(line->text().endsWith(QChar(0x2026) + end), qPrintable(line->text()));
    const QString cut = line->text().chopped(end.size());
    QVERIFY(line->fontMetrics().horizontalAdvance(cut) <= 180);
    QVERIFY(line->fontMetrics().horizontalAdvance(cut) > 150);
    // It has the room that the name and the address take, and no more.
    QVERIFY(line->height() >= line->fontMetrics().height());
    QVERIFY(line->height() <= 2 * line->fontMetrics().lineSpacing() + 2);
    QVERIFY(inkRight(*line) < line->width());
}

void NetUsbTipDlgTest::shouldTakePlaceholdersForText()
{
    const ShownDialog shown({{"%1 %2", "%2 %1 %L1", "%1%2%3"}});
    QCOMPARE(shown.texts(), QStringList({header(QStringLiteral("%1%2%3")),
                                         QStringLiteral("%2 %1 %L1 (IP:%1 %2)")}));
}

void NetUsbTipDlgTest::shouldTakeMarkupForText()
{
    const ShownDialog shown({{"<i>1</i>", "<b>R&D</b>", "<img src='x'/>"}});
    QCOMPARE(shown.texts().constLast(), QStringLiteral("<b>R&D</b> (IP:<i>1</i>)"));
    for (const CWrappedLabel* label : shown.labels())
        QCOMPARE(label->textFormat(), Qt::PlainText);
}

void NetUsbTipDlgTest::shouldShowInvalidTextAsGoodAsItCan()
{
    const ShownDialog shown(
        {{"10.0.0.1", "\xff\xfe name", "\xc3"}, {std::string("1\0.2", 4), "", ""}});
    const QStringList texts = shown.texts();
    QCOMPARE(texts.size(), 3);
    QVERIFY(texts.at(1).contains(QChar(QChar::ReplacementCharacter)));
    QVERIFY(texts.at(1).endsWith(QStringLiteral(" name (IP:10.0.0.1)")));
    QCOMPARE(texts.first(), header(QString(QChar(QChar::ReplacementCharacter)) + QLatin1Char(',')));
}

void NetUsbTipDlgTest::shouldKeepItsOwnCopy()
{
    auto list = std::make_unique<Records>(records(1));
    CNetUsbTipDlg dialog(*list, nullptr);
    list->front() = {"0", "gone", "gone"};
    list.reset();
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&dialog, &change);
    QStringList texts;
    for (const auto* label : dialog.findChildren<CWrappedLabel*>())
        texts.append(label->text());
    texts.sort();
    QCOMPARE(texts, QStringList({header(QStringLiteral("Device 1")),
                                 QStringLiteral("Processor 1 (IP:192.168.0.1)")}));
}

void NetUsbTipDlgTest::shouldWrapALongListOfDevices()
{
    const ShownDialog narrow(records(1));
    Records list = records(5);
    for (LanUsbProcessorInfo& processor : list)
        processor.deviceName = "Sending-card-without-a-blank-in-its-name";
    const ShownDialog shown(list);
    QCOMPARE(shown.dialog.width(), 293);
    CWrappedLabel* label = shown.labels().constFirst();
    QVERIFY(label->height() >= narrow.labels().constFirst()->height() + 4 * shown.lineHeight());
    QVERIFY(inkRight(*label) < label->width());
    QVERIFY(shown.dialog.rect().contains(label->geometry()));
}

void NetUsbTipDlgTest::shouldCutNamesAndNotTheSentence_data()
{
    QTest::addColumn<bool>("isChinese");
    QTest::addColumn<QString>("name");
    const QString latin = QStringLiteral("Sending card ").repeated(40);
    const QString han = QString::fromUtf8("发送卡").repeated(100);
    QTest::newRow("English") << false << latin;
    QTest::newRow("English, Chinese names") << false << han;
    QTest::newRow("Chinese") << true << latin;
    QTest::newRow("Chinese, Chinese names") << true << han;
}

void NetUsbTipDlgTest::shouldCutNamesAndNotTheSentence()
{
    QFETCH(const bool, isChinese);
    QFETCH(const QString, name);
    const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
    for (const int count : {1, 5}) {
        Records list = records(count);
        QStringList names;
        for (LanUsbProcessorInfo& processor : list) {
            const QString number = QString::number(names.size() + 1);
            names.append(number + name);
            processor.deviceName = names.constLast().toStdString();
        }
        const ShownDialog shown(list);
        CWrappedLabel* label = shown.labels().constFirst();
        const QString sentence = QCoreApplication::translate(
            "CNetUsbTipDlg",
            "%1 does not support LAN-USB connections. The following processors are "
            "using this connection type. Please check:");
        QCOMPARE(label->text(), sentence.arg(names.join(QLatin1Char(','))));
        QVERIFY(label->height() <= 10 * shown.lineHeight() + 10);
        const QImage seen = label->grab().toImage();
        // Another end of the sentence is seen, and so is another beginning of each name.
        label->setSentence(sentence.chopped(1) + QLatin1Char('!'), names);
        QVERIFY(label->grab().toImage() != seen);
        for (QString& one : names) {
            const QString before = std::exchange(one, QLatin1Char('X') + one);
            label->setSentence(sentence, names);
            QVERIFY(label->grab().toImage() != seen);
            one = before;
        }
        label->setSentence(sentence, names);
        QCOMPARE(label->grab().toImage(), seen);
    }
}

void NetUsbTipDlgTest::shouldKeepItsButtonOnTheScreenWhateverItIsTold()
{
    const std::string endless(10000, 'x');
    const ShownDialog shown(Records(1000, {endless, endless, endless}));
    QVERIFY(shown.dialog.screen()->availableGeometry().contains(shown.dialog.geometry()));
    const auto* button = shown.dialog.findChild<QPushButton*>();
    const QRect place(button->mapTo(&shown.dialog, QPoint()), button->size());
    QVERIFY(shown.dialog.rect().contains(place));
    // Only what is seen ends in an ellipsis.
    QVERIFY(shown.texts().constFirst().startsWith(QString(10000, QLatin1Char('x'))));
}

void NetUsbTipDlgTest::shouldLeaveRoomBelowTheHeaderAndTheLastLine()
{
    const ShownDialog shown(records(2));
    const auto labels = shown.labels();
    const auto gap = [&](int n) {
        return labels.at(n)->geometry().top() - labels.at(n - 1)->geometry().bottom() - 1;
    };
    QCOMPARE(gap(1) - gap(2), 10);
    QLayout* body = shown.dialog.layout()->itemAt(1)->layout();
    QVERIFY(body);
    QVERIFY(body->itemAt(body->count() - 1)->spacerItem());
    QCOMPARE(body->itemAt(body->count() - 1)->sizeHint().height(), 10);
}

void NetUsbTipDlgTest::shouldBeAnsweredByKeysAndMouse_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("result");
    QTest::newRow("Enter") << static_cast<int>(Qt::Key_Return) << 1;
    QTest::newRow("Space") << static_cast<int>(Qt::Key_Space) << 1;
    QTest::newRow("Escape") << static_cast<int>(Qt::Key_Escape) << 0;
    QTest::newRow("the mouse") << 0 << 1;
}

void NetUsbTipDlgTest::shouldBeAnsweredByKeysAndMouse()
{
    QFETCH(int, key);
    QFETCH(int, result);
    DialogDriver driver;
    driver.then([key](QWidget& window) {
        if (key == 0)
            clickButton(window, QStringLiteral("OK"));
        else
            QTest::keyClick(window.focusWidget(), static_cast<Qt::Key>(key));
    });
    CNetUsbTipDlg dialog(records(3), nullptr);
    QCOMPARE(dialog.exec(), result);
    QVERIFY(!dialog.isVisible());
}

void NetUsbTipDlgTest::shouldBeReadOutWhole()
{
    const ShownDialog shown(records(2));
    QCOMPARE(shown.dialog.accessibleDescription(), shown.texts().join(QLatin1Char('\n')));
}

void NetUsbTipDlgTest::shouldSpeakChineseToo()
{
    const Chinese chinese;
    QVERIFY(chinese.isLoaded());
    const ShownDialog shown(records(7));
    QCOMPARE(shown.texts().size(), 6);
    QVERIFY(shown.texts().constFirst().startsWith(
        QString::fromUtf8("Device 1,Device 2,Device 3,Device 4,Device 5 不支持 LAN-USB 连接")));
    QCOMPARE(shown.texts().at(1), QStringLiteral("Processor 1 (IP:192.168.0.1)"));
    const ShownDialog nothing({});
    QVERIFY(nothing.texts().constFirst().startsWith(QString::fromUtf8(" 不支持 LAN-USB 连接")));
}

void NetUsbTipDlgTest::shouldFollowALanguageChangeWhileOpen()
{
    const ShownDialog shown(records(1));
    const int english = shown.dialog.height();
    auto chinese = std::make_unique<Chinese>();
    QVERIFY(chinese->isLoaded());
    QTRY_VERIFY(shown.texts().constFirst().startsWith(QString::fromUtf8("Device 1 不支持")));
    QCOMPARE(shown.texts().size(), 2);
    chinese.reset();
    QTRY_COMPARE(shown.texts().constFirst(), header(QStringLiteral("Device 1")));
    QTRY_COMPARE(shown.dialog.height(), english);
}

TSA_TEST_MAIN(NetUsbTipDlgTest)
#include "tst_netusbtipdlg.moc"
