#pragma once

#include <QLabel>

/// A plain text of a fixed width that wraps between words and, where one is too long, within it; a
/// colon and what directly follows it, such as an address, stay together. A text of more than
/// `mostLines` lines ends in an ellipsis; text() stays whole. GUI thread.
class CWrappedLabel final : public QLabel
{
    Q_OBJECT

public:
    CWrappedLabel(int width, int mostLines, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString shownText() const;

    int m_mostLines;
};
