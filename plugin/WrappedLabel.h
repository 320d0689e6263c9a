#pragma once

#include <QLabel>
#include <QStringList>

/// A plain text of a fixed width that wraps between words and, where one is too long, within it; a
/// colon and what directly follows it, such as an address, stay together. A text of more than
/// `mostLines` lines ends in an ellipsis; in a sentence with names, those are elided instead.
/// text() stays whole. GUI thread.
class CWrappedLabel final : public QLabel
{
    Q_OBJECT

public:
    CWrappedLabel(int width, int mostLines, QWidget* parent);

    /// Sets `sentence` as the text, with `names`, separated by commas, for its %1.
    void setSentence(const QString& sentence, const QStringList& names);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString shownText() const;
    bool fits(const QString& shown) const;
    QString withElidedNames(int nameWidth) const;

    int m_mostLines;
    QString m_sentence; // empty for a text without names
    QStringList m_names;
};
