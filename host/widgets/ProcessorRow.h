#pragma once

#include "Interface/ProcessorNode.h"

#include <QRect>
#include <QString>

#include <optional>

class QModelIndex;

/// The pixels of a row of the processor tree, from the left, upper or right edge of its rectangle.
namespace ProcessorRowMetrics {

constexpr int kProcessorHeight = 42;
constexpr int kOtherHeight = 32;
constexpr int kArrowColumn = 25;  // in front of the name of a row that can be expanded
constexpr int kIconColumn = 24;   // in front of the name of a processor
constexpr int kButtonColumn = 40; // behind the texts
constexpr int kNameTop = 4;       // of a processor
constexpr int kNameHeight = 19;
constexpr int kDetailTop = 22;
constexpr int kDetailHeight = 16;
constexpr int kArrowSize = 12;
constexpr int kIconSize = 24;
constexpr int kWarningSize = 14;
constexpr int kGap = 4;

} // namespace ProcessorRowMetrics

/// The type of a row of the processor tree; nothing when it has none.
std::optional<EPrcTreeNodeType> processorRowType(const QModelIndex& index);

/// What a row of the processor tree shows.
struct ProcessorRow
{
    ProcessorRow() = default;
    explicit ProcessorRow(const QModelIndex& index);

    std::optional<EPrcTreeNodeType> type;
    QString name;
    QString count;  ///< Of a group's members, behind its name.
    QString detail; ///< A processor's second line: how it is addressed.
    bool online = false;
    bool backup = false;
    bool warning = false;
};

/// Where it shows that in the rectangle that a delegate paints.
struct ProcessorRowLayout
{
    ProcessorRowLayout(const ProcessorRow& row, const QRect& rect);

    QRect icon; ///< Of a processor, or the arrow of any other row.
    QRect name;
    QRect detail;
    QRect warning; ///< Null for none.
};
