#include "host/workbench/window/ChangeCommands.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/dialogs/AddProcessorsDialog.h"
#include "host/workbench/dialogs/AnswersDialog.h"
#include "host/workbench/dialogs/DeviceSetsDialog.h"
#include "host/workbench/dialogs/NetworkDialog.h"
#include "host/workbench/dialogs/Prompts.h"
#include "host/workbench/dialogs/RaiseEventDialog.h"
#include "host/workbench/project/FieldEdit.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/RecordsPanel.h"

#include <algorithm>

namespace {

constexpr int kLastDetectStrategy = 99;

template <typename Test>
bool allOf(const ProjectStore& store, const QList<QUuid>& ids, const Test& test)
{
    return store.read([&](const Project& project) {
        return std::all_of(ids.begin(), ids.end(), [&](const QUuid& id) {
            const ProcessorNode* node = project.processor(id);
            return node && test(*node);
        });
    });
}

/// Returns why the record, or a new one, cannot have the name; empty if it can.
QString nameRefusal(const ProjectStore& store, const QUuid& id, const QString& name)
{
    return store.read([&](const Project& project) {
        return fieldRefusal(project, id, QStringLiteral("name"), name);
    });
}

} // namespace

ChangeCommands::ChangeCommands(QWidget* window, Actions& actions, RecordsPanel& records,
                               Session& session)
    : QObject(window)
    , m_window(window)
    , m_actions(actions)
    , m_records(records)
    , m_session(session)
{
    connectSelectionActions();
    connectProjectActions();
    connectEventActions();
    connectFields();
    connect(&records, &RecordsPanel::selectionChanged, this, &ChangeCommands::updateEnabled);
    updateEnabled();
}

void ChangeCommands::connectSelectionActions()
{
    ProjectStore* store = &m_session.store();
    connect(m_actions[ActionId::Remove], &QAction::triggered, this, &ChangeCommands::remove);
    connect(m_actions[ActionId::Rename], &QAction::triggered, this, &ChangeCommands::rename);
    connect(m_actions[ActionId::MoveToGroup], &QAction::triggered, this,
            &ChangeCommands::moveToGroup);
    connect(m_actions[ActionId::GoOnline], &QAction::triggered, this,
            [this, store] { store->setOnline(processors(), true); });
    connect(m_actions[ActionId::GoOffline], &QAction::triggered, this,
            [this, store] { store->setOnline(processors(), false); });
    connect(m_actions[ActionId::ChangeAddress], &QAction::triggered, this,
            &ChangeCommands::changeAddress);
    for (const auto& [id, mode] :
         {std::pair(ActionId::ToggleHasBackup, 1), std::pair(ActionId::ToggleBackup, 2)}) {
        connect(m_actions[id], &QAction::triggered, this, [this, store, wanted = mode] {
            const auto ids = processors();
            const bool isSo = allOf(*store, ids, [&](const ProcessorNode& node) {
                return node.redundancyMode == wanted;
            });
            store->setRedundancyMode(ids, isSo ? 0 : wanted);
        });
    }
    connect(m_actions[ActionId::ToggleProtected], &QAction::triggered, this, [this, store] {
        const auto ids = processors();
        store->setProtected(
            ids, !allOf(*store, ids, [](const ProcessorNode& node) { return node.hostFlag13; }));
    });
    connect(m_actions[ActionId::ToggleMonitorWarning], &QAction::triggered, this, [this, store] {
        const auto ids = processors();
        store->setMonitorWarning(
            ids, !allOf(*store, ids, [](const ProcessorNode& node) { return node.hostFlag17; }));
    });
    connect(m_actions[ActionId::MakeCurrent], &QAction::triggered, this,
            [this, store] { store->setCurrentProcessor(processors().value(0)); });
}

