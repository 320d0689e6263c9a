#include "host/widgets/ActionLineEdit.h"
#include "host/widgets/HostTheme.h"
#include "tests/support/WarningTrap.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTranslator>

namespace {
struct Form
{
    Form()
    {
        window.resize(320, 120);
        field.setGeometry(10, 10, 176, 24);
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        search = field.AddLeadingAction(QIcon(pixmap), QStringLiteral("Find"));
        field.setClearButtonEnabled(true);
        window.show();
        window.activateWindow();
    }

    QToolButton* buttonAt(int x) { return qobject_cast<QToolButton*>(field.childAt(x, 12)); }

    QWidget window;
    CActionLineEdit field{&window};
    QAction* search = nullptr;
};

/// Returns the name that assistive technology reads.
QString nameOf(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

} // namespace

class TestActionLineEdit final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldShowAnActionInFrontOfTheText();
    void shouldBeginItsTextLikeOtherFieldsWithoutAnAction();
    void shouldClearByItsButton();
    void shouldClearNothingWhileReadOnly();
    void shouldShowItsClearButtonWithTextOnly();
    void shouldHaveNoClearButtonByDefault();
    void shouldShowTheUsersLanguage();
    void shouldShowItsClearButtonInTheThemesColour();
};

void TestActionLineEdit::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TestActionLineEdit::shouldShowAnActionInFrontOfTheText()
{
    Form form;
    QToolButton* button = form.buttonAt(14);
    QVERIFY(button);
    QCOMPARE(button->defaultAction(), form.search);
    QCOMPARE(form.search->toolTip(), QStringLiteral("Find"));
    QCOMPARE(form.search->parent(), &form.field);
    QSignalSpy searches(form.search, &QAction::triggered);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(searches.count(), 1);
}

void TestActionLineEdit::shouldBeginItsTextLikeOtherFieldsWithoutAnAction()
{
    const auto textBegin = [](QLineEdit& field) {
        field.resize(176, 24);
        field.ensurePolished();
        return field.inputMethodQuery(Qt::ImCursorRectangle).toRect().left();
    };
    QLineEdit other;
    CActionLineEdit field;
    field.setClearButtonEnabled(true);
    QCOMPARE(textBegin(field), textBegin(other));
    field.AddLeadingAction(QIcon(QPixmap(16, 16)), QStringLiteral("Find"));
    QVERIFY(textBegin(field) > textBegin(other));
}

void TestActionLineEdit::shouldClearByItsButton()
{
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("12"));
    QSignalSpy edits(&form.field, &QLineEdit::textEdited);
    QToolButton* button = form.buttonAt(162);
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(form.field.text(), QString());
    QCOMPARE(edits, (QList<QList<QVariant>>{{QString()}}));
}

void TestActionLineEdit::shouldClearNothingWhileReadOnly()
{
    Form form;
    form.field.setText(QStringLiteral("12"));
    form.field.setReadOnly(true);
    QToolButton* button = form.buttonAt(162);
    QVERIFY(button);
    QVERIFY(!button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(form.field.text(), QStringLiteral("12"));
    form.field.setReadOnly(false);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(form.field.text(), QString());
}

void TestActionLineEdit::shouldShowItsClearButtonWithTextOnly()
{
    Form form;
    QVERIFY(form.field.isClearButtonEnabled());
    QVERIFY(!form.buttonAt(162));
    QTest::keyClicks(&form.field, QStringLiteral("1"));
    QVERIFY(form.buttonAt(162));
    QTest::keyClick(&form.field, Qt::Key_Backspace);
    QVERIFY(!form.buttonAt(162));
    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(&form.field, &change);
    QVERIFY(!form.buttonAt(162));
    // Twice is once.
    form.field.setClearButtonEnabled(true);
    form.field.setText(QStringLiteral("2"));
    QCOMPARE(form.field.findChildren<QToolButton*>().size(), 2);
    QVERIFY(form.buttonAt(162));
}

void TestActionLineEdit::shouldHaveNoClearButtonByDefault()
{
    Form form;
    form.field.setClearButtonEnabled(false);
    form.field.setText(QStringLiteral("12"));
    QVERIFY(!form.field.isClearButtonEnabled());
    QVERIFY(!form.buttonAt(162));
}

void TestActionLineEdit::shouldShowTheUsersLanguage()
{
    Form form;
    form.field.setText(QStringLiteral("12"));
    QCOMPARE(form.buttonAt(162)->toolTip(), QStringLiteral("Clear"));
    QCOMPARE(nameOf(form.buttonAt(162)), QStringLiteral("Clear"));
    QTranslator chinese;
    QVERIFY(chinese.load(QStringLiteral(":/HostWidgets/translations/HostWidgets_zh_CN.qm")));
    QVERIFY(QCoreApplication::installTranslator(&chinese));
    QTRY_COMPARE(form.buttonAt(162)->toolTip(), QStringLiteral("清除"));
    QCOMPARE(nameOf(form.buttonAt(162)), QStringLiteral("清除"));
    QCOMPARE(nameOf(form.buttonAt(14)), QStringLiteral("Find"));
}

void TestActionLineEdit::shouldShowItsClearButtonInTheThemesColour()
{
    Form form;
    form.field.setText(QStringLiteral("i"));
    const auto brightest = [&] {
        const QRect area = form.buttonAt(162)->geometry();
        const QImage image = form.field.grab(area).toImage();
        int bright = 0;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y)
                bright = qMax(bright, qGray(image.pixel(x, y)));
        }
        return bright;
    };
    QVERIFY(form.buttonAt(162));
    QVERIFY(brightest() > 150);
}

TSA_TEST_MAIN(TestActionLineEdit)

#include "tst_actionlineedit.moc"
