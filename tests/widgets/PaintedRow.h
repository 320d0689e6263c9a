#pragma once

#include "host/widgets/HostTheme.h"
#include "host/widgets/ProcessorDelegate.h"
#include "tests/widgets/SampleTree.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStandardItemModel>

/// The width of the rows that Painting paints.
constexpr int kRowWidth = 240;

/// Paints rows without a view.
class Painting final
{
public:
    QModelIndex add(QStandardItem* row)
    {
        m_model.appendRow(row);
        return row->index();
    }

    QModelIndex add(const ProcessorNode& record) { return add(processorRow(record)); }

    QImage paint(const QModelIndex& index, QStyle::State state = QStyle::State_Enabled,
                 qreal scale = 1)
    {
        QStyleOptionViewItem option;
        option.rect = QRect(QPoint(), QSize(kRowWidth, delegate.sizeHint(option, index).height()));
        option.state = state;
        option.palette = QApplication::palette();
        option.font = QApplication::font();
        option.fontMetrics = QFontMetrics(option.font);
        QImage image(option.rect.size() * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(hostColors().window);
        QPainter painter(&image);
        delegate.paint(&painter, option, index);
        return image;
    }

    void rename(const QModelIndex& index, const QString& name)
    {
        m_model.setData(index, name, Qt::DisplayRole);
    }

    CProcessorDelegate delegate;

private:
    QStandardItemModel m_model;
};

/// Returns the shape of the painted pixels in `part`, without their colours.
inline QImage shape(const QImage& image, const QRect& part)
{
    QImage shape(part.size(), QImage::Format_Mono);
    const int ground = qGray(hostColors().window.rgb());
    for (int y = 0; y < part.height(); ++y) {
        for (int x = 0; x < part.width(); ++x) {
            const int gray = qGray(image.pixel(part.topLeft() + QPoint(x, y)));
            shape.setPixel(x, y, qAbs(gray - ground) > 25 ? 1 : 0);
        }
    }
    return shape;
}

/// Returns whether nothing is painted in `part`.
inline bool isEmpty(const QImage& image, const QRect& part)
{
    const QImage cut = image.copy(part);
    QImage blank(cut.size(), cut.format());
    blank.fill(hostColors().window);
    return cut == blank;
}