void ChangeCommands::connectProjectActions()
{
    ProjectStore* store = &m_session.store();
    connect(m_actions[ActionId::AddProcessor], &QAction::triggered, this,
            &ChangeCommands::addProcessor);
    connect(m_actions[ActionId::AddProcessors], &QAction::triggered, this, [this, store] {
        (new AddProcessorsDialog(*store, m_records.currentGroup(), m_window))->open();
    });
    connect(m_actions[ActionId::AddGroup], &QAction::triggered, this, [this, store] {
        const int count = store->read([](const Project& project) { return project.groups.size(); });
        askText(m_window, tr("Add group"), tr("Name of the group"), tr("Group %1").arg(count + 1),
                [this, store](const QString& name) {
                    const QString problem = nameRefusal(*store, QUuid(), name);
                    if (!problem.isEmpty()) {
                        showProblem(m_window, problem);
                        return;
                    }
                    ProcessorGroupNode group;
                    group.name = name;
                    const QUuid added = store->addGroup(group);
                    if (added.isNull())
                        showProblem(m_window, tr("The project holds no more groups."));
                    m_records.select({added});
                });
    });
    connect(m_actions[ActionId::DeviceSets], &QAction::triggered, this,
            [this, store] { (new DeviceSetsDialog(*store, m_window))->open(); });
    connect(m_actions[ActionId::DetectStrategy], &QAction::triggered, this, [this, store] {
        askNumber(m_window, tr("Detection strategy"), tr("Number of the strategy"),
                  store->snapshot().answers.detectStrategy, 0, kLastDetectStrategy,
                  [store](int strategy) { store->setDetectStrategy(strategy); });
    });
    connect(m_actions[ActionId::LanUsb], &QAction::triggered, this, &ChangeCommands::askLanUsb);
    connect(m_actions[ActionId::Network], &QAction::triggered, this,
            [this, store] { (new NetworkDialog(*store, m_window))->open(); });
    connect(m_actions[ActionId::HandlerAnswers], &QAction::triggered, this,
            [this, store] { (new AnswersDialog(*store, m_window))->open(); });
}

void ChangeCommands::connectEventActions()
{
    Notifier* notifier = &m_session.notifier();
    connect(m_actions[ActionId::RaiseEvent], &QAction::triggered, this, [this, notifier] {
        auto* dialog = new RaiseEventDialog(m_session.store().snapshot(),
                                            processors() + m_records.selectedGroups(), m_window);
        connect(dialog, &RaiseEventDialog::chosen, this,
                [notifier](const HostEvent& event) { notifier->raise(event); });
        dialog->open();
    });
    connect(m_actions[ActionId::AnnounceProject], &QAction::triggered, &m_session.store(),
            &ProjectStore::announceAll);
    connect(m_actions[ActionId::GuiThreadEvents], &QAction::toggled, this, [notifier](bool on) {
        notifier->setDelivery(on ? Notifier::Delivery::GuiThread
                                 : Notifier::Delivery::NotifyingThread);
    });
}

void ChangeCommands::connectFields()
{
    connect(&m_records, &RecordsPanel::fieldEdited, this, &ChangeCommands::editField);
    connect(&m_records, &RecordsPanel::ipEntryEdited, this, &ChangeCommands::editIpEntry);
}

void ChangeCommands::editField(const QUuid& id, const QString& field, const QString& text)
{
    QString problem;
    m_session.store().edit([&](Project& project, ChangeTitle& title) {
        const ProcessorNode* node = project.processor(id);
        const QString name = node ? node->name : project.group(id).name;
        if (field == QStringLiteral("name"))
            title = {ChangeKind::Rename, name};
        else
            title = {ChangeKind::Field, QStringLiteral("%1, %2").arg(field, name)};
        problem = setField(project, id, field, text);
        return problem.isEmpty();
    });
    // The project may have changed since the text was checked.
    if (!problem.isEmpty())
        showProblem(m_window, problem);
}

void ChangeCommands::editIpEntry(int row, const QString& address, const QString& name)
{
    QString problem;
    m_session.store().changeIpList([&](IpList& list) {
        problem = setIpEntry(list, row, address, name);
        return problem.isEmpty();
    });
    if (!problem.isEmpty())
        showProblem(m_window, problem);
}

