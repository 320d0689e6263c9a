#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QLineEdit>

/// A text field with actions inside it: those added by the caller, and a clear action, which is
/// visible while there is text and setClearButtonEnabled() is on. Clearing emits textEdited(). GUI
/// thread.
class HOSTWIDGETS_EXPORT CActionLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit CActionLineEdit(QWidget* parent = nullptr);

    /// Adds an action in front of the text. The field owns the action.
    QAction* AddLeadingAction(const QIcon& icon, const QString& toolTip);

    /// Like QLineEdit's function, which is not virtual, with the host's icon. QLineEdit would ask
    /// the style for an icon of its own, for which Qt loads every plug-in for images.
    void setClearButtonEnabled(bool enable);

protected:
    void changeEvent(QEvent* event) override;

private:
    QAction* clearAction() const;
    void clearAsUser();
    void updateClearAction();
};
