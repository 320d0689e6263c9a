#include "processortree/view/NameGuard.h"
#include "tests/processortree/TestTree.h"
#include "tests/support/WarningTrap.h"

#include <QTest>
#include <QTextCodec>

#include <random>

namespace {
const QTextCodec& utf8()
{
    return NameGuard::codec(true);
}

const QTextCodec& gbk()
{
    return NameGuard::codec(false);
}

int bytes(const QTextCodec& codec, const QString& text)
{
    return codec.fromUnicode(text).size();
}

/// Takes code points until one does not fit.
QString slowPrefix(const QString& text, int maxBytes, const QTextCodec& codec)
{
    QString prefix;
    for (int position = 0; position < text.size();) {
        int units = 1;
        if (text.at(position).isHighSurrogate() && position + 1 < text.size()
            && text.at(position + 1).isLowSurrogate())
            units = 2;
        const QString longer = prefix + text.mid(position, units);
        if (bytes(codec, longer) > maxBytes)
            break;
        prefix = longer;
        position += units;
    }
    return prefix;
}

QString randomText(std::mt19937& random)
{
    const QString kinds[] = {
        QStringLiteral("a"),    QStringLiteral("Z"),
        QStringLiteral("中"),   QStringLiteral("龍"),
        QStringLiteral("é"),    QStringLiteral("€"),
        QString(QChar(0x0301)), QStringLiteral("\U0001F600"),
        QStringLiteral("𠀀"),   QString(QChar(0xD83D)),
        QString(QChar(0xDE00)), QStringLiteral("\U0001F468\u200D\U0001F469"),
        QString(QChar(0x00A0)), QStringLiteral("ö"),
    };
    std::uniform_int_distribution<int> length(0, 20);
    std::uniform_int_distribution<std::size_t> kind(0, std::size(kinds) - 1);
    QString text;
    for (int left = length(random); left > 0; --left)
        text += kinds[kind(random)];
    return text;
}

/// Drops half of a surrogate pair before the cursor, then applies the limit.
QString withoutHalf(const QString& text, int cursor)
{
    if (cursor == 0 || !text.at(cursor - 1).isHighSurrogate())
        return text;
    if (cursor < text.size() && text.at(cursor).isLowSurrogate())
        return text;
    return text.left(cursor - 1) + text.mid(cursor);
}

} // namespace

class TestNameGuard final : public QObject
{
    Q_OBJECT

private slots:
    void shouldLeaveRoomBelowTheLimit();
    void shouldBlockAtTheLimit();
    void shouldCutToWhatFits();
    void shouldCountInTheCodecOfNames();
    void shouldKeepPairsWhole();
    void shouldDropHalfAPairBeforeTheCursor();
    void shouldNotShortenUnencodableText();
    void shouldKnowNoLimitOfZero();
    void shouldKeepTheCursorInside();
    void shouldAgreeWithTheSlowWay_data();
    void shouldAgreeWithTheSlowWay();
};

void TestNameGuard::shouldLeaveRoomBelowTheLimit()
{
    const NameGuard::Fit fit = NameGuard::fit(text("abc"), 1, 10, utf8());
    QCOMPARE(fit.text, text("abc"));
    QCOMPARE(fit.maxLength, 10);
    QCOMPARE(fit.cursor, 1);
}

void TestNameGuard::shouldBlockAtTheLimit()
{
    const NameGuard::Fit fit = NameGuard::fit(QStringLiteral("a中b"), 2, 5, utf8());
    QCOMPARE(fit.text, QStringLiteral("a中b"));
    QCOMPARE(fit.maxLength, 3);
    QCOMPARE(fit.cursor, 2);
}

void TestNameGuard::shouldCutToWhatFits()
{
    const NameGuard::Fit fit = NameGuard::fit(QStringLiteral("中中中"), 3, 8, utf8());
    QCOMPARE(fit.text, QStringLiteral("中中"));
    QCOMPARE(fit.maxLength, 2 + 2); // two bytes are free
    QCOMPARE(fit.cursor, 2);
    QCOMPARE(NameGuard::fit(QStringLiteral("中"), 1, 2, utf8()).text, QString());
}

void TestNameGuard::shouldCountInTheCodecOfNames()
{
    QCOMPARE(NameGuard::fit(QStringLiteral("中文"), 2, 4, gbk()).text, QStringLiteral("中文"));
    QCOMPARE(NameGuard::fit(QStringLiteral("中文"), 2, 4, gbk()).maxLength, 2);
    QCOMPARE(NameGuard::fit(QStringLiteral("中文"), 2, 4, utf8()).text, QStringLiteral("中"));
}

