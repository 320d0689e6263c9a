#include "host/widgets/ProcessorRow.h"

#include <QCoreApplication>
#include <QModelIndex>
#include <QStyleOptionViewItem>
#include <QVariant>

#include <array>
#include <charconv>

namespace {

using namespace ProcessorRowMetrics;

/// Allocates once, because rows are read on every paint.
QString dotted(quint32 address)
{
    QString text;
    text.reserve(static_cast<int>(sizeof("255.255.255.255")));
    for (const quint32 shift : {24U, 16U, 8U, 0U}) {
        if (!text.isEmpty())
            text += QLatin1Char('.');
        std::array<char, 3> digits{};
        const char* end = std::to_chars(digits.begin(), digits.end(), address >> shift & 0xFFU).ptr;
        text += QLatin1String(digits.begin(), end);
    }
    return text;
}

QString addressOrNumber(const ProcessorNode& record)
{
    if (!record.reachedByIp)
        return QString::number(qint64{record.number} + 1);
    return record.ipAddress == kNoProcessorAddress
               ? QCoreApplication::translate("CProcessorDelegate", "Invalid")
               : dotted(record.ipAddress);
}

QString labelled(const ProcessorNode& record, const QString& value)
{
    return record.reachedByIp
               ? QCoreApplication::translate("CProcessorDelegate", "IP: %1").arg(value)
               : QCoreApplication::translate("CProcessorDelegate", "Number: %1").arg(value);
}

/// Takes the count, "(12)", off the end of the root's text and returns it; empty if there is none.
QString takeCount(QString& text)
{
    const int start = text.lastIndexOf(QLatin1Char('('));
    const int digits = text.size() - start - 2;
    if (start < 0 || digits < 1 || !text.endsWith(QLatin1Char(')')))
        return {};
    const QStringRef written = text.midRef(start + 1, digits);
    for (const QChar digit : written) {
        if (!digit.isDigit())
            return {};
    }
    QString count = text.mid(start);
    text.truncate(start);
    return count;
}

/// Returns the distance of the texts from the right end of a row.
int endMargin(QStyle::State state, RowEnd end)
{
    if (end == RowEnd::Button)
        return kButtonColumn;
    const bool hasPanel = state & (QStyle::State_Selected | QStyle::State_MouseOver);
    return hasPanel ? kPanelEndMargin : kEndMargin;
}

} // namespace

std::optional<EPrcTreeNodeType> processorRowType(const QModelIndex& index)
{
    QVariant value = index.data(NodeTypeRole);
    const int typeId = qMetaTypeId<EPrcTreeNodeType>();
    if (value.userType() != typeId && (!value.isValid() || !value.convert(typeId)))
        return std::nullopt;
    return value.value<EPrcTreeNodeType>();
}

ProcessorRow::ProcessorRow(const QModelIndex& index)
    : type(processorRowType(index))
    , name(index.data(Qt::DisplayRole).toString())
{
    if (type == NodeGroup)
        count = QStringLiteral("(%1)").arg(index.model()->rowCount(index));
    else if (type == NodeRoot)
        count = takeCount(name);
    if (type != NodeProcessor)
        return;
    const auto record = index.data(NodeDataRole).value<ProcessorNode>();
    value = addressOrNumber(record);
    detail = labelled(record, value);
    online = record.online;
    backup = record.redundancyMode == 2;
    hasBackup = record.redundancyMode == 1;
    warning = record.hostFlag17;
}

ProcessorRowLayout::ProcessorRowLayout(const ProcessorRow& row, const QStyleOptionViewItem& option,
                                       RowEnd atEnd)
{
    const QRect& rect = option.rect;
    const int end = rect.right() + 1 - endMargin(option.state, atEnd);
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
        // Beside the name and not the address, because the name may be elided. Not further to the
        // right without a button, because it would slip away from the mouse that comes for it.
        warning = QRect(rect.right() + 1 - kWarningEnd - kWarningSize,
                        name.top() + (kNameHeight - kWarningSize) / 2, kWarningSize, kWarningSize);
        name.setRight(warning.left() - kGap - 1);
    }
}
