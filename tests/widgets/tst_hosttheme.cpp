#include "host/widgets/ComboBox.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/IPLineEdit.h"
#include "tests/support/Contrast.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QFile>
#include <QFontInfo>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace {
QImage shown(QWidget& widget)
{
    return widget.grab().toImage();
}

} // namespace

class HostThemeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldUseOnlyExistingColoursAndIcons();
    void shouldWriteInTwelvePixels();
    void shouldWriteEverythingInOneFont();
    void shouldKeepFieldsOf24Pixels();
    void shouldKeepToolsOf24Pixels();
    void shouldKeepTheWidthOfButtons();
    void shouldShowTheFocus();
    void shouldDistinguishButtons();
    void shouldPaintWithItsColours();
    void shouldHaveContrast_data();
    void shouldHaveContrast();
    void shouldShowHintsAndPlaceholders();
    void shouldSelectTextInTheAccent();
};

void HostThemeTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void HostThemeTest::shouldUseOnlyExistingColoursAndIcons()
{
    const QString sheet = qApp->styleSheet();
    QVERIFY(!sheet.isEmpty());
    QVERIFY2(!sheet.contains(QLatin1Char('@')), qPrintable(sheet));
    const QRegularExpression url(QStringLiteral("url\\(([^)]*)\\)"));
    int count = 0;
    for (auto it = url.globalMatch(sheet); it.hasNext(); ++count) {
        const QString file = it.next().captured(1);
        QVERIFY2(file.startsWith(QLatin1String(":/HostWidgets/")), qPrintable(file));
        QVERIFY2(!QIcon(file).pixmap(12, 12).isNull(), qPrintable(file));
    }
    QVERIFY(count > 3);
}

void HostThemeTest::shouldWriteInTwelvePixels()
{
    QCOMPARE(QFontInfo(QApplication::font()).pixelSize(), 12);
    QCOMPARE(QPushButton().font().pixelSize(), 12);
}

/// Windows has fonts of its own for these classes.
void HostThemeTest::shouldWriteEverythingInOneFont()
{
    for (const char* name : {"QMenu", "QMenuBar", "QMessageBox", "QTipLabel", "QStatusBar",
                             "QDockWidgetTitle", "QAbstractItemView", "QHeaderView"})
        QVERIFY2(QApplication::font(name) == QApplication::font(), name);
}

void HostThemeTest::shouldKeepFieldsOf24Pixels()
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* line = new QLineEdit(QStringLiteral("Ägypten"), &window);
    auto* spin = new QSpinBox(&window);
    for (QWidget* field : {static_cast<QWidget*>(line), static_cast<QWidget*>(spin)}) {
        field->setFixedSize(172, 24);
        layout->addWidget(field);
    }
    window.show();
    QCOMPARE(line->size(), QSize(172, 24));
    QCOMPARE(spin->size(), QSize(172, 24));
    const int text = line->fontMetrics().height();
    QVERIFY2(text <= 22, qPrintable(QString::number(text)));
    const auto* editor = spin->findChild<QLineEdit*>();
    QVERIFY2(editor->height() >= text && editor->geometry().bottom() < 24,
             qPrintable(QString::number(editor->height())));
}

void HostThemeTest::shouldKeepToolsOf24Pixels()
{
    QWidget window;
    QToolButton tool(&window);
    QMenu menu;
    tool.setObjectName(QStringLiteral("IPManageToolButton"));
    tool.setIconSize({20, 20});
    tool.setMenu(&menu);
    tool.setPopupMode(QToolButton::InstantPopup);
    window.show();
    tool.adjustSize();
    QCOMPARE(tool.size(), QSize(24, 24));
    QPixmap solid(20, 20);
    solid.fill(Qt::red);
    tool.setIcon(solid);
    // The icon is centred, and no menu indicator covers it.
    const QImage image = shown(tool).copy(2, 2, 20, 20);
    for (const QPoint at : {QPoint(0, 0), QPoint(19, 0), QPoint(0, 19), QPoint(19, 19)})
        QCOMPARE(image.pixelColor(at), QColor(Qt::red));
}

void HostThemeTest::shouldKeepTheWidthOfButtons()
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* button = new QPushButton(QStringLiteral("Short"), &window);
    button->setFixedWidth(200);
    layout->addWidget(button, 0, Qt::AlignCenter);
    window.show();
    QCOMPARE(button->width(), 200);
}

