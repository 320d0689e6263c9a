#include "base/MetaTypes.h"
#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/WarningTrap.h"

#include <QDirIterator>
#include <QFile>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QTest>

namespace {
struct Invocation
{
    QString where;
    QByteArray signature;
    QList<QByteArray> types;
};

/// Every call by name in the product's sources, with the types of its arguments.
QList<Invocation> invocations()
{
    static const QRegularExpression call(
        QStringLiteral("invokeMethod\\(\\s*[\\w.&:>()\\s-]*?,\\s*\"(\\w+)\"([^;]*);"));
    static const QRegularExpression argument(QStringLiteral("Q_ARG\\(\\s*([\\w<>:]+)\\s*,"));
    QList<Invocation> found;
    for (const char* folder : {"plugin", "processortree", "search", "ipmanage"}) {
        QDirIterator files(QStringLiteral(TSA_SOURCE_DIR "/") + QString::fromLatin1(folder),
                           {QStringLiteral("*.cpp")}, QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QString text = QString::fromUtf8(file.readAll());
            for (auto calls = call.globalMatch(text); calls.hasNext();) {
                const auto match = calls.next();
                Invocation invocation;
                invocation.where = file.fileName();
                for (auto args = argument.globalMatch(match.captured(2)); args.hasNext();)
                    invocation.types.append(args.next().captured(1).toLatin1());
                invocation.signature =
                    match.captured(1).toLatin1() + '(' + invocation.types.join(',') + ')';
                found.append(invocation);
            }
        }
    }
    return found;
}

QStringList ownMethods(const QMetaObject& metaObject)
{
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        methods.append(QString::fromLatin1(metaObject.method(i).methodSignature()));
    return methods;
}

} // namespace

class InvokedNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldResolveEveryCallByName();
    void shouldRegisterItsTypesOnceAndInPeace();
    void shouldOfferTheSlotsOfTheModel();
    void shouldOfferTheSlotsOfThePanel();
};

void InvokedNamesTest::shouldResolveEveryCallByName()
{
    RegisterMetaTypes();
    const QList<Invocation> all = invocations();
    QVERIFY(all.size() >= 11);
    for (const Invocation& invocation : all) {
        const QByteArray signature = QMetaObject::normalizedSignature(invocation.signature);
        const bool resolves = CProcessorTreeModel::staticMetaObject.indexOfSlot(signature) >= 0
                              || CTargetSelectArea::staticMetaObject.indexOfSlot(signature) >= 0;
        QVERIFY2(resolves,
                 qPrintable(invocation.where + QLatin1Char(' ') + QString::fromLatin1(signature)));
        for (const QByteArray& type : invocation.types)
            QVERIFY2(QMetaType::type(type.constData()) != QMetaType::UnknownType, type.constData());
    }
}

void InvokedNamesTest::shouldRegisterItsTypesOnceAndInPeace()
{
    RegisterMetaTypes();
    const int known = QMetaType::type("ProcessorNode");
    RegisterMetaTypes();
    QVERIFY(known != QMetaType::UnknownType);
    QCOMPARE(QMetaType::type("ProcessorNode"), known);
    for (const char* type : {"ProcessorGroupNode", "EPrcTreeNodeType", "GUID", "SDeviceSetInfo",
                             "QList<SDeviceSetInfo>", "QUuid", "QList<QUuid>"}) {
        QVERIFY2(QMetaType::type(type) != QMetaType::UnknownType, type);
    }
}

void InvokedNamesTest::shouldOfferTheSlotsOfTheModel()
{
    QCOMPARE(QByteArray(CProcessorTreeModel::staticMetaObject.className()),
             QByteArray("CProcessorTreeModel"));
    QCOMPARE(
        ownMethods(CProcessorTreeModel::staticMetaObject).mid(0, 6),
        QStringList({QStringLiteral("reset()"), QStringLiteral("AppendGroup(ProcessorGroupNode)"),
                     QStringLiteral("AppendProcessor(ProcessorNode)"),
                     QStringLiteral("AppendProcessors(QList<QUuid>)"),
                     QStringLiteral("removeNode(QUuid)"),
                     QStringLiteral("removeNodes(QList<QUuid>)")}));
    const auto& metaObject = CProcessorTreeModel::staticMetaObject;
    const int appendGroup = metaObject.indexOfSlot("AppendGroup(ProcessorGroupNode)");
    QCOMPARE(QByteArray(metaObject.method(appendGroup).typeName()), QByteArray("CProcessorItem*"));
}

void InvokedNamesTest::shouldOfferTheSlotsOfThePanel()
{
    QCOMPARE(QByteArray(CTargetSelectArea::staticMetaObject.className()),
             QByteArray("CTargetSelectArea"));
    QCOMPARE(ownMethods(CTargetSelectArea::staticMetaObject),
             QStringList({QStringLiteral("onDetectStrategyChanged(int)"),
                          QStringLiteral("onCurrentDeviceSetChanged(GUID,QList<SDeviceSetInfo>)"),
                          QStringLiteral("onCurrentProcessorChanged(QUuid)"),
                          QStringLiteral("onLANUSBGetProcessorIP()"),
                          QStringLiteral("UpdateMonitorWarningState()")}));
    const auto& metaObject = CTargetSelectArea::staticMetaObject;
    const auto parameters = [&](const char* slot) {
        return metaObject.method(metaObject.indexOfSlot(slot)).parameterNames();
    };
    using Names = QList<QByteArray>;
    QCOMPARE(parameters("onDetectStrategyChanged(int)"), Names({"strategy"}));
    QCOMPARE(parameters("onCurrentDeviceSetChanged(GUID,QList<SDeviceSetInfo>)"), Names({"", ""}));
    QCOMPARE(parameters("onCurrentProcessorChanged(QUuid)"), Names({"current"}));
    QCOMPARE(parameters("onLANUSBGetProcessorIP()"), Names());
    QCOMPARE(parameters("UpdateMonitorWarningState()"), Names());
}

TSA_TEST_MAIN(InvokedNamesTest)
#include "tst_invokednames.moc"
