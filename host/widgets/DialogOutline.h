#pragma once

#include <QWidget>

/// The line around a dialog. Lies above all that the dialog holds, but is no more than that line,
/// so that it needs no room in the layout and costs the widgets below it nothing.
class DialogOutline final : public QWidget
{
    Q_OBJECT

public:
    explicit DialogOutline(QWidget* dialog);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};
