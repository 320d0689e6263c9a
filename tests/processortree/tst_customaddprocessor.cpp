#include "processortree/view/CustomAddProcessor.h"

#include "host/widgets/ComboBox.h"
#include "host/widgets/SpinBox.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/support/Chinese.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace {

using CountAndOutputs = std::pair<int, int>;

CSpinBox* countField(const QWidget& dialog)
{
    return dialog.findChild<CSpinBox*>();
}

CComboBox* outputsField(const QWidget& dialog)
{
    return dialog.findChild<CComboBox*>();
}

QList<ProcessorNode> manyProcessors(quint32 count)
{
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= count; ++n)
        processors.append(testProcessor(n));
    return processors;
}

} // namespace

class TestCustomAddProcessor final : public QObject
{
    Q_OBJECT

private slots:
    void shouldAskTheHostOnce();
    void shouldOfferOutputs();
    void shouldLeaveOutPresetsItDoesNotKnow();
    void shouldTakeOutputsTheHostFixes();
    void shouldLimitToTheRoomLeft_data();
    void shouldLimitToTheRoomLeft();
    void shouldTellWhatWasEntered();
    void shouldBeCancelled();
    void shouldArrangeTheForm();
    void shouldFollowTheLanguage();
};

void TestCustomAddProcessor::shouldAskTheHostOnce()
{
    const DialogTest test;
    const CCustomAddProcessor dialog(4, nullptr);
    QCOMPARE(test.asked(), QStringList({QStringLiteral("GetFixedOutputCount"),
                                        QStringLiteral("GetAllProcessorNodes")}));
}

void TestCustomAddProcessor::shouldOfferOutputs()
{
    const DialogTest test;
    const CCustomAddProcessor dialog(16, nullptr);
    const CComboBox* outputs = outputsField(dialog);
    QVERIFY(outputs);
    QStringList texts;
    for (int row = 0; row < outputs->count(); ++row) {
        texts.append(outputs->itemText(row));
        QCOMPARE(outputs->itemData(row, 256).toInt(), outputs->itemText(row).toInt());
    }
    QCOMPARE(texts.join(QLatin1Char(' ')), QStringLiteral("2 4 6 8 10 12 16 20 26 32 40 80"));
    QCOMPARE(outputs->currentText(), QStringLiteral("16"));
    QCOMPARE(dialog.countAndOutputs(), CountAndOutputs(1, 16));
    QCOMPARE(dialog.height(), 157);
}

void TestCustomAddProcessor::shouldLeaveOutPresetsItDoesNotKnow()
{
    const DialogTest test;
    const CCustomAddProcessor dialog(7, nullptr);
    QCOMPARE(outputsField(dialog)->currentIndex(), -1);
    QCOMPARE(dialog.countAndOutputs(), CountAndOutputs(1, 0));
    outputsField(dialog)->setCurrentIndex(2);
    QCOMPARE(dialog.countAndOutputs(), CountAndOutputs(1, 6));
}

void TestCustomAddProcessor::shouldTakeOutputsTheHostFixes()
{
    DialogTest test;
    test.host().fixedOutputCount = 20;
    const CCustomAddProcessor dialog(7, nullptr);
    QVERIFY(!outputsField(dialog));
    QCOMPARE(dialog.height(), 121);
    QCOMPARE(dialog.findChildren<QFormLayout*>().value(0)->rowCount(), 1);
    QCOMPARE(dialog.countAndOutputs(), CountAndOutputs(1, 7));
    test.host().fixedOutputCount = -1;
    const CCustomAddProcessor free(8, nullptr);
    QVERIFY(outputsField(free));
}

void TestCustomAddProcessor::shouldLimitToTheRoomLeft_data()
{
    QTest::addColumn<quint32>("taken");
    QTest::addColumn<int>("lowest");
    QTest::addColumn<int>("highest");
    QTest::newRow("empty") << 0U << 1 << 255;
    QTest::newRow("some") << 100U << 1 << 155;
    QTest::newRow("one left") << 254U << 1 << 1;
    QTest::newRow("full") << 255U << 0 << 0;
    QTest::newRow("more than full") << 300U << 0 << 0;
}