void ChangeCommands::updateEnabled()
{
    const int chosen = processors().size();
    const int groups = m_records.selectedGroups().size();
    for (const ActionId id :
         {ActionId::MoveToGroup, ActionId::GoOnline, ActionId::GoOffline, ActionId::ToggleBackup,
          ActionId::ToggleHasBackup, ActionId::ToggleProtected, ActionId::ToggleMonitorWarning})
        m_actions[id]->setEnabled(chosen > 0);
    for (const ActionId id :
         {ActionId::ChangeAddress, ActionId::MakeCurrent, ActionId::SelectInPanel})
        m_actions[id]->setEnabled(chosen == 1);
    m_actions[ActionId::Rename]->setEnabled(chosen + groups == 1);
    m_actions[ActionId::Remove]->setEnabled(chosen + groups > 0);
    const bool room = m_session.store().read(
        [](const Project& project) { return project.roomForProcessors() > 0; });
    m_actions[ActionId::AddProcessor]->setEnabled(room);
    m_actions[ActionId::AddProcessors]->setEnabled(room);
}

QList<QUuid> ChangeCommands::processors() const
{
    return m_records.selectedProcessors();
}

void ChangeCommands::addProcessor()
{
    const QList<QUuid> added = m_session.store().addProcessors(m_records.currentGroup(), 1);
    m_records.select(added);
}

/// Removes the selected processors; selected groups are dissolved.
void ChangeCommands::remove()
{
    const QList<QUuid> groups = m_records.selectedGroups();
    m_session.store().removeProcessors(processors());
    for (const QUuid& group : groups)
        m_session.store().ungroup(group);
}

void ChangeCommands::rename()
{
    ProjectStore* store = &m_session.store();
    const QUuid id = (processors() + m_records.selectedGroups()).value(0);
    const bool isGroup = store->read([&](const Project& project) { return project.hasGroup(id); });
    const QString name = store->read([&](const Project& project) {
        const ProcessorNode* node = project.processor(id);
        return node ? node->name : project.group(id).name;
    });
    askText(m_window, tr("Rename"), tr("New name"), name, [=](const QString& text) {
        const QString problem = nameRefusal(*store, id, text);
        if (!problem.isEmpty())
            showProblem(m_window, problem);
        else if (text == name)
            return;
        else if (isGroup)
            store->renameGroup(id, text, true);
        else
            store->renameProcessor(id, text);
    });
}

void ChangeCommands::moveToGroup()
{
    ProjectStore* store = &m_session.store();
    QStringList names{tr("No group")};
    QList<QUuid> groups{QUuid()};
    const Project project = store->snapshot();
    for (const ProcessorGroupNode& group : project.groups) {
        names.append(tr("%1: %2").arg(groups.size()).arg(group.name));
        groups.append(group.id);
    }
    askChoice(m_window, tr("Move to group"), tr("Group"), names,
              [store, groups, ids = processors()](int chosen) {
                  store->regroup(ids, groups.value(chosen));
              });
}

void ChangeCommands::changeAddress()
{
    ProjectStore* store = &m_session.store();
    const QUuid id = processors().value(0);
    const quint32 known = store->read([&](const Project& project) {
        const ProcessorNode* node = project.processor(id);
        return node ? node->ipAddress : kNoProcessorAddress;
    });
    askText(m_window, tr("Change address"), tr("Address; 127.0.0.1 for none"), dottedAddress(known),
            [this, store, id](const QString& text) {
                quint32 address = 0;
                if (parseDottedAddress(text.trimmed(), address))
                    store->setAddress(id, address);
                else
                    showProblem(m_window,
                                tr("\"%1\" is no address; 192.168.0.1 is one.").arg(text));
            });
}

void ChangeCommands::askLanUsb()
{
    ProjectStore* store = &m_session.store();
    askText(m_window, tr("LAN-USB"), tr("Addresses of LAN-USB processors; empty switches it off"),
            addressesText(store->snapshot().answers.lanUsbAddresses),
            [this, store](const QString& text) {
                if (const auto addresses = addressesOfText(text))
                    store->setLanUsb(!addresses->isEmpty(), *addresses);
                else
                    showProblem(m_window, tr("Addresses have to be parted by commas."));
            });
}
