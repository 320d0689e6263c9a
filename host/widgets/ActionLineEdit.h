#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QLineEdit>

/// A text field with actions inside it: those that its user adds, and one that clears the text,
/// shown while there is a text and setClearButtonEnabled() is on. Clearing is an edit: it emits
/// textEdited(). GUI thread.
class HOSTWIDGETS_EXPORT CActionLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit CActionLineEdit(QWidget* parent = nullptr);

    /// Adds an action in front of the text. The field owns it.
    QAction* AddLeadingAction(const QIcon& icon, const QString& toolTip);

    /// As QLineEdit's, in the host's look. Hides the base's, which is not virtual.
    void setClearButtonEnabled(bool enable);

protected:
    void changeEvent(QEvent* event) override;

private:
    void dressClearAction();
};
