#pragma once

#include <QObject>

class QLineEdit;

/// Keeps the name in a field within what the host takes, asking it at every change of the text.
/// Text that an input method is still composing is left alone until it is done. Keeps the field
/// from being deleted inside a question. Lives as long as its field. GUI thread.
class CNameEditor final : public QObject
{
    Q_OBJECT

public:
    /// A plain field for a name, without a context menu; or the one in `parent` that is passed on.
    /// Without a parent the caller owns the field.
    static QLineEdit* create(QWidget* parent);

    /// Lets the next create() in the same parent return `field`, with what was typed in it.
    static void passOn(QLineEdit& field);

    /// Ends a composition in a field that create() made, cuts the text to the limit and returns it.
    static QString finishName(QLineEdit& field);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit CNameEditor(QLineEdit* field);

    static CNameEditor* of(const QLineEdit& field);

    void onTextChanged();
    void fitIfDue();

    QLineEdit* m_field; // owns this
    bool m_composing = false;
    bool m_due = false;
    bool m_fitting = false;
    bool m_passedOn = false;
};
