#include "Interface/ObserverPattern"

#include "Interface/DeviceSetInfo.h"
#include "host/common/WorkThread.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"

#include <QList>
#include <QSemaphore>
#include <QStringList>
#include <QTest>
#include <QUuid>

#include <functional>
#include <thread>

namespace {
/// Runs the test's code for each notification and records the event numbers.
class Observer final : public CObserver
{
public:
    explicit Observer(std::function<void(CSubject&)> action = {})
        : m_action(std::move(action))
    {
    }

    void Update(CSubject* subject) override
    {
        numbers.append(subject->GetEvent());
        if (m_action)
            m_action(*subject);
    }

    QList<quint32> numbers;

private:
    std::function<void(CSubject&)> m_action;
};

/// Returns the log records as "function file:line message".
QStringList lines(const LogTrap& log)
{
    QStringList lines;
    for (const LogRecord& record : log.records()) {
        lines.append(
            QStringLiteral("%1 %2:%3 %4")
                .arg(QString::fromStdString(record.function), QString::fromStdString(record.file))
                .arg(record.line)
                .arg(QString::fromStdString(record.message)));
    }
    return lines;
}

const QStringList kWrongThread{QStringLiteral(
    "GetArgument Interface/ObserverPattern:126 CSubject::GetArgument:can not get argument from "
    "another thread,must call this function from Update thread!")};
const QStringList kWrongType{QStringLiteral(
    "GetArgument Interface/ObserverPattern:133 CSubject::GetArgument:bad type cast!")};

} // namespace

class ObserverPatternTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldNotifyAttachedObserversInOrder();
    void shouldAttachEachObserverOnce();
    void shouldIgnoreUnknownObservers();
    void shouldAllowAttachAndDetachDuringANotification();
    void shouldReturnTheArgument();
    void shouldReturnACopyOfTheArgument();
    void shouldReturnTheArgumentsTypeAndThread();
    void shouldRestoreTheOuterEventAfterANestedOne();
    void shouldResetTheEventAfterANotification();
    void shouldRefuseAnotherThread();
    void shouldRefuseAJobAfterTheNotification();
    void shouldRefuseAnotherType_data();
    void shouldRefuseAnotherType();
    void shouldRefuseBeforeTheFirstNotification();
    void shouldReturnValueInitialisedResults();
};

void ObserverPatternTest::shouldNotifyAttachedObserversInOrder()
{
    QStringList order;
    Observer first([&](CSubject&) { order.append(QStringLiteral("first")); });
    Observer second([&](CSubject&) { order.append(QStringLiteral("second")); });
    CSubject subject;
    subject.Attach(&first);
    subject.Attach(&second);
    subject.Notify(16);
    subject.Notify(40);
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("first second first second"));
    QCOMPARE(first.numbers, (QList<quint32>{16, 40}));
    subject.Detach(&first);
    subject.Notify(17);
    QCOMPARE(first.numbers, (QList<quint32>{16, 40}));
    QCOMPARE(second.numbers, (QList<quint32>{16, 40, 17}));
}

void ObserverPatternTest::shouldAttachEachObserverOnce()
{
    Observer observer;
    CSubject subject;
    subject.Attach(&observer);
    subject.Attach(&observer);
    subject.Attach(nullptr);
    subject.Notify(1);
    QCOMPARE(observer.numbers, QList<quint32>{1});
    subject.Detach(&observer);
    subject.Notify(2);
    QCOMPARE(observer.numbers, QList<quint32>{1});
}

void ObserverPatternTest::shouldIgnoreUnknownObservers()
{
    Observer known;
    Observer unknown;
    CSubject subject;
    subject.Notify(1);
    subject.Attach(&known);
    subject.Detach(&unknown);
    subject.Detach(nullptr);
    subject.Notify(2);
    QCOMPARE(known.numbers, QList<quint32>{2});
    QVERIFY(unknown.numbers.isEmpty());
}

