#include "host/widgets/Dialog.h"
#include "host/widgets/HostTheme.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>
#include <QWindow>

#include <functional>
#include <utility>

namespace {
/// A form of two rows that relies on the sizes of the frame.
class EntryDialog final : public CDialog
{
public:
    explicit EntryDialog(QWidget* parent = nullptr, int titleButtons = CloseTitleButton)
        : CDialog(parent, QStringLiteral("Entry"), QString(), titleButtons)
    {
        Init();
        setFixedSize(260, 146);
    }

    using CDialog::OnReject;

    QLineEdit* name = nullptr;
    QSpinBox* number = nullptr;
    QStringList calls;
    bool refusesToClose = false;

protected:
    void OnAccept() override
    {
        calls.append(QStringLiteral("accept"));
        CDialog::OnAccept();
    }

    void OnReject() override
    {
        calls.append(QStringLiteral("reject"));
        if (!refusesToClose)
            CDialog::OnReject();
    }

    void InitWidgets() override
    {
        calls.append(QStringLiteral("widgets"));
        // Created before the body, which must still be first in the tab order.
        SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
        name = new QLineEdit(this);
        number = new QSpinBox(this);
        name->setFixedSize(172, 24);
        number->setFixedSize(172, 24);
    }

    void InitLayout(QBoxLayout* body) override
    {
        calls.append(QStringLiteral("layout"));
        body->setContentsMargins(0, 12, 0, 0);
        auto* form = new QFormLayout;
        form->setSpacing(8);
        form->setContentsMargins(16, 0, 16, 14);
        form->addRow(QStringLiteral("Name"), name);
        form->addRow(QStringLiteral("Number"), number);
        body->addLayout(form);
    }

    void InitConnections() override { calls.append(QStringLiteral("connections")); }
};

/// A list below a row of tools, without standard buttons.
class ListDialog final : public CDialog
{
public:
    ListDialog()
        : CDialog(nullptr, QStringLiteral("List"), QStringLiteral("of all"),
                  CloseTitleButton | MaximizeTitleButton)
    {
        Init();
        resize(648, 393);
    }

    QWidget* tools = nullptr;
    QWidget* list = nullptr;

protected:
    void InitLayout(QBoxLayout* body) override
    {
        tools = new QWidget(this);
        tools->setFixedHeight(37);
        list = new QWidget(this);
        body->addWidget(tools);
        body->addWidget(list);
    }
};

void showActive(QWidget& window)
{
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

QRect placeIn(const QWidget& window, const QWidget& widget)
{
    return {widget.mapTo(&window, QPoint()), widget.size()};
}

QPushButton* button(const CDialog& dialog, QDialogButtonBox::StandardButton which)
{
    return dialog.findChild<QDialogButtonBox*>()->button(which);
}

QStringList buttonTexts(const CDialog& dialog)
{
    QStringList texts;
    const QLayout* row = dialog.findChild<QDialogButtonBox*>()->layout();
    for (int i = 0; i < row->count(); ++i) {
        if (const auto* button = qobject_cast<QPushButton*>(row->itemAt(i)->widget()))
            texts.append(button->text());
    }
    return texts;
}

QToolButton* closeButton(const CDialog& dialog)
{
    return dialog.findChild<QToolButton*>(QStringLiteral("DialogCloseButton"));
}

QToolButton* maximizeButton(const CDialog& dialog)
{
    return dialog.findChild<QToolButton*>(QStringLiteral("DialogMaximizeButton"));
}

QWidget* titleBar(const CDialog& dialog)
{
    return closeButton(dialog)->parentWidget();
}

using Way = std::function<void(EntryDialog&)>;

} // namespace

Q_DECLARE_METATYPE(Way)

class DialogTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ApplyHostTheme(*qApp); }
    void shouldKeepItsSizes();
    void shouldFillTheFrameWithoutButtons();
    void shouldKeepItsTitleBarAboveAnEmptyBody();
    void shouldDrawItsOutlineOverTheBody();
    void shouldRunTheHooksInOrderOnce();
    void shouldPressTheDefaultButtonOnEnter();
    void shouldRejectOnEveryWayToClose_data();
    void shouldRejectOnEveryWayToClose();
    void shouldStayOpenWhenRejectingIsRefused();
    void shouldTabThroughTheBodyThenTheButtons();
    void shouldReplaceItsButtons();
    void shouldPressButtonsByAltKeys();
    void shouldFollowTheLanguage();
    void shouldMoveWithItsTitleBar();
    void shouldMaximizeOnlyWithItsButton();
    void shouldAppearCentredOverItsParent();
    void shouldAppearCompletelyOnTheScreen();
    void shouldBlockItsParentsWindowOnly();
};