void TestCustomAddProcessor::shouldLimitToTheRoomLeft()
{
    QFETCH(const quint32, taken);
    QFETCH(const int, lowest);
    QFETCH(const int, highest);
    DialogTest test;
    test.host().setProject({}, manyProcessors(taken));
    const CCustomAddProcessor dialog(4, nullptr);
    QCOMPARE(countField(dialog)->minimum(), lowest);
    QCOMPARE(countField(dialog)->maximum(), highest);
    QCOMPARE(countField(dialog)->value(), lowest);
}

void TestCustomAddProcessor::shouldTellWhatWasEntered()
{
    DialogTest test;
    test.driver.then([](QWidget& window) {
        retype(countField(window), QStringLiteral("12"));
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), outputsField(window));
        QTest::keyClick(window.focusWidget(), Qt::Key_Down);
        QTest::keyClick(window.focusWidget(), Qt::Key_Enter);
    });
    CCustomAddProcessor dialog(4, &test.window);
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(dialog.countAndOutputs(), CountAndOutputs(12, 6));
}

void TestCustomAddProcessor::shouldBeCancelled()
{
    DialogTest test;
    test.driver.thenEscape();
    CCustomAddProcessor dialog(4, &test.window);
    QCOMPARE(dialog.exec(), 0);
    test.driver.then([](QWidget& window) { clickButton(window, QStringLiteral("Cancel")); });
    CCustomAddProcessor another(4, &test.window);
    QCOMPARE(another.exec(), 0);
}

void TestCustomAddProcessor::shouldArrangeTheForm()
{
    DialogTest test;
    CCustomAddProcessor dialog(4, &test.window);
    test.driver.then([](QWidget& window) {
        QCOMPARE(window.focusPolicy(), Qt::WheelFocus);
        QCOMPARE(countField(window)->width(), 184);
        QCOMPARE(outputsField(window)->width(), 184);
        const auto* form = window.findChildren<QFormLayout*>().value(0);
        QVERIFY(form);
        QCOMPARE(form->spacing(), 8);
        QCOMPARE(form->contentsMargins(), QMargins(0, 0, 4, 0));
        QCOMPARE(form->labelAlignment(), Qt::AlignRight | Qt::AlignVCenter);
        QCOMPARE(form->formAlignment(), Qt::AlignRight | Qt::AlignTop);
        const auto* buttons = window.findChild<QDialogButtonBox*>();
        QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QVERIFY(buttons->button(QDialogButtonBox::Ok)->isDefault());
        // The fixed height leaves enough room for each row.
        const int lowest = window.height() - CDialog::kButtonRowHeight;
        for (int row = 0; row < form->rowCount(); ++row) {
            for (const auto role : {QFormLayout::LabelRole, QFormLayout::FieldRole}) {
                const QWidget* widget = form->itemAt(row, role)->widget();
                const QRect place(widget->mapTo(&window, QPoint()), widget->size());
                QVERIFY(place.height() >= widget->minimumSizeHint().height());
                QVERIFY(place.width() >= widget->minimumSizeHint().width());
                QVERIFY(place.top() >= CDialog::kTitleBarHeight && place.bottom() < lowest);
                QVERIFY(place.left() >= 0 && place.right() < window.width());
            }
        }
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

void TestCustomAddProcessor::shouldFollowTheLanguage()
{
    const DialogTest test;
    const CCustomAddProcessor dialog(4, nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Custom add processor"));
    QCOMPARE(countField(dialog)->accessibleName(), QStringLiteral("Number of processors"));
    const Chinese chinese;
    QVERIFY(chinese.isLoaded());
    QTRY_COMPARE(dialog.windowTitle(), QStringLiteral("自定义添加处理器"));
    QCOMPARE(countField(dialog)->accessibleName(), QStringLiteral("处理器数量"));
    QCOMPARE(outputsField(dialog)->accessibleName(), QStringLiteral("输出口数量"));
}

TSA_TEST_MAIN(TestCustomAddProcessor)

#include "tst_customaddprocessor.moc"
