#pragma once

#include "Interface/ProcessorNode.h"

#include <QRect>
#include <QString>

#include <optional>

class QModelIndex;
class QStyleOptionViewItem;

/// Sizes and margins of a row of the processor tree, in pixels.
namespace ProcessorRowMetrics {

constexpr int kProcessorHeight = 42;
constexpr int kOtherHeight = 32;
constexpr int kArrowColumn = 25;    // before the name of a row that can be expanded
constexpr int kIconColumn = 24;     // before the name of a processor
constexpr int kEndMargin = 10;      // after the texts of a row, and after the row's background
constexpr int kPanelEndMargin = 18; // after the texts of a row with a background
constexpr int kButtonColumn = 40;   // after those of one with a button
constexpr int kWarningEnd = 40;     // after the warning, which stays there in all states of its row
constexpr int kNameTop = 4;         // of a processor
constexpr int kNameHeight = 19;
constexpr int kDetailTop = 22;
constexpr int kDetailHeight = 16;
constexpr int kArrowSize = 12;
constexpr int kIconSize = 24;
constexpr int kWarningSize = 14;
constexpr int kGap = 4;

} // namespace ProcessorRowMetrics

/// Returns the type of a row of the processor tree, or nothing if it has none.
std::optional<EPrcTreeNodeType> processorRowType(const QModelIndex& index);

/// The content of a row of the processor tree.
struct ProcessorRow
{
    ProcessorRow() = default;
    explicit ProcessorRow(const QModelIndex& index);

    std::optional<EPrcTreeNodeType> type;
    QString name;
    QString count;  ///< Number of a group's members or of all processors, shown after the name.
    QString detail; ///< Second line of a processor: its address or number, with what it is.
    QString value;  ///< The same alone.
    bool online = false;
    bool backup = false;    ///< Is the backup of another processor.
    bool hasBackup = false; ///< Is shown by a mark at the icon.
    bool warning = false;
};

/// What else is painted at the right end of a row.
enum class RowEnd { Nothing, Button };

/// The positions of the content in the rectangle that a delegate paints.
struct ProcessorRowLayout
{
    ProcessorRowLayout(const ProcessorRow& row, const QStyleOptionViewItem& option, RowEnd atEnd);

    QRect icon; ///< The icon of a processor, or the arrow of another row.
    QRect name;
    QRect detail;
    QRect warning; ///< Null without a warning.
};