void DialogTest::shouldKeepItsSizes()
{
    EntryDialog dialog;
    showActive(dialog);
    QCOMPARE(dialog.size(), QSize(260, 146));
    QCOMPARE(placeIn(dialog, *titleBar(dialog)), QRect(0, 0, 260, 30));
    QCOMPARE(placeIn(dialog, *dialog.name).top(), 30 + 12);
    QCOMPARE(placeIn(dialog, *dialog.name).size(), QSize(172, 24));
    QCOMPARE(placeIn(dialog, *dialog.number).top(), 30 + 12 + 24 + 8);
    const QRect cancel = placeIn(dialog, *button(dialog, QDialogButtonBox::Cancel));
    const QRect ok = placeIn(dialog, *button(dialog, QDialogButtonBox::Ok));
    QCOMPARE(cancel.top(), 146 - 34);
    QCOMPARE(cancel.height(), 24);
    QCOMPARE(cancel.right() + 1, 260 - 16);
    QCOMPARE(ok.right() + 1 + 8, cancel.left());
    QCOMPARE(ok.top(), cancel.top());
}

void DialogTest::shouldFillTheFrameWithoutButtons()
{
    ListDialog dialog;
    showActive(dialog);
    QCOMPARE(placeIn(dialog, *dialog.tools), QRect(0, 30, 648, 37));
    QCOMPARE(placeIn(dialog, *dialog.list), QRect(0, 67, 648, 326));
}

void DialogTest::shouldKeepItsTitleBarAboveAnEmptyBody()
{
    CDialog dialog(nullptr, QStringLiteral("Empty"), QString(), CDialog::CloseTitleButton);
    dialog.Init();
    dialog.resize(300, 200);
    showActive(dialog);
    QCOMPARE(placeIn(dialog, *titleBar(dialog)), QRect(0, 0, 300, 30));
}

void DialogTest::shouldDrawItsOutlineOverTheBody()
{
    ListDialog dialog;
    dialog.list->setStyleSheet(QStringLiteral("background: #ff0000"));
    showActive(dialog);
    dialog.resize(500, 300);
    QTRY_COMPARE(dialog.list->width(), 500);
    const QImage image = dialog.grab().toImage();
    for (const QPoint at : {QPoint(0, 0), QPoint(0, 200), QPoint(499, 200), QPoint(250, 299)})
        QCOMPARE(image.pixelColor(at), hostColors().line);
    QCOMPARE(image.pixelColor(1, 200), QColor(255, 0, 0));
    QCOMPARE(dialog.childAt(0, 200), dialog.list);
}

void DialogTest::shouldRunTheHooksInOrderOnce()
{
    EntryDialog dialog;
    dialog.Init();
    QCOMPARE(dialog.calls.join(QLatin1Char(' ')), QStringLiteral("widgets layout connections"));
}

void DialogTest::shouldPressTheDefaultButtonOnEnter()
{
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        EntryDialog dialog;
        showActive(dialog);
        QWidget* field = key == Qt::Key_Return ? static_cast<QWidget*>(dialog.name) : dialog.number;
        QTest::keyClick(field, static_cast<Qt::Key>(key));
        QCOMPARE(dialog.calls.last(), QStringLiteral("accept"));
        QCOMPARE(dialog.result(), 1);
        QVERIFY(!dialog.isVisible());
    }
    EntryDialog dialog;
    dialog.EnableDialogBtn(QDialogButtonBox::Ok, false);
    dialog.EnableDialogBtn(QDialogButtonBox::Help, false);
    showActive(dialog);
    QTest::keyClick(dialog.name, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
}

