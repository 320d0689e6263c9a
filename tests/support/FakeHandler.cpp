#include "tests/support/FakeHandler.h"

#include <algorithm>
#include <utility>

namespace {

QString joined(const QList<QUuid>& ids)
{
    QStringList texts;
    for (const QUuid& id : ids)
        texts.append(id.toString());
    return texts.join(QLatin1Char(','));
}

/// The record of `id`, a default one when there is none.
template <typename Record>
Record recordOf(const QUuid& id, const QList<Record>& records)
{
    for (const Record& record : records) {
        if (record.id == id)
            return record;
    }
    return {};
}

} // namespace

void FakeHandler::doInside(const QString& question, std::function<void()> action)
{
    inside = [this, question, action = std::move(action)](const QString& asked) {
        if (asked != question)
            return;
        const auto once = action;
        inside = nullptr;
        once();
    };
}

QVector<FakeHandler::Call> FakeHandler::calls() const
{
    const std::lock_guard guard(m_mutex);
    return QVector<Call>(m_calls.begin(), m_calls.end());
}

QStringList FakeHandler::callNames() const
{
    QStringList names;
    for (const Call& call : calls())
        names.append(call.name);
    return names;
}

int FakeHandler::callCount(const QString& name) const
{
    return callNames().count(name);
}

void FakeHandler::clearCalls()
{
    const std::lock_guard guard(m_mutex);
    m_calls.clear();
}

void FakeHandler::setProject(const QList<ProcessorGroupNode>& groups,
                             const QList<ProcessorNode>& processors)
{
    const std::lock_guard guard(m_mutex);
    m_groups.assign(groups.begin(), groups.end());
    m_processors.assign(processors.begin(), processors.end());
}

void FakeHandler::setProcessor(const ProcessorNode& processor)
{
    const std::lock_guard guard(m_mutex);
    for (ProcessorNode& known : m_processors) {
        if (known.id == processor.id) {
            known = processor;
            return;
        }
    }
    m_processors.push_back(processor);
}

void FakeHandler::setGroup(const ProcessorGroupNode& group)
{
    const std::lock_guard guard(m_mutex);
    for (ProcessorGroupNode& known : m_groups) {
        if (known.id == group.id) {
            known = group;
            return;
        }
    }
    m_groups.push_back(group);
}

void FakeHandler::removeProcessor(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    const auto isIt = [&](const ProcessorNode& known) { return known.id == id; };
    m_processors.erase(std::remove_if(m_processors.begin(), m_processors.end(), isIt),
                       m_processors.end());
}

void FakeHandler::removeGroup(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    const auto isIt = [&](const ProcessorGroupNode& known) { return known.id == id; };
    m_groups.erase(std::remove_if(m_groups.begin(), m_groups.end(), isIt), m_groups.end());
    for (ProcessorNode& processor : m_processors) {
        if (processor.groupId == id)
            processor.groupId = QUuid();
    }
}

QList<ProcessorNode> FakeHandler::processors() const
{
    const std::lock_guard guard(m_mutex);
    return QList<ProcessorNode>(m_processors.begin(), m_processors.end());
}

QList<ProcessorGroupNode> FakeHandler::groups() const
{
    const std::lock_guard guard(m_mutex);
    return QList<ProcessorGroupNode>(m_groups.begin(), m_groups.end());
}

void FakeHandler::note(const char* name, const QString& argument)
{
    const QString text = QString::fromLatin1(name);
    {
        const std::lock_guard guard(m_mutex);
        m_calls.push_back({text, argument, QThread::currentThread()});
    }
    if (inside)
        inside(text);
}

/// `answer`, after the test had its say.
template <typename Answer>
Answer FakeHandler::fixed(const char* name, const QUuid& id, Answer answer)
{
    if (answered)
        answered(QString::fromLatin1(name), id);
    return answer;
}

void FakeHandler::SetObserver(CObserver* newObserver)
{
    note("SetObserver");
    observer = newObserver;
}

void FakeHandler::AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                    QMenu* menu)
{
    note("AppendContextMenu", QString::number(type) + QLatin1Char(',') + id.toString()
                                  + QLatin1String(readOnly ? ",true" : ",false"));
    if (appendEntries)
        appendEntries(*menu);
}

quint32 FakeHandler::DetectAllDevices()
{
    note("DetectAllDevices");
    return detectResult;
}

void FakeHandler::DetectProcessorsOnly()
{
    note("DetectProcessorsOnly");
}

QString FakeHandler::GetDeviceSetText(const SDeviceSetInfo& set)
{
    note("GetDeviceSetText");
    return QStringLiteral("Set %1").arg(set.id.Data1);
}

bool FakeHandler::ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index)
{
    note("ConfirmDeviceSetChange", QString::number(index));
    Q_UNUSED(set)
    return confirmDeviceSet;
}

int FakeHandler::GetDeviceSetTexts(QStringList& texts)
{
    note("GetDeviceSetTexts");
    texts = deviceSetTexts;
    return deviceSetTextCount.value_or(texts.size());
}

bool FakeHandler::ShowProcessorMoreButton()
{
    note("ShowProcessorMoreButton");
    return showProcessorMoreButton;
}

bool FakeHandler::ShowNodeMoreButton()
{
    note("ShowNodeMoreButton");
    return showNodeMoreButton;
}

