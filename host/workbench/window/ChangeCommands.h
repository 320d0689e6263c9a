#pragma once

#include <QList>
#include <QObject>
#include <QUuid>

class Actions;
class QWidget;
class RecordsPanel;
class Session;

/// Carries out the actions of the Change and Events menus. They act on the records that are
/// selected in the host's own view. GUI thread.
class ChangeCommands final : public QObject
{
    Q_OBJECT

public:
    /// `window` is the parent; the other arguments must outlive this object.
    ChangeCommands(QWidget* window, Actions& actions, RecordsPanel& records, Session& session);

private:
    void connectSelectionActions();
    void connectProjectActions();
    void connectEventActions();
    void connectFields();
    void editField(const QUuid& id, const QString& field, const QString& text);
    void editIpEntry(int row, const QString& address, const QString& name);
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
