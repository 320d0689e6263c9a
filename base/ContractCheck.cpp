#include "base/ContractCheck.h"

#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "host/common/AppendLog.h"

#include <QHash>
#include <QThread>

#include <array>
#include <mutex>
#include <utility>

namespace {

using ContractCheck::Finding;

struct Entry
{
    Finding finding;
    char kind;
    const char* title;
};

constexpr std::array<Entry, ContractCheck::kFindings> kEntries{{
    {Finding::NoHandler, 'E', "No handler"},
    {Finding::ForeignHandler, 'E', "Handler of another class"},
    {Finding::NoEvent, 'W', "No event after Initialize"},
    {Finding::EventBeforeInitialize, 'E', "Event before Initialize"},
    {Finding::HandlerReplaced, 'E', "Handler replaced without Reconnect"},
    {Finding::NoApplication, 'E', "No QApplication"},
    {Finding::InitOnWrongThread, 'E', "TargetSelectArea_Init on a wrong thread"},
    {Finding::NullParent, 'W', "No parent"},
    {Finding::CallOnWrongThread, 'E', "Layer operation on a wrong thread"},
    {Finding::NeverShown, 'W', "Panel is not shown"},
    {Finding::TwoParents, 'W', "Panel is moved to another parent"},
    {Finding::PanelIsDead, 'E', "Layer is used after the panel's death"},
    {Finding::ArgumentType, 'E', "Argument of another type"},
    {Finding::UnknownNumber, 'W', "Event number without meaning"},
    {Finding::NotInTree, 'W', "Event about a row that the tree does not hold"},
    {Finding::AlreadyInTree, 'W', "Addition of a row that the tree holds"},
    {Finding::UnknownIdentity, 'W', "Handler does not know the identity"},
    {Finding::ForeignIdentity, 'E', "Record of another identity"},
    {Finding::NullIdentity, 'E', "Null identity"},
    {Finding::RepeatedIdentity, 'E', "Repeated identity"},
    {Finding::Contradiction, 'E', "Handler still knows what was removed"},
    {Finding::UnknownGroup, 'W', "Processor of an unknown group"},
    {Finding::SlowAnswer, 'W', "Slow answer"},
    {Finding::EventWaited, 'W', "Event takes effect late"},
    {Finding::NoFollowUp, 'W', "Request without an event"},
    {Finding::NotCarriedOut, 'W', "Request is not carried out"},
    {Finding::Exception, 'E', "Exception from the handler"},
    {Finding::EventWithoutPanel, 'W', "Event without a panel"},
    {Finding::UnequalLists, 'E', "Lists of unequal length"},
}};

const Entry& entry(Finding finding)
{
    return kEntries.at(static_cast<std::size_t>(finding) - 1);
}

std::atomic<bool> fatal{false};

std::optional<quint32>& currentEvent()
{
    static thread_local std::optional<quint32> event;
    return event;
}

struct Counts
{
    std::mutex mutex;
    QHash<QString, int> ofLine;
};

// Never destroyed: other threads may report while the process ends.
Counts& counts()
{
    static auto* const instance = new Counts;
    return *instance;
}

int& probes()
{
    static thread_local int nested = 0;
    return nested;
}

/// Counts `line`, and returns the count if it is worth a line in the log, else 0.
int worthTelling(const QString& line)
{
    const std::lock_guard guard(counts().mutex);
    int count = ++counts().ofLine[line];
    const int told = count;
    while (count % 10 == 0)
        count /= 10;
    return count == 1 ? told : 0;
}

QString threadName()
{
    if (isGuiThread())
        return QStringLiteral("GUI thread");
    const auto number = reinterpret_cast<quintptr>(QThread::currentThreadId());
    return QStringLiteral("thread 0x%1").arg(number, 0, 16);
}

} // namespace

std::atomic<bool> ContractCheck::switchedOn{false};

QString ContractCheck::code(Finding finding)
{
    return QStringLiteral("TSA-%1%2")
        .arg(QLatin1Char(entry(finding).kind))
        .arg(static_cast<int>(finding), 2, 10, QLatin1Char('0'));
}

QString ContractCheck::title(Finding finding)
{
    return QString::fromLatin1(entry(finding).title);
}

void ContractCheck::configure()
{
    const QByteArray wish = qgetenv("TARGETSELECT_CHECK").trimmed().toLower();
    fatal = wish == "fatal";
    {
        const std::lock_guard guard(counts().mutex);
        counts().ofLine.clear();
    }
    switchedOn = fatal || (!wish.isEmpty() && wish != "0") || lcCheck().isInfoEnabled();
}

void ContractCheck::report(Finding finding, const QString& what, std::optional<quint32> event)
{
    if (!isOn())
        return;
    const QString told = QStringLiteral("%1 %2: %3").arg(code(finding), title(finding), what);
    const int count = worthTelling(told);
    if (count == 0)
        return;
    if (!event)
        event = currentEvent();
    QStringList details;
    if (event)
        details.append(QStringLiteral("event %1").arg(*event));
    details.append(threadName());
    if (count > 1)
        details.append(QStringLiteral("time %1").arg(count));
    const QByteArray line =
        QStringLiteral("%1 [%2]").arg(told, details.join(QLatin1String(", "))).toUtf8();
    AppendLog("ContractCheck", __FILE__, __LINE__, line.constData());
    if (fatal)
        qFatal("%s", line.constData());
    qCWarning(lcCheck, "%s", line.constData());
}

ContractCheck::EventScope::EventScope(std::optional<quint32> event)
    : m_outer(std::exchange(currentEvent(), event))
{
}

ContractCheck::EventScope::~EventScope()
{
    currentEvent() = m_outer;
}

bool ContractCheck::EventScope::isUnderWay()
{
    return currentEvent().has_value();
}

ContractCheck::Probe::Probe()
{
    ++probes();
}

ContractCheck::Probe::~Probe()
{
    --probes();
}

bool ContractCheck::Probe::isUnderWay()
{
    return probes() > 0;
}
