#pragma once

#include "host/widgets/ProcessorDelegate.h"
#include "host/widgets/ProcessorItemSelectionModel.h"
#include "host/widgets/TreeView.h"
#include "tests/widgets/SampleTree.h"

#include <QContextMenuEvent>
#include <QHoverEvent>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTest>

/// Lets only processors become current.
class StrictSelection final : public CProcessorItemSelectionModel
{
public:
    using CProcessorItemSelectionModel::CProcessorItemSelectionModel;

    void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override
    {
        if (index.data(NodeTypeRole).value<EPrcTreeNodeType>() == NodeProcessor)
            CProcessorItemSelectionModel::setCurrentIndex(index, command);
    }
};

/// Records its signals and events.
class View final : public CTreeView
{
public:
    using CTreeView::CTreeView;

    mutable QStringList painted;
    QRegion repainted;
    bool consumesPresses = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == viewport() && event->type() == QEvent::MouseButtonPress && consumesPresses)
            return true;
        return CTreeView::eventFilter(watched, event);
    }

    void paintEvent(QPaintEvent* event) override
    {
        repainted += event->region();
        CTreeView::paintEvent(event);
    }

    void DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QRect& row) const override
    {
        note("selected", option, row);
        CTreeView::DrawSelectRow(painter, option, row.adjusted(0, 0, -10, 0));
    }

    void DrawHoverRow(QPainter* painter, const QStyleOptionViewItem& option,
                      const QRect& row) const override
    {
        note("hovered", option, row);
        CTreeView::DrawHoverRow(painter, option, row);
    }

    void DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QRect& row) const override
    {
        note("normal", option, row);
        CTreeView::DrawNormalRow(painter, option, row.adjusted(0, 0, -10, 0));
    }

private:
    void note(const char* state, const QStyleOptionViewItem& option, const QRect& row) const
    {
        const bool whole = row.left() == 0 && row.right() == viewport()->rect().right();
        painted +=
            QStringLiteral("%1 %2%3%4")
                .arg(indexAt(row.center()).data().toString(), QLatin1String(state),
                     option.state & QStyle::State_HasFocus ? QStringLiteral(" focus") : QString(),
                     whole ? QString() : QStringLiteral(" in part"));
    }
};

struct Form
{
    explicit Form(int height = 400)
        : asked(&view, &CTreeView::RightMenuEvent)
    {
        view.setItemDelegate(&delegate);
        view.setModel(&tree.model);
        view.setSelectionModel(new StrictSelection(&tree.model, &view));
        view.expandAll();
        view.resize(240, height);
        view.show();
        view.activateWindow();
        view.setFocus();
    }

    QPoint at(const QModelIndex& row) const
    {
        return {view.viewport()->width() / 2, view.visualRect(row).center().y()};
    }

    QPoint arrow(const QModelIndex& row) const
    {
        const QRect rect = view.visualRect(row);
        return {rect.left() + 12, rect.center().y()};
    }

    void click(const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(view.viewport(), button, modifiers, position);
    }

    void doubleClick(const QPoint& position)
    {
        click(position);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, position);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, position);
    }

    /// Sends a mouse press and the context menu event that follows it.
    void rightClick(const QPoint& position, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mousePress(view.viewport(), Qt::RightButton, modifiers, position);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, position,
                               view.viewport()->mapToGlobal(position), modifiers);
        QCoreApplication::sendEvent(view.viewport(), &menu);
        QTest::mouseRelease(view.viewport(), Qt::RightButton, modifiers, position);
    }

    void menuKey()
    {
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QCoreApplication::sendEvent(&view, &menu);
    }

    void pressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&view, static_cast<Qt::Key>(key), modifiers);
    }

    void hover(const QPoint& position)
    {
        QHoverEvent move(QEvent::HoverMove, position, QPoint());
        QCoreApplication::sendEvent(view.viewport(), &move);
    }

    QString selected() const { return names(view.selectionModel()->selectedIndexes()); }

    QString askedRow() const
    {
        return asked.isEmpty() ? QString() : asked.last().at(0).toModelIndex().data().toString();
    }

    SampleTree tree;
    CProcessorDelegate delegate;
    View view;
    QSignalSpy asked;
};
