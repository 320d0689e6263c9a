#include "host/workbench/faults/WrongAnswers.h"

#include "Interface/IPStatusCodes.h"

namespace {

QUuid otherThan(const QUuid& id)
{
    return QUuid::createUuidV5(id, QStringLiteral("another"));
}

QUuid& identity(QUuid& id)
{
    return id;
}

template <typename Record>
QUuid& identity(Record& record)
{
    return record.id;
}

template <typename Type>
bool change(QVariant& answer)
{
    if (answer.userType() != qMetaTypeId<Type>())
        return false;
    auto value = answer.value<Type>();
    identity(value) = otherThan(identity(value));
    answer = QVariant::fromValue(value);
    return true;
}

template <typename Type>
bool changeList(QVariant& answer)
{
    if (answer.userType() != qMetaTypeId<QList<Type>>())
        return false;
    auto values = answer.value<QList<Type>>();
    if (values.size() > 1)
        identity(values.first()) = identity(values.last());
    else if (!values.isEmpty())
        identity(values.first()) = otherThan(identity(values.first()));
    answer = QVariant::fromValue(values);
    return true;
}

} // namespace

QVariant withWrongIdentity(const QVariant& answer)
{
    QVariant wrong = answer;
    change<QUuid>(wrong) || change<ProcessorNode>(wrong) || change<ProcessorGroupNode>(wrong)
        || changeList<QUuid>(wrong) || changeList<ProcessorNode>(wrong)
        || changeList<ProcessorGroupNode>(wrong);
    return wrong;
}

CHandlerRelay::Answer refusalOf(const Operations::Operation& operation)
{
    CHandlerRelay::Answer answer;
    // The default of a code means success.
    if (qstrcmp(operation.name, "ImportIPFile") == 0)
        answer.result = QVariant::fromValue(quint32{IPIMPORT_OPEN_FAILED});
    else if (qstrcmp(operation.name, "ReadOnlineIPAddresses") == 0)
        answer.result = QVariant::fromValue(quint32{IPLIST_ONLINE_EMPTY});
    else if (operation.answerType() == qMetaTypeId<quint32>())
        answer.result = QVariant::fromValue(quint32{1});
    return answer;
}
