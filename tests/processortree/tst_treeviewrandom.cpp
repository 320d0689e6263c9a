#include "tests/processortree/WholeTree.h"
#include "tests/support/ReferenceTree.h"
#include "tests/support/Seed.h"
#include "tests/support/TreeDump.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QRandomGenerator>

namespace {

constexpr int kSequences = 200;
constexpr int kSteps = 60;
constexpr quint32 kProcessors = 9;
constexpr quint32 kFirstGroup = 101;
constexpr quint32 kGroups = 3;

/// A host that changes its project, and a user who works on the tree meanwhile.
class Sequence final
{
public:
    Sequence(WholeTree& tree, quint32 seed)
        : m_tree(tree)
        , m_random(seed)
    {
        m_project = randomProject();
        reset();
    }

    /// One step, by its name.
    QString step()
    {
        m_tree.host().memberships.clear();
        switch (below(17)) {
        case 0:
            return below(4) == 0 ? reset() : hover();
        case 1:
        case 2:
            return append();
        case 3:
            return appendSeveral();
        case 4:
            return remove();
        case 5:
            return appendGroup();
        case 6:
            return update();
        case 7:
        case 8:
        case 9:
            return select();
        case 10:
            return expand();
        case 11:
        case 12:
            return dragAndDrop();
        case 13:
            return pressKey();
        case 14:
            return edit();
        case 15:
            m_tree.view->grab();
            return QStringLiteral("paint");
        default:
            return hover();
        }
    }

    /// Returns what is wrong at the moment; empty if nothing is.
    QString wrong()
    {
        if (m_tree.panel.dump() != m_reference.dump())
            return m_tree.panel.dump() + QStringLiteral("\n  instead of\n  ") + m_reference.dump();
        if (describeTree(m_tree.model()) != m_reference.describe())
            return QStringLiteral("other records");
        const QModelIndexList selected = m_tree.selection()->selectedIndexes();
        QModelIndexList shown = selected;
        shown << m_tree.view->currentIndex() << m_tree.view->hoveredIndex();
        for (const QModelIndex& index : qAsConst(shown)) {
            if (index.isValid() && !isInTree(index))
                return QStringLiteral("a row that is gone");
        }
        return {};
    }

private:
    bool isInTree(const QModelIndex& index)
    {
        return index.model() == &m_tree.model()
               && index.row() < m_tree.model().rowCount(index.parent())
               && m_tree.model().itemFromIndex(index);
    }

    quint32 below(quint32 limit) { return m_random.bounded(limit); }
    QUuid processorId() { return testId(1 + below(kProcessors)); }
    QUuid groupId() { return testId(kFirstGroup + below(kGroups)); }
    QUuid anyId() { return below(5) == 0 ? groupId() : processorId(); }

    QModelIndex anyRow()
    {
        const QStandardItem* item =
            below(6) == 0 ? m_tree.model().item(0) : m_tree.model().getItem(anyId());
        return item ? item->index() : QModelIndex();
    }

    QPoint anyPlace()
    {
        const QSize size = m_tree.viewport()->size();
        return {static_cast<int>(below(static_cast<quint32>(size.width()))),
                static_cast<int>(below(static_cast<quint32>(size.height())))};
    }

    ProcessorNode randomProcessor(quint32 n)
    {
        ProcessorNode processor =
            testProcessor(n, below(3) == 0 ? 0 : kFirstGroup + below(kGroups));
        processor.name = QStringLiteral("P%1").arg(below(500));
        processor.reachedByIp = below(2) == 0;
        processor.ipAddress = 0x0A000001 + below(4);
        return processor;
    }

    ReferenceProject randomProject()
    {
        ReferenceProject project;
        for (quint32 n = 0; n < kGroups; ++n) {
            if (below(3) != 0)
                project.groups.append(testGroup(kFirstGroup + n));
        }
        for (quint32 n = 1; n <= kProcessors; ++n) {
            if (below(3) != 0)
                project.processors.append(randomProcessor(n));
        }
        return project;
    }

    void raise(quint32 event, const QList<QUuid>& ids)
    {
        m_tree.host().setProject(m_project.groups, m_project.processors);
        m_reference.apply(event, ids, m_project);
        if (event == 16)
            m_tree.panel.notify(event);
        else if (event == 19 || event == 21)
            m_tree.panel.notify<QList<QUuid>>(event, ids);
        else
            m_tree.panel.notify<QUuid>(event, ids.first());
    }

    QString reset()
    {
        m_project = randomProject();
        raise(16, {});
        m_tree.view->expandAll();
        return QStringLiteral("reset");
    }

    ProcessorNode change()
    {
        ProcessorNode processor = randomProcessor(1 + below(kProcessors));
        for (ProcessorNode& known : m_project.processors) {
            if (known.id == processor.id)
                return known = processor;
        }
        m_project.processors.append(processor);
        return processor;
    }

    QString append()
    {
        const QUuid id = change().id;
        if (m_reference.row(id))
            return QStringLiteral("nothing");
        raise(18, {id});
        return QStringLiteral("append");
    }

