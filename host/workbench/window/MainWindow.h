#pragma once

#include <QMainWindow>

class Actions;
class DetectionStatus;
class Language;
class LayerCommands;
class LogPanel;
class FaultsPanel;
class EditCommands;
class FileCommands;
class RecordsPanel;
class Session;

/// The window of the workbench: the docked panel, the host's own view of the project, and the live
/// log.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    /// `session` and `language` must outlive the window.
    MainWindow(Session& session, Language& language, QWidget* parent = nullptr);
    ~MainWindow() override;

    Actions& actions() const { return *m_actions; }
    FileCommands& files() { return *m_files; }
    RecordsPanel& records() const { return *m_records; }
    LogPanel& log() const { return *m_log; }
    Session& session() { return m_session; }

    /// Puts the panel of the loaded library into its dock.
    void openPanel();

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildCentre();
    void buildLogDock();
    void buildFaultsDock();
    void connectViewActions();
    void connectLanguage(Language& language);
    void focusPanel();
    void nameTabs();
    void retranslate();

    Session& m_session;
    RecordsPanel* m_records;      // Qt child
    LogPanel* m_log;              // Qt child
    QDockWidget* m_logDock;       // Qt child
    FaultsPanel* m_faults;        // Qt child
    QDockWidget* m_faultsDock;    // Qt child
    DetectionStatus* m_detection; // the status bar's
    Actions* m_actions;           // Qt child
    EditCommands* m_edit;         // Qt child
    FileCommands* m_files;        // Qt child
    LayerCommands* m_layer;       // Qt child
};
