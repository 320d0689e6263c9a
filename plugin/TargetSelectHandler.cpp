#include "plugin/TargetSelectHandler.h"

#include "plugin/GuiCalls.h"
#include "plugin/PanelStep.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"

namespace {

/// A handler while it is asked.
struct Question
{
    Question(std::shared_ptr<ITargetSelectInterfaceHandler> asked, CGuiCalls& calls)
        : handler(std::move(asked))
        , question(calls)
    {
    }

    std::shared_ptr<ITargetSelectInterfaceHandler> handler;
    CGuiCalls::CHostQuestion question;
    CPanelStep step;
};

} // namespace

std::shared_ptr<ITargetSelectInterfaceHandler> GetTargetSelectHandler()
{
    auto handler = std::dynamic_pointer_cast<ITargetSelectInterfaceHandler>(
        CTargetSelectArea::ControlHandler());
    if (!handler)
        return {};
    auto* const operations = handler.get();
    const auto question =
        std::make_shared<Question>(std::move(handler), CTargetSelectData::Instance()->guiCalls());
    return {question, operations};
}