QList<ProcessorNode> FakeHandler::GetAllProcessorNodes()
{
    note("GetAllProcessorNodes");
    return fixed("GetAllProcessorNodes", QUuid(), processors());
}

QList<ProcessorGroupNode> FakeHandler::GetAllGroupNodes()
{
    note("GetAllGroupNodes");
    return fixed("GetAllGroupNodes", QUuid(), groups());
}

ProcessorGroupNode FakeHandler::GetGroupNode(const QUuid& id)
{
    note("GetGroupNode", id.toString());
    return fixed("GetGroupNode", id, answerGroup.value_or(recordOf(id, groups())));
}

void FakeHandler::AddProcessors(const QUuid& group, int count)
{
    note("AddProcessors", group.toString() + QLatin1Char(',') + QString::number(count));
}

void FakeHandler::DeleteProcessors(const QList<QUuid>& ids)
{
    note("DeleteProcessors", joined(ids));
}

void FakeHandler::SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                    const QList<QUuid>& ids)
{
    note("SetProcessorGroup", groupId.toString());
    memberships.append({group, groupId, ids});
}

ProcessorNode FakeHandler::GetProcessorNode(const QUuid& id)
{
    note("GetProcessorNode", id.toString());
    return fixed("GetProcessorNode", id, answerProcessor.value_or(recordOf(id, processors())));
}

bool FakeHandler::CanRenameProcessor(const QUuid& id)
{
    note("CanRenameProcessor", id.toString());
    return canRename;
}

bool FakeHandler::CanAddProcessors(const ProcessorNode& first)
{
    note("CanAddProcessors", first.name);
    return canAdd;
}

bool FakeHandler::IsAddProcessorsEnabled(const ProcessorNode& first)
{
    note("IsAddProcessorsEnabled", first.name);
    return addEnabled;
}

bool FakeHandler::RenameProcessor(const QUuid& id, const QString& name)
{
    note("RenameProcessor", id.toString() + name);
    return acceptRename;
}

void FakeHandler::SetNewProcessorOutputs(int outputs)
{
    note("SetNewProcessorOutputs", QString::number(outputs));
}

QUuid FakeHandler::CreateGroup(const ProcessorGroupNode& group)
{
    note("CreateGroup", group.name);
    if (refusesGroups)
        return {};
    return createdGroup.isNull() ? QUuid::createUuid() : createdGroup;
}

void FakeHandler::Ungroup(const QUuid& id)
{
    note("Ungroup", id.toString());
}

void FakeHandler::RenameGroup(const QUuid& id, const QString& name)
{
    note("RenameGroup", id.toString() + name);
}

void FakeHandler::ReportSelection(const QUuid& focus, const QList<QUuid>& ids,
                                  const QList<SGroupSelection>& byGroup, const QUuid& previous)
{
    selections.append({focus, ids, byGroup, previous});
    note("ReportSelection");
}

bool FakeHandler::IsRestrictedMode()
{
    note("IsRestrictedMode");
    return restrictedMode;
}

bool FakeHandler::IsDeleteBlocked(const QUuid& id)
{
    note("IsDeleteBlocked", id.toString());
    return deleteBlocked.contains(id);
}

bool FakeHandler::CheckProcessor(const ProcessorNode& processor)
{
    note("CheckProcessor", processor.name);
    return checkProcessor;
}

bool FakeHandler::UsesIpAddressing()
{
    note("UsesIpAddressing");
    return usesIpAddressing;
}

bool FakeHandler::IsLanUsbMode()
{
    note("IsLanUsbMode");
    return lanUsbMode;
}

QList<quint32> FakeHandler::GetLanUsbProcessorIps()
{
    note("GetLanUsbProcessorIps");
    return lanUsbIps;
}

int FakeHandler::GetNameMaxBytes()
{
    note("GetNameMaxBytes");
    return nameMaxBytes;
}

bool FakeHandler::IsNameUtf8()
{
    note("IsNameUtf8");
    return nameUtf8;
}

QUuid FakeHandler::GetCurrentProcessorId()
{
    note("GetCurrentProcessorId");
    return currentProcessor;
}

int FakeHandler::GetFixedOutputCount()
{
    note("GetFixedOutputCount");
    return fixedOutputCount;
}

int FakeHandler::GetSelectionMode()
{
    note("GetSelectionMode");
    return selectionMode;
}

QList<QUuid> FakeHandler::GetSelectedProcessors()
{
    note("GetSelectedProcessors");
    return selectedProcessors;
}

void FakeHandler::PreDeleteProcessors(const QList<QUuid>& ids)
{
    note("PreDeleteProcessors", joined(ids));
}

bool FakeHandler::AcceptProcessorForSnapshot(const ProcessorNode& processor)
{
    note("AcceptProcessorForSnapshot", processor.name);
    return acceptProcessor ? acceptProcessor(processor) : acceptForSnapshot;
}

void FakeHandler::ShowTipMessage(const QString& text)
{
    note("ShowTipMessage", text);
}

bool FakeHandler::IsFrontPanelHighlightAvailable()
{
    note("IsFrontPanelHighlightAvailable");
    return frontPanelAvailable;
}

bool FakeHandler::IsFrontPanelHighlighted(const QUuid& id)
{
    note("IsFrontPanelHighlighted", id.toString());
    return frontPanelLit;
}

void FakeHandler::SetFrontPanelHighlight(bool on)
{
    note("SetFrontPanelHighlight", QLatin1String(on ? "true" : "false"));
}
