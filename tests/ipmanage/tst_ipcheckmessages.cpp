#include "Interface/IPStatusCodes.h"
#include "ipmanage/IPCheckMessages.h"
#include "tests/support/WarningTrap.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

#include <array>

namespace {

struct Code
{
    const char* name;
    quint32 value;
    const char* english; ///< %1 is the number of the field with a leading space.
    const char* chinese; ///< %1 is the number of the field with a trailing space.
};

constexpr const char* kUnreasonable = "IP address%1 is unreasonable.";
constexpr const char* kUnreasonableChinese = "IP 地址%1不合理。";

constexpr std::array<Code, 12> kCodes{{
    {"same as PC", 0xE0832000,
     "The IP address%1 entered is same as the IP address of your PC, it would fail network "
     "connection.",
     "输入的 IP 地址%1与本机的 IP 地址相同，会导致网络连接失败。"},
    {"used", 0xE0832001, "IP address%1 has been used.", "IP 地址%1已被使用。"},
    {"starts with 0", 0xE0832002, "The IP address%1 cannot start with 0.",
     "IP 地址%1不能以 0 开头。"},
    {"gateway", 0xE0832003, "The IP address%1 is the same as the default gateway.",
     "IP 地址%1与默认网关相同。"},
    {"broadcast", 0xE0832004, "The IP address%1 is the broadcast address.",
     "IP 地址%1是广播地址。"},
    {"unreasonable", 0xE0832005, kUnreasonable, kUnreasonableChinese},
    {"none", 0, kUnreasonable, kUnreasonableChinese},
    {"before the first", 0xE0831FFF, kUnreasonable, kUnreasonableChinese},
    {"behind the last", 0xE0832006, kUnreasonable, kUnreasonableChinese},
    {"of another kind", 0xE083200B, kUnreasonable, kUnreasonableChinese},
    {"wraps to the first", 0x1F7CE000, kUnreasonable, kUnreasonableChinese},
    {"highest", 0xFFFFFFFF, kUnreasonable, kUnreasonableChinese},
}};

struct Field
{
    const char* name;
    IPField value;
    const char* number;
};

constexpr std::array<Field, 5> kFields{{
    {"single", IPField::Single, ""},
    {"change", IPField::Change, ""},
    {"batch", IPField::Batch, ""},
    {"first", IPField::First, "1"},
    {"second", IPField::Second, "2"},
}};

QString english(const char* text, const Field& field)
{
    const QString number = QString::fromLatin1(field.number);
    return QString::fromUtf8(text).replace(QStringLiteral("%1"),
                                           number.isEmpty() ? number : QLatin1Char(' ') + number);
}

QString chinese(const char* text, const Field& field)
{
    const QString number = QString::fromLatin1(field.number);
    return QString::fromUtf8(text).replace(
        QStringLiteral("%1"),
        number.isEmpty() ? number : QLatin1Char(' ') + number + QLatin1Char(' '));
}

} // namespace

class IPCheckMessagesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldReportTheReasonOfARejection_data();
    void shouldReportTheReasonOfARejection();
    void shouldReportAnEmptyField();
    void shouldReportEqualAddresses();
    void shouldTranslateInTheContextOfTheDialog();

private:
    QTranslator m_chinese;
};

/// Translates each text to the name of its context.
class ContextTranslator final : public QTranslator
{
    Q_OBJECT

public:
    QString translate(const char* context, const char* source, const char* comment,
                      int number) const override
    {
        Q_UNUSED(source)
        Q_UNUSED(comment)
        Q_UNUSED(number)
        return QString::fromLatin1(context);
    }
    bool isEmpty() const override { return false; }
};

void IPCheckMessagesTest::initTestCase()
{
    Q_INIT_RESOURCE(TargetSelectAreaTranslations);
    QVERIFY(m_chinese.load(QStringLiteral("TargetSelectArea_zh_CN.qm"),
                           QStringLiteral(":/TargetSelectArea/translations")));
}

void IPCheckMessagesTest::shouldReportTheReasonOfARejection_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("expectedEnglish");
    QTest::addColumn<QString>("expectedChinese");

    for (const Code& code : kCodes) {
        for (const Field& field : kFields) {
            QTest::addRow("%s, %s", code.name, field.name)
                << code.value << static_cast<int>(field.value) << english(code.english, field)
                << chinese(code.chinese, field);
        }
    }
}

void IPCheckMessagesTest::shouldReportTheReasonOfARejection()
{
    QFETCH(quint32, code);
    QFETCH(int, field);
    QFETCH(QString, expectedEnglish);
    QFETCH(QString, expectedChinese);
    const auto where = static_cast<IPField>(field);
    QCOMPARE(ipCheckMessage(code, where), expectedEnglish);
    QCoreApplication::installTranslator(&m_chinese);
    const QString translated = ipCheckMessage(code, where);
    QCoreApplication::removeTranslator(&m_chinese);
    QCOMPARE(translated, expectedChinese);
}

void IPCheckMessagesTest::shouldReportAnEmptyField()
{
    for (const Field& field : kFields) {
        QCOMPARE(ipEmptyMessage(field.value), english(kUnreasonable, field));
        QCoreApplication::installTranslator(&m_chinese);
        const QString translated = ipEmptyMessage(field.value);
        QCoreApplication::removeTranslator(&m_chinese);
        QCOMPARE(translated, chinese(kUnreasonableChinese, field));
    }
}

void IPCheckMessagesTest::shouldReportEqualAddresses()
{
    QCOMPARE(ipSameMessage(), QStringLiteral("IP address 1 is the same as IP address 2."));
    QCoreApplication::installTranslator(&m_chinese);
    const QString translated = ipSameMessage();
    QCoreApplication::removeTranslator(&m_chinese);
    QCOMPARE(translated, QStringLiteral("IP 地址 1 与 IP 地址 2 相同。"));
}

void IPCheckMessagesTest::shouldTranslateInTheContextOfTheDialog()
{
    ContextTranslator contexts;
    QCoreApplication::installTranslator(&contexts);
    QStringList seen;
    for (const Field& field : kFields)
        seen.append(ipCheckMessage(IPCHECK_USED, field.value));
    seen.append(ipSameMessage());
    QCoreApplication::removeTranslator(&contexts);
    QCOMPARE(seen.join(QLatin1Char(' ')),
             QStringLiteral("CAddSingleIPDialog CModifyIPDialog CAddBatchIPDialog "
                            "CAddBothIpDialog CAddBothIpDialog CAddBothIpDialog"));
}

TSA_GUILESS_TEST_MAIN(IPCheckMessagesTest)
#include "tst_ipcheckmessages.moc"
