#pragma once

#include "host/workbench/session/RecoveryFile.h"

#include <QObject>
#include <QTimer>

class FileCommands;
class ProjectStore;
class QWidget;

/// Keeps a copy of a project with unsaved changes, and offers the copies that crashed programs have
/// left. The copy is written some seconds after a change and removed when nothing is unsaved any
/// more, or when this object is destroyed. GUI thread.
class Autosave final : public QObject
{
    Q_OBJECT

public:
    /// The arguments must outlive this object.
    Autosave(QWidget& window, FileCommands& files, ProjectStore& store);
    ~Autosave() override;

    /// Asks about each copy that is left: recover, discard, or later. Recovering ends it, because
    /// only one project is open. A damaged copy is refused and kept.
    void offerRecovery();

private:
    enum class Answer { Recover, Discard, Later };

    void follow();
    void write();
    Answer ask(const RecoveryNote& note);
    bool recover(RecoveryFile& left);

    QWidget& m_window;
    FileCommands& m_files;
    ProjectStore& m_store;
    RecoveryFile m_file;
    QTimer m_timer;
};
