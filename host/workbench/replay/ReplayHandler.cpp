#include "host/workbench/replay/ReplayHandler.h"

#include "host/common/WorkThread.h"
#include "sdk/record/TraceValues.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QMenu>
#include <QThread>

#include <utility>

namespace {

bool isGuiThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

/// Adds the entries of the recorded host, which do nothing.
void appendEntries(const CHandlerRelay::Call& call, const QJsonObject& outs)
{
    QMenu* menu = nullptr;
    for (const QVariant& argument : call.arguments)
        menu = menu ? menu : argument.value<QMenu*>();
    const QJsonArray entries = outs.value(QLatin1String("entries")).toArray();
    for (const QJsonValue& entry : entries) {
        if (menu && entry.isNull())
            menu->addSeparator();
        else if (menu)
            menu->addAction(entry.toString());
    }
}

} // namespace

ReplayHandler::ReplayHandler(std::shared_ptr<ReplayProgress> progress,
                             std::shared_ptr<ReplayHandler> former)
    : CHandlerRelay(nullptr)
    , m_progress(std::move(progress))
    , m_former(std::move(former))
{
}

void ReplayHandler::tell(const Events::Event& event) const
{
    if (m_former && !isObserved())
        m_former->tell(event);
    else
        tellPanel(event);
}

CHandlerRelay::Answer ReplayHandler::call(const Call& call, const Ask&)
{
    const QString name = QLatin1String(call.operation.name);
    const QJsonObject arguments = TraceValues::arguments(call);
    const bool isRequest = call.operation.kind == Operations::Kind::Request;
    const CTraceEntry* recorded =
        isRequest ? m_progress->takeRequest(name, arguments) : m_progress->answer(name, arguments);
    if (dynamic_cast<const CWorkThread*>(QThread::currentThread()))
        m_progress->countWorkQuestion();
    if (!recorded) {
        if (!isRequest)
            noteUnanswered(call);
        return {};
    }
    if (!isRequest && !isGuiThread())
        m_progress->waitForInputBefore(*recorded);
    // The panel may let go of its handler inside.
    const auto self = shared_from_this();
    doInside(*recorded);
    if (isRequest && isGuiThread() && goOnInside)
        goOnInside(*recorded);
    appendEntries(call, recorded->outs);
    Answer answer;
    TraceValues::readAnswer(call.operation, recorded->answer, recorded->outs, answer);
    return answer;
}

/// Does what the recorded host did inside this call on its own thread.
void ReplayHandler::doInside(const CTraceEntry& call)
{
    while (const CTraceEntry* inside = m_progress->takeInside(call, isGuiThread())) {
        if (inside->kind == CTraceEntry::Kind::Event) {
            Events::Event event;
            TraceValues::readEvent(inside->arguments, event);
            const ReplayProgress::Telling telling(inside->sequence);
            tell(event);
        } else if (callPanel) {
            callPanel(*inside);
        }
    }
}

/// Notes a question that the recording has no answer to. It is no difference by itself: whether the
/// panel still asks depends on how soon the next event comes, or its end. If the default answer
/// makes it behave otherwise, a request differs.
void ReplayHandler::noteUnanswered(const Call& call)
{
    if (m_progress->isOver() || (isGuiThread() && isPainting && isPainting()))
        return;
    m_progress->noteUnanswered(
        QLatin1String(call.operation.name) + QLatin1Char(' ')
        + QString::fromUtf8(TraceValues::compact(TraceValues::arguments(call))));
}
