#include "host/common/SoftwareName.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/MessageBox.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddBothIpDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/IPManageDialog.h"
#include "ipmanage/ModifyIPDialog.h"
#include "plugin/NetUsbTipDlg.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/Chinese.h"
#include "tests/support/DialogDriver.h"

#include <QAbstractSpinBox>
#include <QChildEvent>
#include <QDrag>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QToolButton>
#include <QWindow>

#include <functional>
#include <memory>

namespace {

constexpr quint32 kGroup = 100;

qreal wantedScale()
{
    return qEnvironmentVariableIsSet("QT_SCALE_FACTOR") ? qgetenv("QT_SCALE_FACTOR").toDouble() : 1;
}

/// Makes the panel show everything that it can.
void fill(ShownPanel& shown)
{
    FakeHandler& host = shown.host();
    host.showProcessorMoreButton = true;
    host.showNodeMoreButton = true;
    host.lanUsbMode = true;
    host.lanUsbIps = {0xC0A8000B};
    host.ipManagementAvailable = true;
    host.setProject({testGroup(kGroup)},
                    {testIpProcessor(1, 0xC0A8000B, kGroup), testProcessor(2, kGroup),
                     testProcessor(3), testProcessor(4)});
    shown.panel.notify(16);
    shown.area().onDetectStrategyChanged(2);
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    shown.area().onLANUSBGetProcessorIP();
    QCoreApplication::processEvents();
}

/// Returns the rows from top to bottom.
QList<QModelIndex> rowsOf(ShownPanel& shown)
{
    QList<QModelIndex> rows;
    for (const quint32 n : {0U, kGroup, 1U, 2U, 3U, 4U})
        rows.append(shown.panel.index(n));
    return rows;
}

/// Returns what is needed to show all of the text of `widget`; nothing for other widgets.
QSize neededSize(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (label->text().isEmpty())
            return {};
        const QFontMetrics metrics = label->fontMetrics();
        return label->wordWrap()
                   ? QSize(0, label->heightForWidth(label->width()))
                   : QSize(metrics.horizontalAdvance(label->text()), metrics.height());
    }
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const auto* tool = qobject_cast<const QToolButton*>(&widget);
    if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull())
        return {};
    if ((button && !button->text().isEmpty()) || qobject_cast<const QLineEdit*>(&widget)
        || qobject_cast<const QAbstractSpinBox*>(&widget) || qobject_cast<const QComboBox*>(&widget)
        || qobject_cast<const QHeaderView*>(&widget))
        return {button ? widget.sizeHint().width() : 0, widget.sizeHint().height()};
    return {};
}

/// Returns the widgets of `window` that are too small for their texts.
QStringList cutTexts(const QWidget& window)
{
    QStringList cut;
    const auto all = window.findChildren<QWidget*>();
    for (const QWidget* widget : all) {
        const QSize needed = neededSize(*widget);
        if (!widget->isVisibleTo(&window)
            || (widget->width() >= needed.width() && widget->height() >= needed.height()))
            continue;
        cut.append(QStringLiteral("%1 \"%2\" has %3x%4 of %5x%6")
                       .arg(QLatin1String(widget->metaObject()->className()),
                            widget->property("text").toString())
                       .arg(widget->width())
                       .arg(widget->height())
                       .arg(needed.width())
                       .arg(needed.height()));
    }
    return cut;
}

/// Returns the part of `after` that differs from `before`, in pixels of the display.
QRect difference(const QImage& before, const QImage& after)
{
    QRect found;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y))
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

/// Keeps the picture of the drag that begins in a view.
class DragPicture final : public QObject
{
public:
    explicit DragPicture(QObject& view) { view.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ChildAdded) {
            // It is no drag yet.
            const QPointer<QObject> child = static_cast<QChildEvent*>(event)->child();
            QMetaObject::invokeMethod(
                this,
                [this, child] {
                    if (const auto* drag = qobject_cast<QDrag*>(child.data()))
                        picture = drag->pixmap();
                },
                Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

    QPixmap picture;
};

} // namespace

/// The panel and its dialogs at the scale of the display: 100 per cent, or what QT_SCALE_FACTOR
/// says.
class ScalingTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldStackItsPartsWithoutGaps();
    void shouldShowWholeTexts_data() { addLanguages(); }
    void shouldShowWholeTexts();
    void shouldShowWholeTextsInDialogs_data() { addLanguages(); }
    void shouldShowWholeTextsInDialogs();
    void shouldSelectTheRowThatIsClicked();
    void shouldDragASharpPicture();

private:
    static void addLanguages();
};

void ScalingTest::initTestCase()
{
    ApplyHostTheme(*qApp);
    set_custom_software_name(QStringLiteral("Stage Control"));
    // The resources are there as soon as there is a panel.
    const ShownPanel shown;
    QCOMPARE(shown.window.devicePixelRatioF(), wantedScale());
}

