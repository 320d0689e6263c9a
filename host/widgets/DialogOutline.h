#pragma once

#include <QWidget>

/// The outline of a dialog. It lies above the other widgets and is masked to the line, so that it
/// needs no room in the layout and does not affect the widgets below it.
class DialogOutline final : public QWidget
{
    Q_OBJECT

public:
    explicit DialogOutline(QWidget* dialog);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};
