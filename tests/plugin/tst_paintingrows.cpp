#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TrueHost.h"

using Event = TrueHost::Event;

namespace {

/// How the host raises its events inside a question that painting asks.
enum class Way { OnTheGuiThread, ElsewhereThenEvents };

/// Counts the changes of rows while it is told that something paints.
class RowWatch final : public QObject
{
public:
    explicit RowWatch(QAbstractItemModel& model)
    {
        const auto count = [this] { changes += isPainting ? 1 : 0; };
        connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this, count);
        connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this, count);
        connect(&model, &QAbstractItemModel::rowsAboutToBeMoved, this, count);
        connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, count);
    }

    bool isPainting = false;
    int changes = 0;
};

/// A shown panel over two groups of one processor each.
struct PaintedPanel
{
    PaintedPanel()
        : host(shown.panel)
        , watch(shown.panel.model())
    {
        shown.host().selectionMode = 2;
        shown.host().selectedProcessors = {testId(1), testId(2)};
        // Painting asks on this thread. The work thread asks as well, so this stays as it is.
        shown.host().inside = [this](const QString& name) {
            if (QThread::currentThread() == QCoreApplication::instance()->thread() && m_raise
                && name == m_question && ++m_asked == m_nth)
                m_raise();
        };
    }

    /// Runs `raise` inside question number `nth` of that name, while all processors are selected
    /// and the rows are painted. Returns false when there was no such question.
    bool paint(const QString& question, int nth, const std::function<void()>& raise)
    {
        // The host is asked about selected rows only.
        shown.view()->selectAll();
        m_question = question;
        m_nth = nth;
        m_asked = 0;
        m_raise = raise;
        watch.isPainting = true;
        shown.view()->viewport()->repaint();
        watch.isPainting = false;
        m_raise = nullptr;
        return m_asked >= nth;
    }

    bool start(TrueHost::Start unit)
    {
        host.start({unit, TrueHost::Grouped});
        shown.view()->expandAll();
        return host.settle();
    }

    ShownPanel shown;
    TrueHost host;
    RowWatch watch;
    HostThread thread;

private:
    QString m_question;
    int m_nth = 0;
    int m_asked = 0;
    std::function<void()> m_raise;
};

} // namespace

Q_DECLARE_METATYPE(Way)

/// While a widget of the panel paints, it asks the host, which may raise events. Rows neither come
/// nor go then: they do so as soon as the painting is over.
class PaintingRowsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepRowsWhilePainting_data();
    void shouldKeepRowsWhilePainting();
    void shouldKeepAllOrdersRaisedWhilePainting();
};

void PaintingRowsTest::shouldKeepRowsWhilePainting_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<TrueHost::Event>("event");
    QTest::addColumn<Way>("way");
    for (const auto way : {Way::OnTheGuiThread, Way::ElsewhereThenEvents}) {
        for (const char* question :
             {"GetSelectionMode", "GetSelectedProcessors", "ShowProcessorMoreButton"}) {
            for (int event = 0; event < TrueHost::kEvents; ++event) {
                const auto raised = static_cast<Event>(event);
                QTest::addRow("%s inside %s, %s", qPrintable(TrueHost::name(raised)), question,
                              way == Way::OnTheGuiThread ? "GUI thread" : "another thread")
                    << QString::fromLatin1(question) << raised << way;
            }
        }
    }
}

void PaintingRowsTest::shouldKeepRowsWhilePainting()
{
    QFETCH(QString, question);
    QFETCH(TrueHost::Event, event);
    QFETCH(Way, way);
    PaintedPanel painted;
    // The second question of the multi-selection and the "More" buttons exclude each other.
    if (question == QLatin1String("ShowProcessorMoreButton"))
        painted.shown.host().selectionMode = 0;
    const bool adds = TrueHost::canHappen(TrueHost::Nothing, {event}) && event != TrueHost::Reset;
    int questions = 0;
    for (int nth = 1; nth <= 2; ++nth) {
        QVERIFY(painted.start(adds ? TrueHost::Nothing : TrueHost::Grouped));
        bool cameBack = true;
        const auto tell = [&] { painted.host.tell({event}); };
        const bool asked = painted.paint(question, nth, [&] {
            if (way == Way::OnTheGuiThread) {
                tell();
                return;
            }
            cameBack = comesBack(painted.thread.post(tell));
            QCoreApplication::sendPostedEvents(&painted.shown.panel.data());
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        });
        questions += asked ? 1 : 0;
        QVERIFY(cameBack);
        QCOMPARE(painted.watch.changes, 0);
        VERIFY_TREE_OF(painted.host);
    }
    QVERIFY(questions > 0);
}

void PaintingRowsTest::shouldKeepAllOrdersRaisedWhilePainting()
{
    PaintedPanel painted;
    int told = 0;
    for (int start = 0; start < TrueHost::kStarts; ++start) {
        for (int pair = 0; pair < TrueHost::kEvents * TrueHost::kEvents; ++pair) {
            const QVector<Event> events{static_cast<Event>(pair / TrueHost::kEvents),
                                        static_cast<Event>(pair % TrueHost::kEvents)};
            if (!TrueHost::canHappen(static_cast<TrueHost::Start>(start), events))
                continue;
            QVERIFY(painted.start(static_cast<TrueHost::Start>(start)));
            QVERIFY(painted.paint(QStringLiteral("GetSelectionMode"), 1,
                                  [&] { painted.host.tell(events); }));
            ++told;
            QVERIFY2(painted.watch.changes == 0, qPrintable(TrueHost::names(events)));
            VERIFY_TREE_OF(painted.host);
        }
    }
    QVERIFY(told > 100);
}

TSA_TEST_MAIN(PaintingRowsTest)
#include "tst_paintingrows.moc"