void HostThemeTest::shouldShowTheFocus()
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* tool = new QToolButton(&window);
    tool->setObjectName(QStringLiteral("IPManageToolButton"));
    tool->setFocusPolicy(Qt::StrongFocus);
    const QVector<QWidget*> widgets = {new QLineEdit(&window), new QSpinBox(&window),
                                       new QPushButton(&window), tool};
    auto* rest = new QPushButton(&window);
    for (QWidget* widget : widgets)
        layout->addWidget(widget);
    layout->addWidget(rest);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    for (QWidget* widget : widgets) {
        rest->setFocus();
        const QImage without = shown(*widget);
        widget->setFocus();
        QVERIFY(widget->hasFocus());
        QVERIFY2(shown(*widget) != without, widget->metaObject()->className());
    }
}

void HostThemeTest::shouldDistinguishButtons()
{
    QWidget window;
    QPushButton plain(&window);
    QPushButton standard(&window);
    QPushButton disabled(&window);
    standard.setDefault(true);
    disabled.setDefault(true);
    disabled.setEnabled(false);
    window.show();
    const auto fill = [](QWidget& button) {
        return shown(button).pixelColor(button.width() / 2, 4);
    };
    QCOMPARE(fill(plain), hostColors().field);
    QVERIFY(fill(standard).blue() > 150);
    QCOMPARE(fill(disabled), hostColors().popup);
    for (const QPushButton* button : {&plain, &standard, &disabled})
        QCOMPARE(button->sizeHint().height(), 24);
}

void HostThemeTest::shouldPaintWithItsColours()
{
    QLineEdit field;
    field.resize(100, 24);
    QCOMPARE(shown(field).pixelColor(50, 3), hostColors().field);
    QCOMPARE(shown(field).pixelColor(50, 0), hostColors().frame);
    field.setEnabled(false);
    QCOMPARE(shown(field).pixelColor(50, 0), hostColors().line);
    QCOMPARE(QApplication::palette().color(QPalette::WindowText), hostColors().text);
}

void HostThemeTest::shouldHaveContrast_data()
{
    QTest::addColumn<QColor>("front");
    QTest::addColumn<QColor>("back");
    QTest::addColumn<double>("least");
    const HostColors& all = hostColors();
    constexpr double kText = 4.5;
    constexpr double kShape = 3;
    const std::pair<const char*, QColor> surfaces[] = {
        {"window", all.window}, {"popup", all.popup}, {"field", all.field}};
    for (const auto& [name, surface] : surfaces) {
        const auto row = [&, name = name, surface = surface](const char* front, const QColor& color,
                                                             double least) {
            QTest::addRow("%s on %s", front, name) << color << surface << least;
        };
        row("strong text", all.strongText, kText);
        row("text", all.text, kText);
        row("hint", all.hintText, kText);
        row("frame", all.frame, kShape);
        row("accent", all.accent, kShape);
    }
    QTest::newRow("weak text on window") << all.weakText << all.window << kText;
    QTest::newRow("selected text") << all.window << all.accent << kText;
}

void HostThemeTest::shouldHaveContrast()
{
    QFETCH(QColor, front);
    QFETCH(QColor, back);
    QFETCH(double, least);
    const double ratio = contrast(front, back);
    QVERIFY2(ratio >= least, qPrintable(QString::number(ratio)));
}

void HostThemeTest::shouldShowHintsAndPlaceholders()
{
    QWidget window;
    auto* line = new QLineEdit(&window);
    auto* box = new CComboBox(&window);
    box->setPlaceholderText(QString(4, QChar(0x2588)));
    box->resize(100, 24);
    auto* label = new QLabel(QStringLiteral("Hint"), &window);
    label->setProperty("hint", true);
    window.show();
    QCOMPARE(line->palette().color(QPalette::PlaceholderText), hostColors().hintText);
    QCOMPARE(shown(*box).pixelColor(20, 12), hostColors().hintText);
    QCOMPARE(label->palette().color(QPalette::WindowText), hostColors().hintText);
}

void HostThemeTest::shouldSelectTextInTheAccent()
{
    QLineEdit line(QString(20, QLatin1Char(' ')));
    line.resize(100, 24);
    line.selectAll();
    QCOMPARE(shown(line).pixelColor(20, 12), hostColors().accent);
    CIPLineEdit address;
    address.resize(172, 24);
    address.setText(QStringLiteral("10.0.0.1"));
    address.selectAll();
    const QImage all = shown(address);
    address.setSelection(0, 2);
    const QImage some = shown(address);
    const QPoint inGap(address.cursorRect(3).left() - 8, 12);
    QCOMPARE(all.pixelColor(inGap), hostColors().accent);
    QCOMPARE(some.pixelColor(inGap), hostColors().field);
    // The digits outside of the selection keep their colour.
    const QRect rest = address.rect().adjusted(address.cursorRect(3).left(), 2, -4, -2);
    address.setSelection(0, 0);
    QVERIFY(some.copy(rest) == shown(address).copy(rest));
}

TSA_TEST_MAIN(HostThemeTest)
#include "tst_hosttheme.moc"
