#pragma once

#include "sdk/record/TraceWriter.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <vector>

class CInputRecorder;
class CRecordingHandler;
class CRecordingLayer;
class ITargetSelectAreaInterface;
class ITargetSelectInterfaceHandler;
class QWidget;

/// Records a panel in a host: the calls of the panel, the host's events, the host's calls to the
/// panel, and what the user does with it. Replay the file with `workbench --replay`.
///
///     CRecorder recorder;                                     // outlives the panel
///     if (!recorder.open(path, problem)) ...
///     TargetSelectArea_Init(&layer, parent);
///     auto* area = recorder.record(dynamic_cast<ITargetSelectAreaInterface*>(layer));
///     area->m_controlHandler = recorder.record(handler);
///     area->Initialize();                                     // use `area` from now on
///
/// Without an open file everything is returned as it is. GUI thread.
class CRecorder final : public QObject
{
    Q_OBJECT

public:
    explicit CRecorder(QObject* parent = nullptr);
    ~CRecorder() override;

    /// Starts the recording, once: see CTraceWriter::open().
    bool open(const QString& path, QString& problem);

    bool isOpen() const { return m_writer->isOpen(); }

    /// Returns whether lines are missing in the file.
    bool hasFailed() const { return m_writer->hasFailed(); }

    /// Returns a handler that records and passes everything on to `handler`, and keeps it alive as
    /// long as it lives itself. A host that replaces its handler records the new one, too.
    std::shared_ptr<ITargetSelectInterfaceHandler>
    record(std::shared_ptr<ITargetSelectInterfaceHandler> handler);

    /// Returns a layer that records and passes everything on to `layer`, and starts to record what
    /// the user does on the panel's widget. It lives until the next call, forget()
    /// or the end of the recorder. Call it again for the panel of another TargetSelectArea_Init.
    ITargetSelectAreaInterface* record(ITargetSelectAreaInterface* layer);

    /// Lets the panel use the handler that the host has assigned to the layer of record(). Other
    /// calls of that layer do so, too: only a host that makes none of them calls this one.
    void passHandlerOn();

    /// Drops the layer of record(), with the handler that was assigned to it.
    void forget();

signals:
    /// Emitted once, for the first line that could not be written.
    void failed(const QString& problem);

private:
    void noteEnd();

    const std::shared_ptr<CTraceWriter> m_writer;
    CInputRecorder* m_input = nullptr; // Qt child
    std::unique_ptr<CRecordingLayer> m_layer;
    std::vector<std::shared_ptr<CRecordingHandler>> m_handlers;
    QPointer<QWidget> m_panel;
};
