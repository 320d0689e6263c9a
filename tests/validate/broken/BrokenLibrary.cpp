#include "tests/validate/broken/Breakage.h"

#include "Interface/ObserverPattern"
#include "Interface/TargetSelectArea.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "Interface/TargetSelectHandlerBase.h"

#include <QLibrary>
#include <QPointer>

#include <atomic>
#include <cstdlib>
#include <future>
#include <memory>
#include <stdexcept>

/// The library under test, with something broken: each target has a name for what.

namespace {

/// Keeps the panel's observer, which the broken layer stands before.
class Catcher final : public CTargetSelectHandlerBase
{
public:
    CObserver* caught = nullptr;
    void SetObserver(CObserver* observer) override { caught = observer; }
};

class DeafObserver final : public CObserver
{
public:
    CObserver* panel = nullptr;

    void Update(CSubject* subject) override
    {
        if (isBroken("ignores-25") && subject->GetEvent() == 25)
            return;
        if (isBroken("loses-events") && subject->GetEvent() != 16 && ++m_events % 5 == 0)
            return;
        if (isBroken("crashes-in-18") && subject->GetEvent() == 18)
            std::abort();
        panel->Update(subject);
    }

private:
    std::atomic<int> m_events{0};
};

DeafObserver& deafObserver()
{
    static auto* const observer = new DeafObserver;
    return *observer;
}

class BrokenLayer;
BrokenLayer* g_layer = nullptr; // of the panel that lives, or that died last

class BrokenLayer final : public ITargetSelectAreaInterface
{
public:
    explicit BrokenLayer(IAbstractLayerInterface* whole)
        : m_whole(whole)
        , m_area(dynamic_cast<ITargetSelectAreaInterface*>(whole))
        , m_widget(whole->GetWidget())
    {
    }

    ~BrokenLayer() override
    {
        g_layer = nullptr;
        if (m_widget && !isBroken("immortal"))
            delete m_whole;
    }

    bool isDead() const { return m_widget.isNull(); }

    QWidget* GetWidget() override { return isBroken("no-widget") ? nullptr : m_whole->GetWidget(); }

    bool Initialize() override
    {
        if (isBroken("hangs"))
            std::promise<void>().get_future().wait();
        if (isBroken("exits"))
            std::_Exit(0);
        if (isBroken("warns"))
            qWarning("something is odd");
        if (isBroken("false-alarm"))
            AppendLog("Check", "", 0, "TSA-E18 Record of another identity: made up");
        if (!isBroken("ignores-25") && !isBroken("loses-events") && !isBroken("crashes-in-18"))
            return hand(isBroken("no-observer") ? std::make_shared<Catcher>() : m_controlHandler);
        const auto catcher = std::make_shared<Catcher>();
        hand(catcher);
        m_whole->m_controlHandler = m_controlHandler;
        deafObserver().panel = catcher->caught;
        m_controlHandler->SetObserver(&deafObserver());
        return true;
    }

    bool Reconnect() override
    {
        m_whole->m_controlHandler = m_controlHandler;
        return m_whole->Reconnect();
    }

    quint32 DetectDevices() override
    {
        if (isBroken("throws"))
            throw std::runtime_error("no devices");
        return isBroken("lazy") ? 0 : m_area->DetectDevices();
    }

    void GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted) override
    {
        m_area->GetProcessorTree(out, onlyAccepted);
        if (isBroken("loses-row") && !out.processors.isEmpty())
            out.processors.removeLast();
    }

    void SetReadOnly(bool readOnly) override { m_area->SetReadOnly(readOnly); }
    void SetCurrentProcessor(const QUuid& id) override { m_area->SetCurrentProcessor(id); }

private:
    bool hand(const std::shared_ptr<IAbstractControlInterface>& handler)
    {
        m_whole->m_controlHandler = handler;
        return m_whole->Initialize();
    }

    IAbstractLayerInterface* m_whole; // the panel's
    ITargetSelectAreaInterface* m_area;
    QPointer<QWidget> m_widget; // the panel's
};

TargetSelectAreaInit wholeInit()
{
    static QLibrary library(QStringLiteral(TSA_LIBRARY_FILE));
    return reinterpret_cast<TargetSelectAreaInit>(library.resolve(TARGETSELECTAREA_INIT_SYMBOL));
}

void breakWidget(QWidget* widget)
{
    if (isBroken("old-version"))
        widget->setProperty("interfaceVersion", TARGETSELECTAREA_INTERFACE_VERSION - 1);
    if (isBroken("leaks")) {
        // Kept where a leak check at the end of the process finds it.
        static auto* const kept = new QList<QByteArray>;
        kept->append(QByteArray(4096, 'x'));
    }
}

} // namespace

/// One export too many.
extern "C" Q_DECL_EXPORT int oneTooMany();
extern "C" int oneTooMany()
{
    return 1;
}

bool TargetSelectArea_Init(IAbstractLayerInterface** layer, QWidget* parent)
{
    if (isBroken("crashes"))
        std::abort();
    if (isBroken("accepts-null") && !layer)
        return true;
    if (isBroken("silent-checks"))
        qputenv("TARGETSELECT_CHECK", "0");
    if (isBroken("refuses"))
        return false;
    IAbstractLayerInterface* whole = nullptr;
    if (!wholeInit()(layer ? &whole : nullptr, parent))
        return isBroken("always-builds");
    if (g_layer && g_layer->isDead())
        delete g_layer;
    if (!g_layer)
        g_layer = new BrokenLayer(whole);
    *layer = g_layer;
    breakWidget(whole->GetWidget());
    return true;
}