void DialogTest::shouldRejectOnEveryWayToClose_data()
{
    QTest::addColumn<Way>("leave");
    QTest::newRow("Escape") << Way(
        [](EntryDialog& dialog) { QTest::keyClick(dialog.name, Qt::Key_Escape); });
    QTest::newRow("title bar") << Way(
        [](EntryDialog& dialog) { QTest::mouseClick(closeButton(dialog), Qt::LeftButton); });
    QTest::newRow("window manager") << Way([](EntryDialog& dialog) { dialog.close(); });
    QTest::newRow("button") << Way([](EntryDialog& dialog) {
        QTest::mouseClick(button(dialog, QDialogButtonBox::Cancel), Qt::LeftButton);
    });
}

void DialogTest::shouldRejectOnEveryWayToClose()
{
    QFETCH(const Way, leave);
    EntryDialog dialog;
    showActive(dialog);
    leave(dialog);
    QCOMPARE(dialog.calls.last(), QStringLiteral("reject"));
    QCOMPARE(dialog.calls.count(QStringLiteral("reject")), 1);
    QCOMPARE(dialog.result(), 0);
    QVERIFY(!dialog.isVisible());
}

void DialogTest::shouldStayOpenWhenRejectingIsRefused()
{
    EntryDialog dialog;
    dialog.refusesToClose = true;
    showActive(dialog);
    QTest::keyClick(dialog.name, Qt::Key_Escape);
    QVERIFY(!dialog.close());
    QVERIFY(dialog.isVisible());
}

void DialogTest::shouldTabThroughTheBodyThenTheButtons()
{
    EntryDialog dialog;
    showActive(dialog);
    QWidget* const stops[] = {dialog.name, dialog.number, button(dialog, QDialogButtonBox::Ok),
                              button(dialog, QDialogButtonBox::Cancel), dialog.name};
    QCOMPARE(QApplication::focusWidget(), stops[0]);
    for (QWidget* stop : stops) {
        QCOMPARE(QApplication::focusWidget(), stop);
        QTest::keyClick(stop, Qt::Key_Tab);
    }
}

void DialogTest::shouldReplaceItsButtons()
{
    EntryDialog dialog;
    QCOMPARE(buttonTexts(dialog).join(QLatin1Char(' ')), QStringLiteral("OK Cancel"));
    showActive(dialog);
    dialog.SetDialogBtnRole(QDialogButtonBox::Yes | QDialogButtonBox::No, QDialogButtonBox::No);
    QCOMPARE(buttonTexts(dialog).join(QLatin1Char(' ')), QStringLiteral("Yes No"));
    QTest::keyClick(dialog.name, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), button(dialog, QDialogButtonBox::No));
    QTest::keyClick(dialog.name, Qt::Key_Return);
    QCOMPARE(dialog.calls.last(), QStringLiteral("reject"));

    dialog.SetDialogBtnRole(QDialogButtonBox::NoButton, QDialogButtonBox::NoButton);
    showActive(dialog);
    QVERIFY(!dialog.findChild<QDialogButtonBox*>()->isVisible());
}

void DialogTest::shouldPressButtonsByAltKeys()
{
    EntryDialog dialog;
    showActive(dialog);
    QTest::keyClick(dialog.name, Qt::Key_C, Qt::AltModifier);
    QTRY_COMPARE(dialog.calls.last(), QStringLiteral("reject"));
    dialog.SetDialogBtnRole(QDialogButtonBox::Yes | QDialogButtonBox::No, QDialogButtonBox::No);
    showActive(dialog);
    QTest::keyClick(dialog.name, Qt::Key_Y, Qt::AltModifier);
    QTRY_COMPARE(dialog.calls.last(), QStringLiteral("accept"));
}

void DialogTest::shouldFollowTheLanguage()
{
    EntryDialog dialog(nullptr, CDialog::CloseTitleButton | CDialog::MaximizeTitleButton);
    showActive(dialog);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/HostWidgets/translations/HostWidgets_zh_CN.qm")));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QTRY_COMPARE(buttonTexts(dialog).join(QLatin1Char(' ')), QStringLiteral("确定 取消"));
    QCOMPARE(closeButton(dialog)->accessibleName(), QStringLiteral("关闭"));
    QCOMPARE(maximizeButton(dialog)->accessibleName(), QStringLiteral("最大化"));
    dialog.SetDialogBtnRole(QDialogButtonBox::Yes | QDialogButtonBox::No, QDialogButtonBox::Yes);
    QCOMPARE(buttonTexts(dialog).join(QLatin1Char(' ')), QStringLiteral("是 否"));
    QCoreApplication::removeTranslator(&translator);
    QTRY_COMPARE(buttonTexts(dialog).join(QLatin1Char(' ')), QStringLiteral("Yes No"));
    QCOMPARE(closeButton(dialog)->accessibleName(), QStringLiteral("Close"));
}

