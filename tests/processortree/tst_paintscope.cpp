#include "base/PaintScope.h"

#include "search/CompleterProcessorDelegate.h"
#include "search/ResultList.h"
#include "tests/processortree/WholeTree.h"
#include "tests/support/LogTrap.h"

#include <QPainter>
#include <QStandardItemModel>

#include <stdexcept>

namespace {

/// Returns whether a widget of the panel is painting at the moment.
class WatchedModel final : public QStandardItemModel
{
public:
    WatchedModel()
        : QStandardItemModel(1, 1)
    {
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        ++reads;
        unpainted += CPaintScope::isPainting() ? 0 : 1;
        return QStandardItemModel::data(index, role);
    }

    mutable int reads = 0;
    mutable int unpainted = 0;
};

/// Counts the questions to the host, and those that are asked during painting.
struct Questions
{
    explicit Questions(FakeHandler& host)
    {
        host.inside = [this](const QString&) {
            ++all;
            painting += CPaintScope::isPainting() ? 1 : 0;
        };
    }

    int all = 0;
    int painting = 0;
};

} // namespace

class PaintScopeTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldCountNestedScopes();
    void shouldEndWithAnException();
    void shouldHoldInEveryQuestionOfAPaintedTree();
    void shouldHoldInThePictureOfADrag();
    void shouldHoldWhereADelegatePaintsAlone();
    void shouldHoldWhereSearchResultsArePainted();
    void shouldPaintAgainAfterAHostThatThrows();
    void shouldEndInADelegateWhenTheHostThrows();
};

void PaintScopeTest::shouldCountNestedScopes()
{
    int ended = 0;
    CPaintScope::setOnEnded([&] {
        ++ended;
        QVERIFY(!CPaintScope::isPainting());
    });
    QVERIFY(!CPaintScope::isPainting());
    {
        const CPaintScope outer;
        {
            const CPaintScope inner;
            QVERIFY(CPaintScope::isPainting());
        }
        QVERIFY(CPaintScope::isPainting());
        QCOMPARE(ended, 0);
    }
    QVERIFY(!CPaintScope::isPainting());
    QCOMPARE(ended, 1);
    CPaintScope::setOnEnded({});
    {
        const CPaintScope scope;
    }
    QCOMPARE(ended, 1);
}

void PaintScopeTest::shouldEndWithAnException()
{
    const auto paint = [] {
        const CPaintScope scope;
        throw std::runtime_error("host");
    };
    QVERIFY_EXCEPTION_THROWN(paint(), std::runtime_error);
    QVERIFY(!CPaintScope::isPainting());
}

void PaintScopeTest::shouldHoldInEveryQuestionOfAPaintedTree()
{
    WholeTree tree;
    tree.view->selectAll();
    const Questions questions(tree.host());
    tree.viewport()->repaint();
    QVERIFY(questions.all > 0);
    QCOMPARE(questions.painting, questions.all);
    QVERIFY(!CPaintScope::isPainting());
}

void PaintScopeTest::shouldHoldInThePictureOfADrag()
{
    WholeTree tree;
    tree.view->selectAll();
    const Questions questions(tree.host());
    QVERIFY(!tree.viewport()->grab(tree.view->visualRect(tree.index(1))).isNull());
    QVERIFY(questions.all > 0);
    QCOMPARE(questions.painting, questions.all);
}

void PaintScopeTest::shouldHoldWhereADelegatePaintsAlone()
{
    WholeTree tree;
    const Questions questions(tree.host());
    QImage image(300, 42, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state |= QStyle::State_Selected;
    tree.view->itemDelegate()->paint(&painter, option, tree.index(1));
    QVERIFY(questions.all > 0);
    QCOMPARE(questions.painting, questions.all);
    QVERIFY(!CPaintScope::isPainting());
}

void PaintScopeTest::shouldHoldWhereSearchResultsArePainted()
{
    WatchedModel model;
    CCompleterProcessorDelegate delegate;
    CResultList list;
    list.setModel(&model);
    list.setItemDelegate(&delegate);
    list.resize(200, 100);
    list.show();
    list.grab();
    model.reads = 0;
    model.unpainted = 0;
    list.grab();
    QVERIFY(model.reads > 0);
    QCOMPARE(model.unpainted, 0);

    QImage image(300, 42, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    delegate.paint(&painter, option, model.index(0, 0));
    QCOMPARE(model.unpainted, 0);
}

void PaintScopeTest::shouldPaintAgainAfterAHostThatThrows()
{
    WholeTree tree;
    tree.view->selectAll();
    const QImage before = tree.viewport()->grab().toImage();
    const LogTrap log;
    tree.host().inside = [](const QString&) { throw std::runtime_error("host"); };
    tree.viewport()->repaint();
    QVERIFY(!log.messages().isEmpty());
    QVERIFY(!CPaintScope::isPainting());
    const Questions questions(tree.host());
    tree.viewport()->repaint();
    QVERIFY(questions.all > 0);
    QCOMPARE(tree.viewport()->grab().toImage(), before);
}

void PaintScopeTest::shouldEndInADelegateWhenTheHostThrows()
{
    WholeTree tree;
    tree.host().inside = [](const QString&) { throw std::runtime_error("host"); };
    QImage image(300, 42, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state |= QStyle::State_Selected;
    const LogTrap log;
    tree.view->itemDelegate()->paint(&painter, option, tree.index(1));
    QCOMPARE(log.messages().size(), 1);
    QVERIFY(!CPaintScope::isPainting());
    tree.host().inside = nullptr;
}

TSA_TEST_MAIN(PaintScopeTest)
#include "tst_paintscope.moc"
