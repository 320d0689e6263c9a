#include "host/workbench/window/EditCommands.h"

#include "host/workbench/dialogs/PlainText.h"
#include "host/workbench/store/History.h"
#include "host/workbench/window/Actions.h"

EditCommands::EditCommands(Actions& actions, History& history, QObject* parent)
    : QObject(parent)
    , m_actions(actions)
    , m_history(history)
{
    connect(actions[ActionId::Undo], &QAction::triggered, &history, &History::undo);
    connect(actions[ActionId::Redo], &QAction::triggered, &history, &History::redo);
    connect(&history, &History::changed, this, &EditCommands::retranslate);
}

void EditCommands::retranslate()
{
    const bool canUndo = m_history.canUndo();
    const bool canRedo = m_history.canRedo();
    const auto name = [](const ChangeTitle& title) {
        return PlainText::menuEntry(changeTitleText(title));
    };
    m_actions[ActionId::Undo]->setEnabled(canUndo);
    m_actions[ActionId::Undo]->setText(canUndo ? tr("&Undo %1").arg(name(m_history.undoTitle()))
                                               : tr("&Undo"));
    m_actions[ActionId::Redo]->setEnabled(canRedo);
    m_actions[ActionId::Redo]->setText(canRedo ? tr("&Redo %1").arg(name(m_history.redoTitle()))
                                               : tr("&Redo"));
}
