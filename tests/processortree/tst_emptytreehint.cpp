#include "host/widgets/HostTheme.h"
#include "tests/processortree/WholeTree.h"
#include "tests/support/Chinese.h"
#include "tests/support/Contrast.h"

#include <QAccessible>
#include <QApplication>

/// What a tree without processors says.
class EmptyTreeHintTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldSayThatThereAreNoProcessors();
    void shouldGoWhenAProcessorArrives_data();
    void shouldGoWhenAProcessorArrives();
    void shouldSayNothingBeforeTheTreeIsFilled();
    void shouldBeReadable();
    void shouldStandInTheMiddle();
    void shouldBeElidedInANarrowTree();
    void shouldFollowTheLanguage();
};

namespace {

const QString kHint = QStringLiteral("No processors yet");

struct EmptyTree : WholeTree
{
    EmptyTree()
    {
        host().setProject({}, {});
        model().reset();
    }

    /// Returns where something is painted below the last row; null for nothing.
    QRect painted(quint32 lastRow = 0)
    {
        image = viewport()->grab().toImage();
        const QModelIndex last = lastRow == 0 ? root() : index(lastRow);
        QRect place;
        for (int y = view->visualRect(last).bottom() + 1; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) != hostColors().window)
                    place |= QRect(x, y, 1, 1);
            }
        }
        return place;
    }

    QString heard() const
    {
        return QAccessible::queryAccessibleInterface(view)->text(QAccessible::Description);
    }

    QImage image;
};

} // namespace

void EmptyTreeHintTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void EmptyTreeHintTest::shouldSayThatThereAreNoProcessors()
{
    EmptyTree tree;
    QVERIFY(!tree.painted().isNull());
    QCOMPARE(tree.heard(), kHint);
    tree.model().AppendGroup(testGroup(12));
    QVERIFY(!tree.painted(12).isNull());
    tree.model().AppendProcessor(testProcessor(1));
    QCOMPARE(tree.heard(), QString());
    tree.model().removeNode(testId(1));
    QVERIFY(!tree.painted(12).isNull());
    QCOMPARE(tree.heard(), kHint);
}

void EmptyTreeHintTest::shouldGoWhenAProcessorArrives_data()
{
    QTest::addColumn<quint32>("group");
    QTest::addColumn<bool>("isClosed");
    QTest::newRow("outside of groups") << 0U << false;
    QTest::newRow("in a group") << 12U << false;
    QTest::newRow("in a group that is closed") << 12U << true;
}

void EmptyTreeHintTest::shouldGoWhenAProcessorArrives()
{
    QFETCH(const quint32, group);
    QFETCH(const bool, isClosed);
    EmptyTree tree;
    tree.model().AppendGroup(testGroup(12));
    QVERIFY(!tree.painted(12).isNull());
    tree.model().AppendProcessor(testProcessor(1, group));
    if (isClosed)
        tree.view->collapse(tree.index(12));
    QVERIFY(tree.painted(isClosed ? 12 : 1).isNull());
    QCOMPARE(tree.heard(), QString());
}

void EmptyTreeHintTest::shouldSayNothingBeforeTheTreeIsFilled()
{
    EmptyTree tree;
    tree.model().clearToRoot();
    QVERIFY(tree.painted().isNull());
    QCOMPARE(tree.heard(), QString());
    int looks = 0;
    tree.host().inside = [&](const QString& name) {
        if (name != QLatin1String("GetAllProcessorNodes"))
            return;
        ++looks;
        QVERIFY(tree.painted().isNull());
    };
    tree.model().reset();
    QVERIFY(looks > 0);
    QVERIFY(!tree.painted().isNull());
    // The tree is filled anew, and nobody knows with what.
    tree.model().reset();
    QCOMPARE(looks, 2);
    tree.host().inside = nullptr;
    QCOMPARE(tree.heard(), kHint);
}

void EmptyTreeHintTest::shouldBeReadable()
{
    EmptyTree tree;
    const QRect place = tree.painted();
    double best = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            best = qMax(best, contrast(tree.image.pixelColor(x, y), hostColors().window));
    }
    QVERIFY2(best >= 4.5, qPrintable(QString::number(best)));
    QVERIFY2(best < contrast(hostColors().text, hostColors().window) - 1,
             qPrintable(QString::number(best)));
}

/// Of the controls, whose right edge is 10 pixels before the tree's.
void EmptyTreeHintTest::shouldStandInTheMiddle()
{
    EmptyTree tree;
    const QRect place = tree.painted();
    QVERIFY(qAbs(place.center().x() - (tree.viewport()->width() - 10) / 2) <= 2);
    const int top = tree.view->visualRect(tree.root()).bottom();
    QVERIFY(qAbs(place.center().y() - (top + tree.viewport()->height()) / 2) <= 4);
}

void EmptyTreeHintTest::shouldBeElidedInANarrowTree()
{
    EmptyTree tree;
    const QRect whole = tree.painted();
    for (const int width : {100, 80, 40}) {
        tree.view->resize(width, 300);
        const QRect place = tree.painted();
        QVERIFY(place.width() < whole.width());
        QVERIFY(place.isNull() || place.left() >= 9);
        QVERIFY(place.isNull() || place.right() <= tree.viewport()->width() - 19);
    }
    tree.view->resize(300, 40);
    QVERIFY(tree.painted().isNull());
}

void EmptyTreeHintTest::shouldFollowTheLanguage()
{
    EmptyTree tree;
    const QRect english = tree.painted();
    {
        const Chinese chinese;
        QVERIFY(chinese.isLoaded());
        QCoreApplication::processEvents();
        QCOMPARE(tree.heard(), QStringLiteral("暂无处理器"));
        QVERIFY(tree.painted() != english);
    }
    QCoreApplication::processEvents();
    QCOMPARE(tree.heard(), kHint);
    QCOMPARE(tree.painted(), english);
}

TSA_TEST_MAIN(EmptyTreeHintTest)

#include "tst_emptytreehint.moc"