void TestNameGuard::shouldKeepPairsWhole()
{
    const QString face = QStringLiteral("\U0001F600");
    for (int limit = 1; limit < 4; ++limit)
        QCOMPARE(NameGuard::fit(face, 2, limit, utf8()).text, QString());
    QCOMPARE(NameGuard::fit(face + face, 4, 7, utf8()).text, face);
    QCOMPARE(NameGuard::fit(face + face, 4, 8, utf8()).text, face + face);
}

void TestNameGuard::shouldDropHalfAPairBeforeTheCursor()
{
    const QString half(QChar(0xD83D));
    const NameGuard::Fit fit = NameGuard::fit(text("ab") + half + text("c"), 3, 10, utf8());
    QCOMPARE(fit.text, text("abc"));
    QCOMPARE(fit.cursor, 2);
    QCOMPARE(NameGuard::fit(text("ab") + half, 0, 10, utf8()).text, text("ab") + half);
}

void TestNameGuard::shouldNotShortenUnencodableText()
{
    // Twelve units, which take a byte a pair at most, where they cannot be encoded.
    const QString faces = QStringLiteral("\U0001F600").repeated(6);
    const int size = bytes(gbk(), faces);
    const NameGuard::Fit fit = NameGuard::fit(faces, 12, size + 1, gbk());
    QCOMPARE(fit.text, faces);
    QVERIFY(fit.maxLength >= 12);
}

void TestNameGuard::shouldKnowNoLimitOfZero()
{
    const QString name = text("name").repeated(1000);
    for (const int limit : {0, -1}) {
        const NameGuard::Fit fit = NameGuard::fit(name, 7, limit, utf8());
        QCOMPARE(fit.text, name);
        QCOMPARE(fit.maxLength, NameGuard::kUnlimitedLength);
        QCOMPARE(fit.cursor, 7);
    }
}

void TestNameGuard::shouldKeepTheCursorInside()
{
    QCOMPARE(NameGuard::fit(text("abc"), -1, 10, utf8()).cursor, 0);
    QCOMPARE(NameGuard::fit(text("abc"), 9, 10, utf8()).cursor, 3);
    QCOMPARE(NameGuard::fit(text("abc"), 3, 2, utf8()).cursor, 2);
    QCOMPARE(NameGuard::fit(QString(), 5, 2, utf8()).cursor, 0);
}

void TestNameGuard::shouldAgreeWithTheSlowWay_data()
{
    QTest::addColumn<bool>("isUtf8");
    QTest::newRow("UTF-8") << true;
    QTest::newRow("GBK") << false;
}

void TestNameGuard::shouldAgreeWithTheSlowWay()
{
    QFETCH(const bool, isUtf8);
    const QTextCodec& codec = NameGuard::codec(isUtf8);
    std::mt19937 random(20240611);
    for (int round = 0; round < 100000; ++round) {
        const QString typed = randomText(random);
        const int cursor = std::uniform_int_distribution<int>(0, typed.size())(random);
        const int limit = std::uniform_int_distribution<int>(1, 40)(random);
        const NameGuard::Fit fit = NameGuard::fit(typed, cursor, limit, codec);

        const QString whole = withoutHalf(typed, cursor);
        const QString expected = slowPrefix(whole, limit, codec);
        const int size = bytes(codec, expected);
        int maxLength = expected.size() + limit - size;
        if (expected == whole)
            maxLength = size == limit ? whole.size() : qMax(limit, whole.size());
        const QByteArray about = QStringLiteral("round %1, limit %2, cursor %3, \"%4\"")
                                     .arg(round)
                                     .arg(limit)
                                     .arg(cursor)
                                     .arg(typed)
                                     .toUtf8();
        QVERIFY2(fit.text == expected, about.constData());
        QVERIFY2(fit.maxLength == maxLength, about.constData());
        QVERIFY2(fit.cursor == qMin(whole == typed ? cursor : cursor - 1, expected.size()),
                 about.constData());
        QVERIFY2(bytes(codec, fit.text) <= limit, about.constData());
    }
}

TSA_GUILESS_TEST_MAIN(TestNameGuard)

#include "tst_nameguard.moc"
