// All results of the host's check, in all dialogs that use it, in both languages.

#include "Interface/IPStatusCodes.h"
#include "base/IPText.h"
#include "host/common/SoftwareName.h"
#include "host/widgets/HostTheme.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddBothIpDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/ModifyIPDialog.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/support/Chinese.h"

#include <QApplication>
#include <QFontMetrics>
#include <QFormLayout>
#include <QLabel>

#include <memory>

namespace {

enum class Kind { Single, Batch, Change, First, Second };

std::unique_ptr<CDialog> create(Kind kind, bool forList, QWidget* parent)
{
    switch (kind) {
    case Kind::Single:
        return std::make_unique<CAddSingleIPDialog>(forList, parent);
    case Kind::Batch:
        return std::make_unique<CAddBatchIPDialog>(forList, parent);
    case Kind::Change:
        return std::make_unique<CModifyIPDialog>(0, QString(), parent);
    case Kind::First:
    case Kind::Second:
        return std::make_unique<CAddBothIpDialog>(forList, parent);
    }
    return nullptr;
}

} // namespace

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(QMargins)

class IPDialogMessagesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ApplyHostTheme(*qApp); }
    void shouldLayOutItsForm_data();
    void shouldLayOutItsForm();
    void shouldShowItsLabelsWhole_data();
    void shouldShowItsLabelsWhole();
    void shouldShowWhyTheHostRejects_data();
    void shouldShowWhyTheHostRejects();
};

void IPDialogMessagesTest::shouldLayOutItsForm_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QMargins>("margins");
    QTest::addColumn<QList<int>>("labels");
    QTest::newRow("single") << Kind::Single << QMargins(10, 0, 16, 14) << QList<int>({54, 48});
    QTest::newRow("batch") << Kind::Batch << QMargins(12, 0, 16, 14) << QList<int>({50, 54});
    QTest::newRow("change") << Kind::Change << QMargins(16, 0, 16, 14) << QList<int>({54, 48});
    QTest::newRow("both") << Kind::First << QMargins(16, 0, 16, 14) << QList<int>({48, 48});
}

void IPDialogMessagesTest::shouldLayOutItsForm()
{
    QFETCH(Kind, kind);
    QFETCH(QMargins, margins);
    QFETCH(QList<int>, labels);
    DialogTest test;
    const auto dialog = create(kind, true, &test.window);
    const auto* form = dialog->findChild<QFormLayout*>();
    QVERIFY(form);
    QCOMPARE(form->contentsMargins(), margins);
    QCOMPARE(form->horizontalSpacing(), 8);
    QCOMPARE(form->verticalSpacing(), 8);
    QCOMPARE(form->labelAlignment(), Qt::AlignRight);
    const auto* body = qobject_cast<QLayout*>(form->parent());
    QVERIFY(body);
    QCOMPARE(body->contentsMargins(), QMargins(0, 12, 0, 0));
    QCOMPARE(form->rowCount(), labels.size());
    for (int row = 0; row < labels.size(); ++row) {
        const auto* label =
            qobject_cast<QLabel*>(form->itemAt(row, QFormLayout::LabelRole)->widget());
        const QWidget* field = form->itemAt(row, QFormLayout::FieldRole)->widget();
        QVERIFY(label);
        QCOMPARE(label->minimumWidth(), labels.at(row));
        QCOMPARE(label->maximumWidth(), labels.at(row));
        QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        QCOMPARE(label->buddy(), field);
        QCOMPARE(field->size(), QSize(172, 24));
    }
}

void IPDialogMessagesTest::shouldShowItsLabelsWhole_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("single") << Kind::Single;
    QTest::newRow("batch") << Kind::Batch;
    QTest::newRow("change") << Kind::Change;
    QTest::newRow("both") << Kind::First;
}

