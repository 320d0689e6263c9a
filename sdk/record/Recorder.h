#pragma once

#include "sdk/record/TraceWriter.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class CInputRecorder;
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
///     auto* area = recorder.record(static_cast<ITargetSelectAreaInterface*>(layer));
///     area->m_controlHandler = recorder.record(handler);      // and use `area` from now on
///     area->Initialize();
///
/// Without an open file everything is returned as it is. GUI thread.
class CRecorder final : public QObject
{
    Q_OBJECT

public:
    explicit CRecorder(QObject* parent = nullptr);
    ~CRecorder() override;

    /// See CTraceWriter::open().
    bool open(const QString& path, QString& problem);

    bool isOpen() const { return m_writer->isOpen(); }

    /// Returns whether lines are missing in the file.
    bool hasFailed() const { return m_writer->hasFailed(); }

    /// Returns a handler that records and passes everything on to `handler`. A host that replaces
    /// its handler records the new one, too.
    std::shared_ptr<ITargetSelectInterfaceHandler>
    record(std::shared_ptr<ITargetSelectInterfaceHandler> handler);

    /// Returns a layer that records and passes everything on to `layer`, and starts to record what
    /// the user does on the panel's widget. It lives until the next call, forget()
    /// or the end of the recorder. Call it again for the panel of another TargetSelectArea_Init.
    ITargetSelectAreaInterface* record(ITargetSelectAreaInterface* layer);

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
    QPointer<QWidget> m_panel;
};
