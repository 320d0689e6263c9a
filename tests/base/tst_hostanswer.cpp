#include "base/HostAnswer.h"
#include "tests/support/FakeHandler.h"
#include "tests/support/TestRecords.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

#include <memory>

namespace {

constexpr quint32 kProcessorAdded = 18;

/// A panel with a handler of its own, as long as it lives.
class Panel final
{
public:
    Panel()
    {
        host->setProcessor(testProcessor(1));
        m_place = host;
        HandlerPlace::set(&m_place);
    }
    ~Panel() { HandlerPlace::set(nullptr); }
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    const std::shared_ptr<FakeHandler> host = std::make_shared<FakeHandler>();

private:
    std::shared_ptr<IAbstractControlInterface> m_place;
};

} // namespace

class HostAnswerTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldGiveTheRecordThatWasAskedFor();
    void shouldNotTakeAnotherRecord();
    void shouldNotAskTheNextPanelsHost();
};

void HostAnswerTest::shouldGiveTheRecordThatWasAskedFor()
{
    const Panel panel;
    const auto answer = askForProcessor(testId(1), kProcessorAdded);
    QVERIFY(answer.isGiven());
    QVERIFY(answer.record());
    QCOMPARE(answer.record()->id, testId(1));
    QVERIFY(answer.isCurrent());
}

void HostAnswerTest::shouldNotTakeAnotherRecord()
{
    const Panel panel;
    panel.host->answerProcessor = testProcessor(2);
    const auto answer = askForProcessor(testId(1), kProcessorAdded);
    QVERIFY(answer.isGiven());
    QVERIFY(!answer.record());
    QVERIFY(!answer.isUnknown());
}

/// Another thread may have looked whether its panel is there just before the GUI thread replaced
/// it.
void HostAnswerTest::shouldNotAskTheNextPanelsHost()
{
    auto first = std::make_unique<Panel>();
    const HandlerPlace::CPanelWatch watch;
    first.reset();
    const Panel next;
    QVERIFY(!askForProcessor(testId(1), kProcessorAdded, watch).isGiven());
    QVERIFY(!askForGroup(testId(1), kProcessorAdded, watch).isGiven());
    QCOMPARE(next.host->callNames(), QStringList());
}

TSA_TEST_MAIN(HostAnswerTest)
#include "tst_hostanswer.moc"
