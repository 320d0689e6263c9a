#pragma once

#include "tests/processortree/ShownTree.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>

/// The tree with a host that wants buttons in all rows.
struct Buttons : ShownTree
{
    Buttons()
        : clicks(delegate, &CProcessorTreeDelegate::notifyMoreClicked)
    {
        host().showProcessorMoreButton = true;
        host().showNodeMoreButton = true;
    }

    void press(const QPoint& position) const
    {
        QTest::mousePress(viewport(), Qt::LeftButton, Qt::NoModifier, position);
    }
    void release(const QPoint& position) const
    {
        QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, position);
    }

    /// Moves the mouse, with `held` down. Not by the cursor, which may be there already.
    void move(const QPoint& position, Qt::MouseButtons held = Qt::NoButton) const
    {
        QMouseEvent event(QEvent::MouseMove, position, viewport()->mapToGlobal(position),
                          Qt::NoButton, held, Qt::NoModifier);
        QApplication::sendEvent(viewport(), &event);
    }

    bool isOver() const { return delegate->buttonState().testFlag(QStyle::State_MouseOver); }
    bool isDown() const { return delegate->buttonState().testFlag(QStyle::State_Sunken); }

    /// Returns what is painted at the place of the button of row `n`, without the row itself.
    QImage painted(quint32 n, QStyle::State state)
    {
        QImage image(300, 42, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.widget = &view;
        option.state = QStyle::State_Enabled | state;
        option.rect = QRect(0, 0, 300, 42);
        delegate->paint(&painter, option, index(n));
        QImage without(300, 42, QImage::Format_ARGB32_Premultiplied);
        without.fill(Qt::transparent);
        QPainter plain(&without);
        delegate->CProcessorDelegate::paint(&plain, option, index(n));
        const QRect place(260, 11, 20, 20);
        return image.copy(place) == without.copy(place) ? QImage() : image.copy(place);
    }

    bool hasButton(quint32 n, QStyle::State state = QStyle::State_Selected)
    {
        return !painted(n, state).isNull();
    }

    QSignalSpy clicks;
};
