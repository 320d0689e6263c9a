#pragma once

#include "host/workbench/events/Notifier.h"
#include "host/workbench/session/PanelLibrary.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/trace/TraceModel.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

class ITargetSelectAreaInterface;
class WorkbenchHandler;

/// Everything of a host but its window: the project, the handler, the notifying thread, the log,
/// and the panel's life from loading to destruction. GUI thread.
class Session final : public QObject
{
    Q_OBJECT

public:
    explicit Session(QObject* parent = nullptr);

    /// Destroys the panel and waits until nobody is inside the handler any more.
    ~Session() override;

    TraceModel& trace() { return m_trace; }
    Notifier& notifier() { return m_notifier; }
    ProjectStore& store() { return m_store; }
    PanelLibrary& library() { return m_library; }

    /// The panel's layer interface; null while there is no panel.
    ITargetSelectAreaInterface* layer() const;

    /// Has the library build the panel below `parent`, gives it the handler, initialises it and
    /// announces the project. Returns its widget; null when the library has none to give.
    QWidget* openPanel(QWidget* parent);

    /// Destroys the panel, as a host does that closes the layer.
    void closePanel();

    /// Whether the panel holds what the project holds: the same groups in the same order, each with
    /// the same processors.
    bool panelShowsProject() const;

signals:
    /// The panel wants a notice shown.
    void tip(const QString& text);

    /// How far a detection is; it is over when both are equal.
    void detectionProceeded(int done, int total);

    /// The user wants the lines of the log that hold these words.
    void logWanted(const QString& words);

private:
    TraceModel m_trace;
    Notifier m_notifier{m_trace};
    ProjectStore m_store{m_notifier};
    std::shared_ptr<WorkbenchHandler> m_handler;
    PanelLibrary m_library;
    ITargetSelectAreaInterface* m_layer = nullptr; // the panel's, valid while m_panel is
    QPointer<QWidget> m_panel;
};