void ObserverPatternTest::shouldAllowAttachAndDetachDuringANotification()
{
    Observer late;
    Observer early([&](CSubject& subject) {
        subject.Detach(&early);
        subject.Attach(&late);
    });
    CSubject subject;
    subject.Attach(&early);
    subject.Notify(1);
    subject.Notify(2);
    QCOMPARE(early.numbers, QList<quint32>{1});
    QCOMPARE(late.numbers, QList<quint32>{2});
}

void ObserverPatternTest::shouldReturnTheArgument()
{
    const LogTrap log;
    const QUuid id = QUuid::createUuid();
    int taken = 0;
    Observer observer([&](CSubject& subject) {
        if (subject.GetEvent() == 26) {
            const auto [uuid, record] = subject.GetArgument<QUuid, SPrjProcessor>();
            QCOMPARE(uuid, id);
            QCOMPARE(record.name, QStringLiteral("Left"));
        } else if (subject.GetEvent() == 19) {
            QCOMPARE(std::get<0>(subject.GetArgument<QList<QUuid>>()), (QList<QUuid>{id, id}));
        } else {
            QVERIFY(subject.GetArgument<>() == std::tuple<>());
        }
        ++taken;
    });
    CSubject subject;
    subject.Attach(&observer);
    subject.Notify<QUuid, SPrjProcessor>(26, id, {id, QStringLiteral("Left")});
    subject.Notify<QList<QUuid>>(19, {id, id});
    subject.Notify(16);
    QCOMPARE(taken, 3);
    QCOMPARE(lines(log), QStringList());
}

void ObserverPatternTest::shouldReturnACopyOfTheArgument()
{
    QList<int> sizes;
    Observer observer([&](CSubject& subject) {
        auto argument = subject.GetArgument<QList<int>>();
        std::get<0>(argument).clear();
        sizes.append(std::get<0>(subject.GetArgument<QList<int>>()).size());
    });
    CSubject subject;
    subject.Attach(&observer);
    subject.Notify<QList<int>>(1, {1, 2, 3});
    QCOMPARE(sizes, QList<int>{3});
}

void ObserverPatternTest::shouldReturnTheArgumentsTypeAndThread()
{
    std::size_t type = 0;
    bool sameThread = false;
    Observer observer([&](CSubject& subject) {
        type = subject.GetArgumentType();
        sameThread = pthread_equal(subject.GetUpdateThread(), pthread_self()) != 0;
    });
    CSubject subject;
    subject.Attach(&observer);
    std::thread([&] { subject.Notify<QUuid>(17, QUuid()); }).join();
    QCOMPARE(type, typeid(std::tuple<QUuid>).hash_code());
    QVERIFY(sameThread);
}

void ObserverPatternTest::shouldRestoreTheOuterEventAfterANestedOne()
{
    const LogTrap log;
    QStringList seen;
    const auto take = [&](CSubject& subject) {
        seen.append(QStringLiteral("%1:%2")
                        .arg(subject.GetEvent())
                        .arg(std::get<0>(subject.GetArgument<int>())));
    };
    Observer first([&](CSubject& subject) {
        take(subject);
        if (subject.GetEvent() < 3) {
            subject.Notify<int>(subject.GetEvent() + 1, 10 * static_cast<int>(subject.GetEvent()));
            take(subject);
        }
    });
    Observer second(take);
    CSubject subject;
    subject.Attach(&first);
    subject.Attach(&second);
    subject.Notify<int>(1, 5);
    QCOMPARE(seen.join(QLatin1Char(' ')), QStringLiteral("1:5 2:10 3:20 3:20 2:10 2:10 1:5 1:5"));
    QCOMPARE(lines(log), QStringList());
}

void ObserverPatternTest::shouldResetTheEventAfterANotification()
{
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = held;
    CSubject subject;
    subject.Notify<std::shared_ptr<int>>(1, std::move(held));
    subject.Notify<int>(2, 5);
    QVERIFY(subject.GetEvent() != 1);
    QVERIFY(watch.expired());
}

