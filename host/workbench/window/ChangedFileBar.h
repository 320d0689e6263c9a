#pragma once

#include "host/workbench/window/FileWatch.h"

#include <QFrame>

class QLabel;
class QPushButton;

/// Says above the project that another program has changed its file, and offers what to do. Hidden
/// at first.
class ChangedFileBar final : public QFrame
{
    Q_OBJECT

public:
    explicit ChangedFileBar(QWidget* parent = nullptr);

    /// Shows the bar for the file of that name, or hides it if its content is known.
    void tell(FileWatch::State state, const QString& fileName);

    QPushButton* reloadButton() const { return m_reload; }
    QPushButton* compareButton() const { return m_compare; }
    QPushButton* keepButton() const { return m_keep; }
    QString text() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    FileWatch::State m_state = FileWatch::State::Same;
    bool m_isAgain = false; ///< The bar was there before.
    QString m_fileName;
    QLabel* m_text;         // Qt child
    QPushButton* m_reload;  // Qt child
    QPushButton* m_compare; // Qt child
    QPushButton* m_keep;    // Qt child
};
