#pragma once

#include <QList>
#include <QObject>
#include <QUuid>

class Actions;
class QWidget;
class RecordsPanel;
class Session;

/// What the user of the host does to the project: the actions of the Change and Events menus, which
/// act on the rows selected on the host's side. GUI thread.
class ChangeCommands final : public QObject
{
    Q_OBJECT

public:
    /// `window` owns this; the others outlive it.
    ChangeCommands(QWidget* window, Actions& actions, RecordsPanel& records, Session& session);

private:
    void connectSelectionActions();
    void connectProjectActions();
    void connectEventActions();
    void updateEnabled();

    QList<QUuid> processors() const;
    void addProcessor();
    void remove();
    void rename();
    void moveToGroup();
    void changeAddress();
    void askLanUsb();

    QWidget* m_window; // owner
    Actions& m_actions;
    RecordsPanel& m_records;
    Session& m_session;
};
