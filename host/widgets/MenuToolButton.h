#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QToolButton>
#include <QVariant>

/// A button with a text, and an arrow beside it that opens a menu of related actions. A click on
/// the button itself, Space and Return are clicked(); the arrow, Down and Alt+Down open the menu.
/// GUI thread. Whatever is clicked or chosen may destroy the button.
class HOSTWIDGETS_EXPORT CMenuToolButton : public QToolButton
{
    Q_OBJECT

public:
    explicit CMenuToolButton(QWidget* parent = nullptr);
    ~CMenuToolButton() override;

    /// Appends an entry to the menu, which owns it. `value` is for the caller: QAction::data().
    QAction* AddAction(const QString& text, const QVariant& value = QVariant());

    /// The text stands in the middle of the button, whatever the arrow takes.
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QMenu* m_menu; // Qt child
};