    QString appendSeveral()
    {
        QList<QUuid> ids;
        for (int i = 0; i < 2; ++i) {
            const QUuid id = change().id;
            if (!m_reference.row(id) && !ids.contains(id))
                ids.append(id);
        }
        raise(19, ids);
        return QStringLiteral("append several");
    }

    QString remove()
    {
        const QList<QUuid> ids{anyId(), anyId()};
        const bool several = below(2) == 0;
        raise(several ? 21 : 20, several ? ids : ids.mid(0, 1));
        return QStringLiteral("remove");
    }

    QString appendGroup()
    {
        const QUuid id = groupId();
        if (m_reference.row(id))
            return QStringLiteral("nothing");
        if (m_project.group(id).id.isNull())
            m_project.groups.append(testGroup(id.data1));
        raise(17, {id});
        return QStringLiteral("append a group");
    }

    QString update()
    {
        raise(25, {change().id});
        return QStringLiteral("update");
    }

    QString select()
    {
        const QModelIndex row = anyRow();
        if (!row.isValid())
            return QStringLiteral("nothing");
        static constexpr Qt::KeyboardModifier modifiers[] = {Qt::NoModifier, Qt::ControlModifier,
                                                             Qt::ShiftModifier};
        m_tree.view->scrollTo(row);
        const QRect place = m_tree.view->visualRect(row);
        QTest::mouseClick(m_tree.viewport(), Qt::LeftButton, modifiers[below(3)],
                          {place.left() + 60, place.center().y()});
        return QStringLiteral("click");
    }

    QString expand()
    {
        const QModelIndex row = anyRow();
        m_tree.view->setExpanded(row, below(3) != 0);
        return QStringLiteral("expand");
    }

    QString hover()
    {
        QTest::mouseMove(m_tree.viewport(), anyPlace());
        QHoverEvent event(QEvent::HoverMove, anyPlace(), anyPlace());
        QApplication::sendEvent(m_tree.viewport(), &event);
        return QStringLiteral("hover");
    }

    /// The reference follows what the host is told: it knows the moves of the model itself from
    /// tests of their own.
    QString dragAndDrop()
    {
        const QPoint place = anyPlace();
        const auto data = std::unique_ptr<QMimeData>(
            m_tree.model().mimeData(m_tree.selection()->selectedIndexes()));
        QDragEnterEvent enter(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.viewport(), &enter);
        QDragMoveEvent over(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.viewport(), &over);
        if (below(4) == 0) {
            QDragLeaveEvent leave;
            QApplication::sendEvent(m_tree.viewport(), &leave);
            return QStringLiteral("drag away");
        }
        QDropEvent drop(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.viewport(), &drop);
        for (const FakeHandler::Membership& move : qAsConst(m_tree.host().memberships))
            m_reference.moveProcessors(move.processors, move.groupId);
        return QStringLiteral("drop");
    }

    QString pressKey()
    {
        static constexpr Qt::Key keys[] = {Qt::Key_Up,       Qt::Key_Down, Qt::Key_Left,
                                           Qt::Key_Right,    Qt::Key_Home, Qt::Key_End,
                                           Qt::Key_PageDown, Qt::Key_Space};
        QTest::keyClick(m_tree.view, keys[below(8)]);
        if (below(8) == 0)
            QTest::keyClick(m_tree.view, Qt::Key_A, Qt::ControlModifier);
        return QStringLiteral("key");
    }

    /// The field stays open for some steps, unless the host takes its row away.
    QString edit()
    {
        QLineEdit* field = m_tree.editor();
        if (!field) {
            m_tree.view->RenameSelection();
            return QStringLiteral("edit");
        }
        QTest::keyClick(field, Qt::Key_Escape);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return QStringLiteral("cancel");
    }

    WholeTree& m_tree;
    QRandomGenerator m_random;
    ReferenceProject m_project;
    ReferenceTree m_reference;
};

} // namespace

class TreeViewRandomTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAgreeWithTheReference();
};

void TreeViewRandomTest::shouldAgreeWithTheReference()
{
    WholeTree tree;
    const quint32 first = firstSeed();
    qInfo("TSA_SEED=%u and the %d after it", first, kSequences - 1);
    for (quint32 n = 0; n < kSequences; ++n) {
        Sequence sequence(tree, first + n);
        for (int step = 0; step < kSteps; ++step) {
            const QString name = sequence.step();
            const QString wrong = sequence.wrong();
            QVERIFY2(wrong.isEmpty(), qPrintable(QStringLiteral("TSA_SEED=%1 step %2, %3:\n  %4")
                                                     .arg(QString::number(first + n),
                                                          QString::number(step), name, wrong)));
        }
        QCoreApplication::processEvents();
        tree.host().clearCalls();
        tree.host().selections.clear();
    }
}

TSA_TEST_MAIN(TreeViewRandomTest)
#include "tst_treeviewrandom.moc"
