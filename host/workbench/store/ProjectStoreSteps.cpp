// How changes are made, recorded, and taken back.

#include "host/workbench/events/Notifier.h"
#include "host/workbench/store/ProjectDiff.h"
#include "host/workbench/store/ProjectStore.h"

#include <QThread>

#include <utility>

namespace {

/// Returns those of the lit front panels whose records `project` has.
QSet<QUuid> litIn(const Project& project, const QSet<QUuid>& lit)
{
    QSet<QUuid> known;
    for (const QUuid& id : lit) {
        if (project.processor(id) || project.hasGroup(id))
            known.insert(id);
    }
    return known;
}

/// Returns whether `made` is a setting that was set to what it was.
bool isWithoutEffect(const ProjectChange& made, const Project& now)
{
    const ChangeKind kind = made.title.kind;
    return kind >= ChangeKind::Answers && kind <= ChangeKind::Network
           && areSettingsSame(made.before.project, now);
}

} // namespace

void ProjectStore::markSaved()
{
    {
        const std::lock_guard guard(m_mutex);
        m_savedRevision = m_revision;
    }
    endStep();
    emit changed();
}

bool ProjectStore::isSaved(int revision) const
{
    const std::lock_guard guard(m_mutex);
    return revision == m_savedRevision;
}

void ProjectStore::markUnsaved()
{
    {
        const std::lock_guard guard(m_mutex);
        m_savedRevision = ++m_lastRevision;
    }
    emit changed();
}

void ProjectStore::startRecording()
{
    const std::lock_guard guard(m_mutex);
    m_isRecording = true;
}

std::vector<ProjectChange> ProjectStore::takeRecorded()
{
    const std::lock_guard guard(m_mutex);
    return std::exchange(m_recorded, {});
}

int ProjectStore::step()
{
    if (QThread::currentThread() != thread())
        return ++m_lastStep;
    if (m_forcedStep != 0)
        return m_forcedStep;
    if (!m_stepEnd) {
        m_step = ++m_lastStep;
        // Unlike other posted events, a deferred deletion waits until control returns to the loop
        // that runs now: what a nested processEvents() handles still belongs to the step.
        m_stepEnd = new QObject(this);
        m_stepEnd->deleteLater();
    }
    return m_step;
}

void ProjectStore::endStep()
{
    if (QThread::currentThread() == thread())
        delete m_stepEnd;
}

/// Calls `change` with the project and a title to fill in. If it returns true, records the change,
/// unless that is without effect, and emits `signal`.
bool ProjectStore::modify(const std::function<bool(Project&, ChangeTitle&)>& change,
                          void (ProjectStore::*signal)())
{
    const int number = step();
    bool isRecorded = false;
    {
        const std::lock_guard guard(m_mutex);
        ProjectChange made;
        made.step = number;
        made.before = {m_project, m_revision};
        if (!change(m_project, made.title))
            return false;
        m_processorAddresses.reset();
        if (!isWithoutEffect(made, m_project)) {
            m_revision = ++m_lastRevision;
            isRecorded = m_isRecording;
        }
        if (isRecorded) {
            made.after = {m_project, m_revision};
            m_recorded.push_back(std::move(made));
        }
    }
    emit(this->*signal)();
    if (isRecorded)
        emit recorded();
    return true;
}

bool ProjectStore::restore(const ProjectState& state)
{
    HostEventList events;
    {
        const std::lock_guard guard(m_mutex);
        if (!m_recorded.empty())
            return false;
        const Project before = std::exchange(m_project, state.project);
        m_project.litFrontPanels = litIn(m_project, before.litFrontPanels);
        m_revision = state.revision;
        m_processorAddresses.reset();
        events = eventsBetween(before, m_project);
    }
    emit changed();
    m_notifier.raise(events);
    return true;
}

void ProjectStore::edit(const std::function<bool(Project&, ChangeTitle&)>& change)
{
    HostEventList events;
    modify([&](Project& project, ChangeTitle& title) {
        const Project before = project;
        if (!change(project, title))
            return false;
        events = eventsBetween(before, project);
        return true;
    });
    m_notifier.raise(events);
}

ProjectStep::ProjectStep(ProjectStore& store, int step)
    : m_store(store)
    , m_former(std::exchange(store.m_forcedStep, step))
{
}

ProjectStep::~ProjectStep()
{
    m_store.m_forcedStep = m_former;
}
