#pragma once

#include "sdk/record/TraceWriter.h"
#include "sdk/relay/HandlerRelay.h"

#include <memory>

/// Records each call of the panel and each event of the host, and passes them on unchanged.
class CRecordingHandler final : public CHandlerRelay
{
public:
    /// `writer` lives as long as this object.
    CRecordingHandler(std::shared_ptr<ITargetSelectInterfaceHandler> host,
                      std::shared_ptr<CTraceWriter> writer);

    /// Takes the place of `former`, and records what comes to its observer from then on.
    CRecordingHandler(std::shared_ptr<ITargetSelectInterfaceHandler> host,
                      const CRecordingHandler& former);

    /// Returns what a host assigns instead of its handler. It lets go of that one when it goes
    /// itself; events that the host still tells then are recorded as long as this object exists.
    std::shared_ptr<ITargetSelectInterfaceHandler> forHost();

protected:
    Answer call(const Call& call, const Ask& ask) override;
    void event(const Events::Event& event, const Deliver& deliver) override;

private:
    const std::shared_ptr<CTraceWriter> m_writer;
};
