#pragma once

#include "host/workbench/events/Notifier.h"
#include "host/workbench/faults/FaultPlan.h"
#include "host/workbench/faults/FaultThread.h"
#include "host/workbench/session/PanelLibrary.h"
#include "host/workbench/store/History.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/trace/TraceModel.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

class CRecorder;
class ITargetSelectAreaInterface;
class FaultyHandler;
class WorkbenchHandler;

/// The host apart from its window: the project, the handler, the notifying thread and the log.
/// Loads, creates and destroys the panel. GUI thread.
class Session final : public QObject
{
    Q_OBJECT

public:
    explicit Session(QObject* parent = nullptr);

    /// Destroys the panel and waits until no thread is inside the handler.
    ~Session() override;

    TraceModel& trace() { return m_trace; }
    Notifier& notifier() { return m_notifier; }
    ProjectStore& store() { return m_store; }
    History& history() { return m_history; }
    PanelLibrary& library() { return m_library; }
    FaultPlan& faults() { return m_faults; }

    /// Returns what records the panels that are opened after its open().
    CRecorder& recorder() { return *m_recorder; }

    /// Returns the layer interface of the panel, or null if there is no panel.
    ITargetSelectAreaInterface* layer() const;

    /// Creates the panel as a child of `parent`, assigns the handler, initialises the panel and
    /// announces the project. Returns the widget, or null if the library returns no panel.
    QWidget* openPanel(QWidget* parent);

    /// Destroys the panel, as a host does when it closes the layer.
    void closePanel();

    /// Ends the detection in progress, if there is one. The end of the panel does so, too.
    void cancelDetection();
    bool isDetecting() const;

    /// Returns whether the panel shows the project: the same groups in the same order, each with
    /// the same processors.
    bool panelShowsProject() const;

signals:
    /// Emitted when the panel asks for a notice to be shown.
    void tip(const QString& text);

    /// Reports the progress of a detection, which is finished when both numbers are equal.
    void detectionProceeded(int done, int total);

    /// Emitted when a detection has ended before its end, after it found that many processors.
    void detectionCancelled(int found);

    /// Emitted when a fault of the host destroys the panel, which may be inside its question.
    void panelEndWanted();

    /// Emitted when the user asks for the lines of the log that contain these words.
    void logWanted(const QString& words);

private:
    std::shared_ptr<FaultyHandler> makeHandler();

    TraceModel m_trace;
    Notifier m_notifier{m_trace};
    ProjectStore m_store{m_notifier};
    History m_history{m_store};
    FaultPlan m_faults; // before the handler, which threads of the panel may use last
    std::shared_ptr<WorkbenchHandler> m_handler;
    FaultThread m_faultThread;
    std::shared_ptr<FaultyHandler> m_faultyHandler; // the one that the panel has
    PanelLibrary m_library;
    std::unique_ptr<CRecorder> m_recorder;
    ITargetSelectAreaInterface* m_layer = nullptr; // the panel's, valid while m_panel is
    QPointer<QWidget> m_panel;
};