void ObserverPatternTest::shouldRefuseAnotherThread()
{
    const LogTrap log;
    const QUuid id = QUuid::createUuid();
    Observer observer([&](CSubject& subject) {
        std::thread([&] { QVERIFY(std::get<0>(subject.GetArgument<QUuid>()).isNull()); }).join();
        QCOMPARE(std::get<0>(subject.GetArgument<QUuid>()), id);
    });
    CSubject subject;
    subject.Attach(&observer);
    subject.Notify<QUuid>(17, id);
    QCOMPARE(observer.numbers.size(), 1);
    QCOMPARE(lines(log), kWrongThread);
}

void ObserverPatternTest::shouldRefuseAJobAfterTheNotification()
{
    const LogTrap log;
    QSemaphore notified;
    QSemaphore done;
    QUuid taken = QUuid::createUuid();
    CSubject subject;
    CWorkThread worker;
    worker.start();
    Observer observer([&](CSubject& notifying) {
        CSubject* kept = &notifying;
        worker.AppendEvent({39,
                            [&, kept] {
                                notified.acquire();
                                taken = std::get<0>(kept->GetArgument<QUuid>());
                                done.release();
                            }},
                           false);
    });
    subject.Attach(&observer);
    subject.Notify<QUuid>(39, QUuid::createUuid());
    notified.release();
    QVERIFY(done.tryAcquire(1, 30000));
    QVERIFY(taken.isNull());
    QCOMPARE(lines(log), kWrongThread);
}

void ObserverPatternTest::shouldRefuseAnotherType_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("another type") << 0;
    QTest::newRow("fewer") << 1;
    QTest::newRow("more") << 2;
    QTest::newRow("convertible") << 3;
    QTest::newRow("reference") << 4;
}

void ObserverPatternTest::shouldRefuseAnotherType()
{
    const LogTrap log;
    QFETCH(int, kind);
    Observer observer([&](CSubject& subject) {
        switch (kind) {
        case 0:
            QVERIFY(std::get<0>(subject.GetArgument<QUuid>()).isNull());
            break;
        case 1:
            QVERIFY(subject.GetArgument<>() == std::tuple<>());
            break;
        case 2:
            QVERIFY((subject.GetArgument<int, int>() == std::tuple<int, int>(0, 0)));
            break;
        case 3:
            QCOMPARE(std::get<0>(subject.GetArgument<unsigned>()), 0U);
            break;
        default:
            QVERIFY(!std::get<0>(subject.GetArgument<const int*>()));
            break;
        }
    });
    CSubject subject;
    subject.Attach(&observer);
    subject.Notify<int>(0, 7);
    QCOMPARE(observer.numbers.size(), 1);
    QCOMPARE(lines(log), kWrongType);
}

void ObserverPatternTest::shouldRefuseBeforeTheFirstNotification()
{
    const LogTrap log;
    const CSubject subject;
    QVERIFY(std::get<0>(subject.GetArgument<QUuid>()).isNull());
    QCOMPARE(lines(log).size(), 1);
    QCOMPARE(subject.GetEvent(), 0U);
}

void ObserverPatternTest::shouldReturnValueInitialisedResults()
{
    const LogTrap log;
    int looked = 0;
    Observer observer([&](CSubject& subject) {
        const auto [number, flag, real, pointer, guid, sets] =
            subject.GetArgument<int, bool, double, void*, GUID, QList<SDeviceSetInfo>>();
        QCOMPARE(number, 0);
        QCOMPARE(flag, false);
        QCOMPARE(real, 0.0);
        QVERIFY(!pointer);
        QVERIFY(IsNullGuid(guid));
        QVERIFY(sets.isEmpty());
        ++looked;
    });
    CSubject subject;
    subject.Attach(&observer);
    subject.Notify(1);
    QCOMPARE(looked, 1);
    QCOMPARE(lines(log), kWrongType);
}

TSA_TEST_MAIN(ObserverPatternTest)
#include "tst_observerpattern.moc"