void ScalingTest::addLanguages()
{
    QTest::addColumn<bool>("isChinese");
    QTest::newRow("English") << false;
    QTest::newRow("Chinese") << true;
}

/// All sizes are those of 100 per cent, whatever the scale.
void ScalingTest::shouldStackItsPartsWithoutGaps()
{
    ShownPanel shown;
    fill(shown);
    QCOMPARE(shown.area().width(), 220);
    int bottom = 11 - 8;
    const QList<QWidget*> parts{shown.detection(), shown.ipManagement(), shown.selector(),
                                shown.label()};
    for (const QWidget* part : parts) {
        QVERIFY(part->isVisible());
        QCOMPARE(part->x(), 10);
        QCOMPARE(part->y(), bottom + 8);
        bottom = part->y() + part->height();
    }
    const QPoint end = shown.view()->mapTo(&shown.area(), shown.view()->rect().bottomRight());
    QCOMPARE(end, shown.area().rect().bottomRight());
}

void ScalingTest::shouldShowWholeTexts()
{
    QFETCH(bool, isChinese);
    ShownPanel shown;
    fill(shown);
    const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
    QCoreApplication::processEvents();
    QCOMPARE(cutTexts(shown.area()).join(QLatin1Char('\n')), QString());
    const QFontMetrics metrics(shown.view()->font());
    const QList<QModelIndex> rows = rowsOf(shown);
    for (const QModelIndex& row : rows) {
        QVERIFY(shown.view()->visualRect(row).height() >= 32);
        QVERIFY(metrics.height() <= 19);
    }
}

void ScalingTest::shouldShowWholeTextsInDialogs()
{
    QFETCH(bool, isChinese);
    TestPanel panel;
    panel.host().ipList = QStringList(QStringLiteral("192.168.100.200(Left wing)"));
    const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
    QStringList cut;
    int seen = 0;
    const auto look = [&](QDialog& dialog) {
        DialogDriver driver;
        driver.then([&](QWidget& shown) {
            ++seen;
            cut += cutTexts(shown);
            QTest::keyClick(&shown, Qt::Key_Escape);
        });
        dialog.exec();
    };
    for (const bool forList : {true, false}) {
        CAddSingleIPDialog single(forList, nullptr);
        look(single);
        CAddBothIpDialog both(forList, nullptr);
        look(both);
        CAddBatchIPDialog batch(forList, nullptr);
        look(batch);
    }
    CModifyIPDialog change(0, QStringLiteral("Left wing"), nullptr);
    look(change);
    CIPManageDialog management;
    look(management);
    CNetUsbTipDlg warning({{"192.168.100.200", "Stage 1", "Sender S4"}}, nullptr);
    look(warning);
    QCOMPARE(cut.join(QLatin1Char('\n')), QString());
    QCOMPARE(seen, 9);
}

void ScalingTest::shouldSelectTheRowThatIsClicked()
{
    ShownPanel shown;
    fill(shown);
    CProcessorTreeView& view = *shown.view();
    QItemSelectionModel& selection = *view.selectionModel();
    const auto paint = [&] {
        QCoreApplication::processEvents();
        return view.viewport()->grab().toImage();
    };
    // Processors: what is selected with a group are its processors.
    const QList<QModelIndex> rows = rowsOf(shown).mid(2);
    int bottom = view.visualRect(shown.panel.index(kGroup)).bottom() + 1;
    for (const QModelIndex& row : rows) {
        const QRect place = view.visualRect(row);
        QCOMPARE(place.top(), bottom);
        bottom = place.bottom() + 1;
        selection.clearSelection();
        selection.clearCurrentIndex();
        const QImage before = paint();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
        QCOMPARE(view.currentIndex(), row);
        const QRect changed = difference(before, paint());
        const QRectF painted(QPointF(changed.topLeft()) / wantedScale(),
                             QSizeF(changed.size()) / wantedScale());
        QVERIFY(QRectF(place.adjusted(-place.left(), -1, 1, 1)).contains(painted));
        QVERIFY(painted.height() >= place.height() - 2);
    }
}

void ScalingTest::shouldDragASharpPicture()
{
    ShownPanel shown;
    fill(shown);
    CProcessorTreeView& view = *shown.view();
    const QModelIndex row = shown.panel.index(3);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(row).center());
    DragPicture drag(view);
    QWindow* window = shown.window.windowHandle();
    const QPoint from = view.viewport()->mapTo(&shown.window, view.visualRect(row).center());
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
    for (const int distance : {4, 8, 16})
        QTest::mouseMove(window, from + QPoint(distance, distance));
    QTRY_VERIFY(!drag.picture.isNull());
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, from);
    QCOMPARE(drag.picture.devicePixelRatioF(), wantedScale());
    const QSizeF size = QSizeF(drag.picture.size()) / wantedScale();
    QVERIFY(qAbs(size.height() - view.visualRect(row).height()) < 1);
    QVERIFY(size.width() > 150);
}

TSA_TEST_MAIN(ScalingTest)
#include "tst_scaling.moc"
