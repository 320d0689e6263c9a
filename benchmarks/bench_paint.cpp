// Twenty rows of the processor tree painted into a picture: the product's delegate against one that
// draws a pixmap it kept and two elided texts, and against one that reads its icon anew each time.

#include "benchmarks/support/Bench.h"
#include "host/widgets/ProcessorRow.h"
#include "host/widgets/SvgIcons.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeDelegate.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <QSvgRenderer>
#include <QTreeView>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace ProcessorRowMetrics;

constexpr int kRows = 20;
constexpr int kWidth = 210;
constexpr int kIndentation = 16;
constexpr int kDetailRole = Qt::UserRole;
constexpr std::array<int, 2> kScales = {1, 2};

const QString kIcon = QStringLiteral(":/HostWidgets/icons/processor-offline.svg");

QImage emptyPicture(int scale)
{
    QImage picture(QSize(kWidth, kRows * kProcessorHeight) * scale,
                   QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::white);
    return picture;
}

QPixmap drawnIcon(int scale)
{
    QPixmap pixmap(kIconSize * scale, kIconSize * scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(kIcon).render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

/// What painting a processor takes at least: an icon and two texts that fit their room, in the
/// places, fonts and colours of the product's.
class LeastDelegate : public QStyledItemDelegate
{
public:
    explicit LeastDelegate(const QPixmap& icon)
        : m_icon(icon)
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const QRect& row = option.rect;
        const int left = row.left() + kIconColumn;
        const int width = row.width() - kIconColumn - kEndMargin;
        painter->save();
        painter->setFont(option.font);
        paintIcon(*painter, QRect(row.left(), row.top() + (row.height() - kIconSize) / 2, kIconSize,
                                  kIconSize));
        paintText(*painter, option, QRect(left, row.top() + kNameTop, width, kNameHeight),
                  index.data(Qt::DisplayRole).toString(), QPalette::Text);
        paintText(*painter, option, QRect(left, row.top() + kDetailTop, width, kDetailHeight),
                  index.data(kDetailRole).toString(), QPalette::PlaceholderText);
        painter->restore();
    }

protected:
    virtual void paintIcon(QPainter& painter, const QRect& place) const
    {
        painter.drawPixmap(place.topLeft(), m_icon);
    }

private:
    static void paintText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                          const QString& text, QPalette::ColorRole color)
    {
        painter.setPen(option.palette.color(color));
        painter.drawText(
            place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            option.fontMetrics.elidedText(text, Qt::ElideRight, place.width(), Qt::TextSingleLine));
    }

    QPixmap m_icon;
};

/// The same, but the file of the icon is read on each paint.
class ReadingDelegate final : public LeastDelegate
{
public:
    using LeastDelegate::LeastDelegate;

protected:
    void paintIcon(QPainter& painter, const QRect& place) const override
    {
        QSvgRenderer(kIcon).render(&painter, place);
    }
};

/// The first processors of a product's model, and the same texts in a plain one.
class Rows final
{
public:
    explicit Rows(StoredHandler& handler)
    {
        handler.setProject(makeProject(255));
        m_model.initRoot();
        m_model.reset();
        const Project& project = handler.project();
        for (int row = 0; row < kRows; ++row) {
            const ProcessorNode& processor = project.processors.at(row);
            m_product.append(m_model.getItem(processor.id)->index());
            auto* item = new QStandardItem(processor.name);
            const QString detail = processor.reachedByIp
                                       ? QStringLiteral("IP: 10.0.0.%1").arg(row + 1)
                                       : QStringLiteral("Number: %1").arg(row + 1);
            item->setData(detail, kDetailRole);
            m_plain.appendRow(item);
        }
        for (int row = 0; row < kRows; ++row)
            m_plainIndexes.append(m_plain.index(row, 0));
    }

    const QModelIndexList& product() const { return m_product; }
    const QModelIndexList& plain() const { return m_plainIndexes; }

private:
    CProcessorTreeModel m_model;
    QStandardItemModel m_plain;
    QModelIndexList m_product;
    QModelIndexList m_plainIndexes;
};

void paintRows(QImage& picture, const QAbstractItemDelegate& delegate, const QModelIndexList& rows,
               const QStyleOptionViewItem& shape)
{
    QPainter painter(&picture);
    QStyleOptionViewItem option = shape;
    for (int row = 0; row < rows.size(); ++row) {
        option.rect = QRect(2 * kIndentation, row * kProcessorHeight, kWidth - 2 * kIndentation,
                            kProcessorHeight);
        delegate.paint(&painter, option, rows.at(row));
    }
}

void measure(benchmark::State& state, const QAbstractItemDelegate& delegate,
             const QModelIndexList& rows, const QStyleOptionViewItem& shape, int scale)
{
    QImage picture = emptyPicture(scale);
    paintRows(picture, delegate, rows, shape);
    const int parses = SvgIcons::parseCount();
    for (auto iteration : state) {
        static_cast<void>(iteration);
        paintRows(picture, delegate, rows, shape);
    }
    require(SvgIcons::parseCount() == parses, "no icon is read again on a second paint");
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    const Rows rows(*handler);
    QTreeView view;
    const CProcessorTreeDelegate product(*CTargetSelectData::Instance(), &view);
    QStyleOptionViewItem shape;
    shape.initFrom(&view);
    shape.font = view.font();
    shape.widget = &view;
    shape.state = QStyle::State_Enabled;

    std::vector<std::unique_ptr<LeastDelegate>> references;
    for (const int scale : kScales) {
        const auto* least =
            references.emplace_back(std::make_unique<LeastDelegate>(drawnIcon(scale))).get();
        const auto* reading =
            references.emplace_back(std::make_unique<ReadingDelegate>(QPixmap())).get();
        QImage painted = emptyPicture(scale);
        paintRows(painted, product, rows.product(), shape);
        QImage expected = emptyPicture(scale);
        paintRows(expected, *least, rows.plain(), shape);
        require(painted == expected && painted != emptyPicture(scale),
                "both delegates paint the same picture");

        const std::string family = "paint-" + std::to_string(scale) + "x/";
        const auto add = [&](const char* side, const QAbstractItemDelegate& delegate,
                             const QModelIndexList& indexes) {
            benchmark::RegisterBenchmark((family + side).c_str(),
                                         [&, scale](benchmark::State& state) {
                                             measure(state, delegate, indexes, shape, scale);
                                         });
        };
        add("product", product, rows.product());
        add("pixmap", *least, rows.plain());
        add("renderer", *reading, rows.plain());
    }
    return runBenchmarks(argc, argv);
}
