#include "sdk/record/RecordingHandler.h"

#include "sdk/record/TraceValues.h"

#include <QAction>
#include <QJsonArray>
#include <QMenu>

#include <utility>

namespace {

/// Returns the texts of the entries of `menu` after the first `known` ones; separators are null.
QJsonArray entriesAfter(int known, const QMenu& menu)
{
    QJsonArray texts;
    const QList<QAction*> actions = menu.actions().mid(known);
    for (const QAction* action : actions)
        texts.append(action->isSeparator() ? QJsonValue() : QJsonValue(action->text()));
    return texts;
}

} // namespace

CRecordingHandler::CRecordingHandler(std::shared_ptr<ITargetSelectInterfaceHandler> host,
                                     std::shared_ptr<CTraceWriter> writer)
    : CHandlerRelay(std::move(host))
    , m_writer(std::move(writer))
{
}

CRecordingHandler::CRecordingHandler(std::shared_ptr<ITargetSelectInterfaceHandler> host,
                                     const CRecordingHandler& former)
    : CHandlerRelay(std::move(host), former)
    , m_writer(former.m_writer)
{
}

std::shared_ptr<ITargetSelectInterfaceHandler> CRecordingHandler::forHost()
{
    const auto self = std::static_pointer_cast<CRecordingHandler>(shared_from_this());
    return {this, [self](ITargetSelectInterfaceHandler*) { self->releaseHost(); }};
}

CHandlerRelay::Answer CRecordingHandler::call(const Call& call, const Ask& ask)
{
    CTraceScope scope(*m_writer, CTraceEntry::Kind::Call, QLatin1String(call.operation.name),
                      TraceValues::arguments(call),
                      call.operation.kind == Operations::Kind::Question);
    const QMenu* menu = nullptr;
    for (const QVariant& argument : call.arguments)
        menu = menu ? menu : argument.value<QMenu*>();
    const int known = menu ? menu->actions().size() : 0;
    Answer answer = ask();
    QJsonObject outs = TraceValues::outs(call.operation, answer);
    if (menu)
        outs.insert(QStringLiteral("entries"), entriesAfter(known, *menu));
    scope.setAnswer(TraceValues::result(answer), outs);
    return answer;
}

void CRecordingHandler::event(const Events::Event& event, const Deliver& deliver)
{
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Event,
                            QLatin1String(Events::name(event.number)),
                            TraceValues::eventArguments(event));
    deliver();
}