void IPDialogMessagesTest::shouldShowItsLabelsWhole()
{
    QFETCH(Kind, kind);
    DialogTest test;
    const auto dialog = create(kind, true, &test.window);
    int labels = 0;
    const auto checkLabels = [&](const QWidget& shown) {
        for (const QLabel* label : shown.findChildren<QLabel*>()) {
            const QFontMetrics metrics = label->fontMetrics();
            QVERIFY2(metrics.horizontalAdvance(label->text()) <= label->width(),
                     qPrintable(label->text()));
            ++labels;
        }
    };
    test.driver.then([&](QWidget& shown) {
        checkLabels(shown);
        const Chinese chinese;
        QTRY_VERIFY(shown.windowTitle() != QLatin1String("Add IP"));
        checkLabels(shown);
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog->exec(), 0);
    QVERIFY(labels >= 4);
}

void IPDialogMessagesTest::shouldShowWhyTheHostRejects_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("forList");
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("chinese");

    struct Row
    {
        quint32 code;
        const char* single;
        const char* numbered;
        const char* chinese;
    };
    const Row rows[] = {
        {IPCHECK_SAME_AS_PC,
         "The IP address entered is same as the IP address of your PC, it would fail network "
         "connection.",
         "The IP address %1 entered is same as the IP address of your PC, it would fail network "
         "connection.",
         "本机"},
        {IPCHECK_USED, "IP address has been used.", "IP address %1 has been used.", "已被使用"},
        {IPCHECK_STARTS_WITH_ZERO, "The IP address cannot start with 0.",
         "The IP address %1 cannot start with 0.", "不能以 0 开头"},
        {IPCHECK_GATEWAY, "The IP address is the same as the default gateway.",
         "The IP address %1 is the same as the default gateway.", "默认网关"},
        {IPCHECK_BROADCAST, "The IP address is the broadcast address.",
         "The IP address %1 is the broadcast address.", "广播地址"},
        {IPCHECK_UNREASONABLE, "IP address is unreasonable.", "IP address %1 is unreasonable.",
         "不合理"},
        {0xE0832006, "IP address is unreasonable.", "IP address %1 is unreasonable.", "不合理"},
        {0xE0831FFF, "IP address is unreasonable.", "IP address %1 is unreasonable.", "不合理"},
        {1, "IP address is unreasonable.", "IP address %1 is unreasonable.", "不合理"},
        {0xFFFFFFFF, "IP address is unreasonable.", "IP address %1 is unreasonable.", "不合理"},
    };
    const std::pair<Kind, const char*> kinds[] = {{Kind::Single, "single"},
                                                  {Kind::Batch, "batch"},
                                                  {Kind::Change, "change"},
                                                  {Kind::First, "first"},
                                                  {Kind::Second, "second"}};
    for (const auto& [kind, name] : kinds) {
        for (const bool forList : {true, false}) {
            if (kind == Kind::Change && !forList)
                continue;
            for (const Row& row : rows) {
                const bool numbered = kind == Kind::First || kind == Kind::Second;
                const QString text =
                    numbered ? QString::fromUtf8(row.numbered).arg(kind == Kind::First ? 1 : 2)
                             : QString::fromUtf8(row.single);
                QTest::addRow("%s, %s, 0x%08x", name, forList ? "list" : "processor", row.code)
                    << kind << forList << row.code << text << QString::fromUtf8(row.chinese);
            }
        }
    }
}

void IPDialogMessagesTest::shouldShowWhyTheHostRejects()
{
    QFETCH(Kind, kind);
    QFETCH(bool, forList);
    QFETCH(quint32, code);
    QFETCH(QString, english);
    QFETCH(QString, chinese);
    set_custom_software_name(QStringLiteral("Host"));
    DialogTest test;
    test.host().ipList = QStringList(QStringLiteral("10.0.0.1()"));
    const auto dialog = create(kind, forList, &test.window);
    const quint32 refused = kind == Kind::Second ? 0x0A000003 : 0x0A000002;
    QString texts[2];
    test.driver
        .then([&](QWidget& shown) {
            retype(addressField(shown), QStringLiteral("10.0.0.2"));
            if (addressField(shown, 1))
                retype(addressField(shown, 1), QStringLiteral("10.0.0.3"));
            test.host().checkIp = [&](quint32 address, bool processorMode) {
                return address == refused && processorMode == !forList ? code : 0;
            };
            QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
            QVERIFY(shown.isVisible());
            const Chinese language;
            QTRY_VERIFY(shown.windowTitle().contains(QStringLiteral("IP"))
                        || shown.windowTitle().contains(QStringLiteral("处理器")));
            QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
            QVERIFY(shown.isVisible());
            QCOMPARE(addressField(shown)->text(), QStringLiteral("10.0.0.2"));
            QTest::keyClick(&shown, Qt::Key_Escape);
        })
        .then([&](QWidget& box) {
            texts[0] = messageOf(box);
            QCOMPARE(box.windowTitle(), QStringLiteral("Host"));
            QCOMPARE(box.width(), 330);
            QCOMPARE(box.parentWidget(), dialog.get());
            QTest::keyClick(&box, Qt::Key_Escape);
        })
        .thenReadMessage(texts[1]);
    QCOMPARE(dialog->exec(), 0);
    QCOMPARE(texts[0], english);
    QVERIFY2(texts[1].contains(chinese), qPrintable(texts[1]));
    if (kind == Kind::First || kind == Kind::Second)
        QVERIFY2(texts[1].contains(kind == Kind::First ? QLatin1Char('1') : QLatin1Char('2')),
                 qPrintable(texts[1]));
    QCOMPARE(test.host().callCount(QStringLiteral("AddIPAddress")), 0);
    QCOMPARE(test.host().callCount(QStringLiteral("ModifyIPAddress")), 0);
    QCOMPARE(test.host().callCount(QStringLiteral("SaveIPList")), 0);
}

TSA_TEST_MAIN(IPDialogMessagesTest)
#include "tst_ipdialogmessages.moc"
