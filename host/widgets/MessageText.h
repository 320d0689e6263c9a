#pragma once

#include <QLabel>

/// A plain text, whole at a fixed width: wraps between words and, where one is too long, within it.
class MessageText final : public QLabel
{
    Q_OBJECT

public:
    MessageText(const QString& text, int width, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fitHeight();
};
