#pragma once

#include <QObject>

class Actions;
class History;

/// Carries out the actions of the Edit menu, which name the step that they would undo or redo. A
/// field with the focus keeps its own undo. GUI thread.
class EditCommands final : public QObject
{
    Q_OBJECT

public:
    /// `actions` and `history` must outlive this object.
    EditCommands(Actions& actions, History& history, QObject* parent);

    /// Sets the texts in the current language.
    void retranslate();

private:
    Actions& m_actions;
    History& m_history;
};