void DialogTest::shouldMoveWithItsTitleBar()
{
    EntryDialog dialog;
    showActive(dialog);
    dialog.move(100, 100);
    QWindow* window = dialog.windowHandle();
    const QPoint grip(40, 15);
    QTest::mousePress(window, Qt::LeftButton, {}, grip);
    QTest::mouseMove(window, grip + QPoint(2, 1));
    QCOMPARE(dialog.pos(), QPoint(100, 100));
    QTest::mouseMove(window, grip + QPoint(70, 50));
    QTRY_COMPARE(dialog.pos(), QPoint(170, 150));
    QTest::mouseRelease(window, Qt::LeftButton, {}, grip);
    QTest::mouseMove(window, grip + QPoint(90, 90));
    QCOMPARE(dialog.pos(), QPoint(170, 150));

    for (const auto& [button, at] :
         {std::pair(Qt::RightButton, grip), std::pair(Qt::LeftButton, QPoint(250, 60))}) {
        QTest::mousePress(window, button, {}, at);
        QTest::mouseMove(window, at + QPoint(-70, 50));
        QTest::mouseRelease(window, button, {}, at + QPoint(-70, 50));
        QCOMPARE(dialog.pos(), QPoint(170, 150));
    }
}

void DialogTest::shouldMaximizeOnlyWithItsButton()
{
    ListDialog large;
    showActive(large);
    QTest::mouseDClick(titleBar(large), Qt::LeftButton, {}, QPoint(40, 15));
    QTRY_VERIFY(large.isMaximized());
    QCOMPARE(maximizeButton(large)->accessibleName(), QStringLiteral("Restore"));
    QTest::mouseClick(maximizeButton(large), Qt::LeftButton);
    QTRY_VERIFY(!large.isMaximized());
    QCOMPARE(maximizeButton(large)->accessibleName(), QStringLiteral("Maximize"));

    EntryDialog small;
    showActive(small);
    QVERIFY(!maximizeButton(small));
    QTest::mouseDClick(titleBar(small), Qt::LeftButton, {}, QPoint(40, 15));
    QVERIFY(!small.isMaximized());
}

void DialogTest::shouldAppearCentredOverItsParent()
{
    QWidget window;
    QWidget panel(&window);
    window.setGeometry(300, 200, 400, 300);
    panel.setGeometry(0, 0, 20, 20);
    showActive(window);
    EntryDialog dialog(&panel);
    showActive(dialog);
    QCOMPARE(dialog.geometry().center(), window.frameGeometry().center());
    dialog.hide();
    window.move(350, 250);
    showActive(dialog);
    QCOMPARE(dialog.geometry().center(), window.frameGeometry().center());
}

void DialogTest::shouldAppearCompletelyOnTheScreen()
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    EntryDialog dialog;
    dialog.move(-500, -400);
    showActive(dialog);
    QCOMPARE(dialog.pos(), room.topLeft());
    dialog.hide();
    dialog.move(room.right() - 20, room.bottom() - 20);
    showActive(dialog);
    QCOMPARE(dialog.geometry().bottomRight(), room.bottomRight());
    dialog.hide();
    dialog.move(120, 130);
    showActive(dialog);
    QCOMPARE(dialog.pos(), QPoint(120, 130));
}

void DialogTest::shouldBlockItsParentsWindowOnly()
{
    QWidget window;
    QWidget other;
    QLineEdit field(&window);
    QLineEdit otherField(&other);
    other.show();
    showActive(window);
    EntryDialog dialog(&field);
    QTimer::singleShot(0, &dialog, [&] {
        QCOMPARE(QApplication::activeModalWidget(), &dialog);
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(!field.hasFocus());
        QCOMPARE(dialog.windowModality(), Qt::WindowModal);
        QTest::keyClick(dialog.name, Qt::Key_Return);
    });
    QCOMPARE(dialog.exec(), 1);
}

TSA_TEST_MAIN(DialogTest)
#include "tst_dialog.moc"
