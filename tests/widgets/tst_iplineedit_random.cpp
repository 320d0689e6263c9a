#include "host/widgets/IPLineEdit.h"
#include "host/widgets/IPOctets.h"
#include "tests/support/Seed.h"
#include "tests/support/WarningTrap.h"
#include "tests/widgets/SlowAddressField.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTest>

#include <random>

namespace {
constexpr int kSteps = 150000;

/// Applies the same operations to a field, by events, and to the reference implementation.
class Pair final
{
public:
    explicit Pair(quint32 seed)
        : m_random(seed)
    {
        m_window.resize(300, 100);
        m_field.setFixedSize(172, 24);
    }

    CIPLineEdit& field() { return m_field; }
    const SlowAddressField& slow() const { return m_slow; }

    /// Runs a random operation and returns its name.
    QString step()
    {
        switch (below(12)) {
        case 0:
        case 1:
        case 2:
        case 3:
            return type(QChar(QLatin1Char('0').unicode() + below(10)));
        case 4:
            return type(QLatin1Char('.'));
        case 5:
        case 6:
            return move();
        case 7:
        case 8:
            return erase();
        case 9:
            return paste(text());
        case 10:
            return commit(text());
        default:
            return rare();
        }
    }

private:
    int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(m_random); }

    QString text()
    {
        static const QString texts[] = {
            QStringLiteral("192.168.1.10"),
            QStringLiteral(" 010.0.00.255\n"),
            QStringLiteral("10.0.0"),
            QStringLiteral("256.1.1.1"),
            QStringLiteral("7"),
            QStringLiteral("00"),
            QStringLiteral(" 255 "),
            QStringLiteral("256"),
            QStringLiteral("1234"),
            QStringLiteral("1a"),
            QStringLiteral("\uFF11\u0661"),
            QStringLiteral("..."),
            QStringLiteral("5.\u0662"),
            QString(),
        };
        return texts[below(static_cast<int>(std::size(texts)))];
    }

    QString type(QChar character)
    {
        QTest::keyClick(&m_field, character.toLatin1());
        m_slow.type(character);
        return character;
    }

    QString move()
    {
        const bool extend = below(3) == 0;
        const bool far = below(3) == 0;
        const int kind = below(4);
        static constexpr Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End};
        Qt::KeyboardModifiers modifiers = extend ? Qt::ShiftModifier : Qt::NoModifier;
        if (far)
            modifiers |= Qt::ControlModifier;
        QTest::keyClick(&m_field, keys[kind], modifiers);
        switch (kind) {
        case 0:
            far ? m_slow.octetLeft(extend) : m_slow.left(extend);
            break;
        case 1:
            far ? m_slow.octetRight(extend) : m_slow.right(extend);
            break;
        case 2:
            m_slow.home(extend);
            break;
        default:
            m_slow.end(extend);
            break;
        }
        return QStringLiteral("move %1 %2 %3").arg(kind).arg(far).arg(extend);
    }

    QString erase()
    {
        const int kind = below(8);
        switch (kind) {
        case 0:
            QTest::keyClick(&m_field, Qt::Key_Backspace, Qt::ControlModifier);
            m_slow.eraseOctetLeft();
            break;
        case 1:
            QTest::keyClick(&m_field, Qt::Key_Delete, Qt::ControlModifier);
            m_slow.eraseOctetRight();
            break;
        case 2:
        case 3:
        case 4:
            QTest::keyClick(&m_field, Qt::Key_Backspace);
            m_slow.backspace();
            break;
        default:
            QTest::keyClick(&m_field, Qt::Key_Delete);
            m_slow.erase();
            break;
        }
        return QStringLiteral("erase %1").arg(kind);
    }

    QString paste(const QString& pasted)
    {
        QApplication::clipboard()->setText(pasted);
        QTest::keyClick(&m_field, Qt::Key_V, Qt::ControlModifier);
        m_slow.paste(pasted);
        return QStringLiteral("paste ") + pasted;
    }

    QString commit(const QString& typed)
    {
        QInputMethodEvent event(QStringLiteral("12"), {});
        event.setCommitString(typed);
        QApplication::sendEvent(&m_field, &event);
        for (const QChar character : typed)
            m_slow.type(character);
        return QStringLiteral("commit ") + typed;
    }

    QString rare()
    {
        const int kind = below(5);
        const QString shown = text();
        switch (kind) {
        case 0:
            m_field.setText(shown);
            m_slow.setText(shown);
            break;
        case 1:
            QTest::keyClick(&m_field, Qt::Key_A, Qt::ControlModifier);
            m_slow.selectAll();
            break;
        case 2:
            clickCopyingKey(Qt::Key_X);
            m_slow.cut();
            break;
        case 3:
            clickCopyingKey(Qt::Key_C);
            break;
        default: {
            QFocusEvent event(QEvent::FocusOut, Qt::OtherFocusReason);
            QApplication::sendEvent(&m_field, &event);
            m_slow.leave();
            break;
        }
        }
        return QStringLiteral("rare %1 %2").arg(kind).arg(shown);
    }

    void clickCopyingKey(Qt::Key key)
    {
        const QString expected = m_slow.copied();
        QApplication::clipboard()->setText(QStringLiteral("before"));
        QTest::keyClick(&m_field, key, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(),
                 expected.isEmpty() ? QStringLiteral("before") : expected);
    }

    std::mt19937 m_random;
    QWidget m_window;
    CIPLineEdit m_field{&m_window};
    SlowAddressField m_slow;
};

} // namespace

class TestIPLineEditRandom final : public QObject
{
    Q_OBJECT

private slots:
    void shouldMatchTheReferenceField();
};

void TestIPLineEditRandom::shouldMatchTheReferenceField()
{
    const quint32 seed = firstSeed();
    qInfo("TSA_SEED=%u", seed);

    Pair pair(seed);
    const CIPLineEdit& field = pair.field();
    QSignalSpy changes(&field, &CIPLineEdit::textChanged);
    for (int step = 0; step < kSteps; ++step) {
        const QString before = field.displayText();
        const QString address = field.text();
        changes.clear();
        const QString operation = pair.step();
        if (QTest::currentTestFailed())
            return;

        const SlowAddressField& slow = pair.slow();
        const bool agrees = field.displayText() == slow.shown() && field.text() == slow.address()
                            && field.cursorPosition() == slow.cursor()
                            && field.selectionAnchor() == slow.anchor();
        QVERIFY2(agrees, qPrintable(QStringLiteral("step %1, %2 on %3: %4 (%5-%6), not %7 (%8-%9)")
                                        .arg(step)
                                        .arg(operation, before, field.displayText())
                                        .arg(field.selectionAnchor())
                                        .arg(field.cursorPosition())
                                        .arg(slow.shown())
                                        .arg(slow.anchor())
                                        .arg(slow.cursor())));
        QVERIFY(field.text().isEmpty()
                || IPOctets::normalizedAddress(field.text()) == field.text());
        QCOMPARE(changes.count(), field.text() == address ? 0 : 1);
        if (!changes.isEmpty())
            QCOMPARE(changes.first().first().toString(), field.text());
    }
}

TSA_TEST_MAIN(TestIPLineEditRandom)

#include "tst_iplineedit_random.moc"
