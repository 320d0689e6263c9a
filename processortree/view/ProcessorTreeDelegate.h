#pragma once

#include "host/widgets/ProcessorDelegate.h"
#include "host/widgets/SvgIcons.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QRectF>
#include <QStyle>
#include <QTimer>

#include <memory>
#include <optional>

class IPanelBridge;
class QAbstractItemView;
class QMouseEvent;

/// Draws the rows of the processor tree as the host does, with a "More" button at the right end of
/// selected and hovered ones, and edits the names of groups and processors in place. GUI thread.
///
/// The button has one state for all rows, of which the row under the mouse shows the feedback.
/// There is no button while the host has several processors selected in its multi-selection. The
/// host is asked about the rows that may show one, and about no other.
class CProcessorTreeDelegate final : public CProcessorDelegate
{
    Q_OBJECT

public:
    /// For the rows of `view`, which becomes the parent.
    CProcessorTreeDelegate(IPanelBridge& bridge, QAbstractItemView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

    /// Asks the host for the new name and writes it into the model when the host agrees. Blanks
    /// stand for the old name. The host may change the model meanwhile; a row that is gone then, or
    /// has another name already, is left as it is.
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Enables or disables the button; a disabled one does not react to presses.
    void setButtonEnabled(bool enabled);

    /// Shows or hides the button. While it is hidden, the host is not asked about it.
    void setButtonShown(bool shown) { m_isButtonShown = shown; }

    /// Forgets that the mouse is over the button or presses it, which a drag leaves behind.
    void resetButtonState();

    /// State_Enabled, State_Raised or State_Sunken, State_On or State_Off, State_MouseOver.
    QStyle::State buttonState() const { return m_state; }

signals:
    /// The button of row `index` was clicked; `position` is its bottom-right corner in the
    /// viewport. The receiver may change the model and destroy the delegate.
    void notifyMoreClicked(const QModelIndex& index, const QPoint& position);

private:
    QString iconPath(const QModelIndex& index) const;
    void moveMouse(const QMouseEvent& event);
    void press(const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    void raiseButton();
    void raiseButtonAfterRelease();
    void leaveButton();
    void changeState(QStyle::State set, QStyle::State cleared);
    void showToolTip();

    IPanelBridge& m_bridge;
    QPointer<QAbstractItemView> m_view;
    QPointer<QWidget> m_viewport; // still whole while the view is being destroyed
    QStyle::State m_state = QStyle::State_Enabled | QStyle::State_Raised | QStyle::State_Off;
    bool m_checkable = true;
    bool m_isButtonShown = true;
    std::shared_ptr<SvgIcons> m_buttonIcons;
    QPersistentModelIndex m_row;        // under the mouse
    QRectF m_button;                    // of that row, in the viewport
    QPersistentModelIndex m_pressedRow; // whose button is held down
    int m_presses = 0;
    std::optional<QPoint> m_lastPosition; // of the mouse
    QTimer m_toolTipTimer{this};
};
