#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QToolButton>
#include <QVariant>

/// A text button with an arrow that opens a menu of related actions. A click on the button, Space
/// and Return emit clicked(); a click on the arrow, Down and Alt+Down open the menu. Receivers of
/// clicked() and of the actions may destroy the button. GUI thread.
class HOSTWIDGETS_EXPORT CMenuToolButton : public QToolButton
{
    Q_OBJECT

public:
    explicit CMenuToolButton(QWidget* parent = nullptr);
    ~CMenuToolButton() override;

    /// Appends an entry to the menu, which owns it. `value` becomes QAction::data().
    QAction* AddAction(const QString& text, const QVariant& value = QVariant());

    /// The text is centred in the whole button, so the room of the arrow counts twice.
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QMenu* m_menu; // Qt child
};
