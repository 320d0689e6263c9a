#include "host/widgets/ComboBox.h"
#include "host/widgets/HostTheme.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>

namespace {
struct Form
{
    Form()
    {
        window.resize(400, 200);
        box.setGeometry(10, 60, 200, 24);
        box.addItems({QStringLiteral("I"), QStringLiteral("II"), QString(100, QLatin1Char('M'))});
        window.show();
        window.activateWindow();
    }

    bool isActive() { return QTest::qWaitForWindowActive(&window); }

    void turnWheel()
    {
        const QPoint center = box.rect().center();
        QWheelEvent event(center, box.mapToGlobal(center), {}, QPoint(0, -120), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &event);
    }

    QString toolTip()
    {
        const QPoint center = box.rect().center();
        QHelpEvent event(QEvent::ToolTip, center, box.mapToGlobal(center));
        QApplication::sendEvent(&box, &event);
        return QToolTip::text();
    }

    QWidget window;
    QLineEdit other{&window};
    CComboBox box{&window};
};

/// Returns the horizontal centre of the pixels that are as bright as text.
int inkCenter(QWidget& widget, const QRect& area)
{
    const QImage image = widget.grab(area).toImage();
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qGray(image.pixel(x, y)) > 150) {
                first = qMin(first, x);
                last = x;
            }
        }
    }
    return (first + last) / 2;
}

} // namespace

class TestComboBox final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldAlignItsText();
    void shouldAlignTheList();
    void shouldHaveRowsOf24Pixels();
    void shouldAlignAnEditor();
    void shouldReactToTheWheelOnlyWithTheFocus();
    void shouldShowElidedTextsWhole();
};

void TestComboBox::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TestComboBox::shouldAlignItsText()
{
    Form form;
    const QRect text(3, 5, 172, 14);
    form.box.setTextHorizontalAlignment(Qt::AlignLeft);
    const int left = inkCenter(form.box, text) + text.left();
    form.box.setTextHorizontalAlignment(Qt::AlignHCenter);
    const int center = inkCenter(form.box, text) + text.left();
    form.box.setTextHorizontalAlignment(Qt::AlignRight);
    const int right = inkCenter(form.box, text) + text.left();
    QVERIFY2(left < 30, qPrintable(QString::number(left)));
    QVERIFY2(qAbs(center - 100) <= 2, qPrintable(QString::number(center)));
    QVERIFY2(right > 150, qPrintable(QString::number(right)));
    QCOMPARE(form.box.textHorizontalAlignment(), Qt::AlignRight);
}

void TestComboBox::shouldAlignTheList()
{
    Form form;
    form.box.removeItem(2);
    form.box.setTextHorizontalAlignment(Qt::AlignHCenter);
    form.box.showPopup();
    QAbstractItemView& list = *form.box.view();
    const QRect second = list.visualRect(list.model()->index(1, 0));
    const QRect inside = second.adjusted(4, 4, -4, -4);
    const int center = inkCenter(*list.viewport(), inside) + inside.left();
    QVERIFY2(qAbs(center - second.center().x()) <= 2, qPrintable(QString::number(center)));
    form.box.hidePopup();
}

void TestComboBox::shouldHaveRowsOf24Pixels()
{
    Form form;
    form.box.showPopup();
    const QAbstractItemView& list = *form.box.view();
    for (int row = 0; row < form.box.count(); ++row)
        QCOMPARE(list.visualRect(list.model()->index(row, 0)).height(), 24);
    form.box.hidePopup();
}

void TestComboBox::shouldAlignAnEditor()
{
    Form form;
    form.box.setTextHorizontalAlignment(Qt::AlignHCenter);
    form.box.setEditable(true);
    QTRY_VERIFY(form.box.lineEdit()->alignment() & Qt::AlignHCenter);
    form.box.setTextHorizontalAlignment(Qt::AlignRight);
    QVERIFY(form.box.lineEdit()->alignment() & Qt::AlignRight);
}

void TestComboBox::shouldReactToTheWheelOnlyWithTheFocus()
{
    Form form;
    QVERIFY(form.isActive());
    form.other.setFocus();
    form.turnWheel();
    QCOMPARE(form.box.currentIndex(), 0);
    QVERIFY(form.other.hasFocus());
    form.box.setFocus();
    form.turnWheel();
    QCOMPARE(form.box.currentIndex(), 1);
}

void TestComboBox::shouldShowElidedTextsWhole()
{
    Form form;
    QVERIFY(form.toolTip().isEmpty());
    form.box.setCurrentIndex(2);
    QCOMPARE(form.toolTip().count(QLatin1Char('M')), 100);
    form.box.setToolTip(QStringLiteral("Choose"));
    QCOMPARE(form.toolTip(), QStringLiteral("Choose"));
    QToolTip::hideText();
}

TSA_TEST_MAIN(TestComboBox)

#include "tst_combobox.moc"
