#pragma once

#include <QLabel>

/// A plain text of a fixed width that is never elided. Wraps between words, or within a word that
/// is too long.
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
