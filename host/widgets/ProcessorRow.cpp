#include "host/widgets/ProcessorRow.h"

#include <QCoreApplication>
#include <QModelIndex>
#include <QVariant>

namespace {

using namespace ProcessorRowMetrics;

QString dotted(quint32 address)
{
    const QLatin1Char dot('.');
    return QString::number(address >> 24U) + dot + QString::number(address >> 16U & 0xFFU) + dot
           + QString::number(address >> 8U & 0xFFU) + dot + QString::number(address & 0xFFU);
}

QString addressLine(const ProcessorNode& record)
{
    if (!record.reachedByIp)
        return QCoreApplication::translate("CProcessorDelegate", "Number: %1")
            .arg(qint64{record.number} + 1);
    const QString address = record.ipAddress == kNoProcessorAddress
                                ? QCoreApplication::translate("CProcessorDelegate", "Invalid")
                                : dotted(record.ipAddress);
    return QCoreApplication::translate("CProcessorDelegate", "IP: %1").arg(address);
}

} // namespace

std::optional<EPrcTreeNodeType> processorRowType(const QModelIndex& index)
{
    QVariant value = index.data(NodeTypeRole);
    if (!value.isValid() || !value.convert(qMetaTypeId<EPrcTreeNodeType>()))
        return std::nullopt;
    return value.value<EPrcTreeNodeType>();
}

ProcessorRow::ProcessorRow(const QModelIndex& index)
    : type(processorRowType(index))
    , name(index.data(Qt::DisplayRole).toString())
{
    if (type == NodeGroup)
        count = QStringLiteral("(%1)").arg(index.model()->rowCount(index));
    if (type != NodeProcessor)
        return;
    const auto record = index.data(NodeDataRole).value<ProcessorNode>();
    detail = addressLine(record);
    online = record.online;
    backup = record.redundancyMode == 2;
    warning = record.hostFlag17;
}

ProcessorRowLayout::ProcessorRowLayout(const ProcessorRow& row, const QRect& rect)
{
    const int end = rect.right() + 1 - kButtonColumn;
    if (row.type != NodeProcessor) {
        icon = QRect(rect.left() + (kIconColumn - kArrowSize) / 2,
                     rect.top() + (rect.height() - kArrowSize) / 2, kArrowSize, kArrowSize);
        const int left = rect.left() + kArrowColumn;
        name = QRect(left, rect.top(), end - left, rect.height());
        return;
    }
    icon = QRect(rect.left(), rect.top() + (rect.height() - kIconSize) / 2, kIconSize, kIconSize);
    const int left = rect.left() + kIconColumn;
    name = QRect(left, rect.top() + kNameTop, end - left, kNameHeight);
    detail = QRect(left, rect.top() + kDetailTop, end - left, kDetailHeight);
    if (row.warning) {
        // Beside the name and not the address, because the name may be elided.
        warning = QRect(end - kWarningSize, name.top() + (kNameHeight - kWarningSize) / 2,
                        kWarningSize, kWarningSize);
        name.setRight(warning.left() - kGap - 1);
    }
}
