#include "sdk/record/Recorder.h"

#include "sdk/record/InputRecorder.h"
#include "sdk/record/RecordingHandler.h"
#include "sdk/record/RecordingLayer.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QLocale>
#include <QVariant>
#include <QWidget>

#include <utility>

CRecorder::CRecorder(QObject* parent)
    : QObject(parent)
    , m_writer(std::make_shared<CTraceWriter>())
{
}

CRecorder::~CRecorder() = default;

bool CRecorder::open(const QString& path, QString& problem)
{
    if (!isOpen()) {
        // Lines are written on several threads, perhaps beyond the end of this object, which lives
        // on the GUI thread.
        m_writer->onFailure = [self = QPointer<CRecorder>(this)](const QString& reason) {
            const auto tell = [self, reason] {
                if (self)
                    emit self->failed(reason);
            };
            QMetaObject::invokeMethod(QCoreApplication::instance(), tell, Qt::QueuedConnection);
        };
    }
    if (!m_writer->open(path, problem))
        return false;
    m_input = new CInputRecorder(m_writer, this);
    return true;
}

std::shared_ptr<ITargetSelectInterfaceHandler>
CRecorder::record(std::shared_ptr<ITargetSelectInterfaceHandler> handler)
{
    if (!isOpen() || !handler)
        return handler;
    m_handlers.push_back(
        m_handlers.empty()
            ? std::make_shared<CRecordingHandler>(std::move(handler), m_writer)
            : std::make_shared<CRecordingHandler>(std::move(handler), *m_handlers.back()));
    return m_handlers.back()->forHost();
}

ITargetSelectAreaInterface* CRecorder::record(ITargetSelectAreaInterface* layer)
{
    QWidget* panel = layer ? layer->GetWidget() : nullptr;
    if (!isOpen() || !panel)
        return layer;
    const bool isNew = m_panel != panel;
    const bool isInitialized = !isNew && m_layer && m_layer->isInitialized();
    m_layer = std::make_unique<CRecordingLayer>(*layer, m_writer, isInitialized);
    m_panel = panel;
    m_input->watch(panel);
    if (!isNew)
        return m_layer.get();
    {
        const CTraceScope scope(
            *m_writer, CTraceEntry::Kind::Layer, QStringLiteral("TargetSelectArea_Init"),
            {{QStringLiteral("libraryVersion"), panel->property("libraryVersion").toString()},
             {QStringLiteral("locale"), QLocale().name()},
             {QStringLiteral("width"), panel->width()},
             {QStringLiteral("height"), panel->height()}});
    }
    connect(panel, &QObject::destroyed, this, &CRecorder::noteEnd);
    return m_layer.get();
}

void CRecorder::passHandlerOn()
{
    if (m_layer && m_panel)
        m_layer->passHandlerOn();
}

void CRecorder::forget()
{
    m_layer.reset();
}

void CRecorder::noteEnd()
{
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("Destroy"), {});
    m_input->watch(nullptr);
}
