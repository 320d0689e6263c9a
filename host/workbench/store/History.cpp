#include "host/workbench/store/History.h"

#include <QUndoCommand>

#include <memory>

namespace {

/// A step of the stack. The history restores the project itself, before it moves the stack: only
/// then can it put the step off if another thread has changed the project meanwhile.
class StepCommand final : public QUndoCommand
{
public:
    explicit StepCommand(const ProjectChange& change)
        : step(std::make_shared<ProjectChange>(change))
    {
    }

    const std::shared_ptr<ProjectChange> step;
};

} // namespace

History::History(ProjectStore& store, QObject* parent)
    : QObject(parent)
    , m_store(store)
{
    m_stack.setUndoLimit(kMaxSteps);
    connect(&store, &ProjectStore::recorded, this, &History::take);
    connect(&store, &ProjectStore::replaced, this, [this] {
        m_stack.clear();
        emit changed();
    });
    store.startRecording();
}

void History::undo()
{
    restore(-1);
}

void History::redo()
{
    restore(0);
}

/// Adds the changes that were recorded since the last call.
void History::take()
{
    if (m_isRestoring)
        return;
    const auto made = m_store.takeRecorded();
    for (const ProjectChange& change : made)
        add(change);
    if (!made.empty())
        emit changed();
}

void History::add(const ProjectChange& change)
{
    const int index = m_stack.index();
    ProjectChange* last = index > 0 ? &stepAt(index - 1) : nullptr;
    const bool isOfLast = last && !m_stack.canRedo() && last->step == change.step;
    const bool isFree = m_stack.canRedo() || (last && !m_store.isSaved(last->after.revision));
    if (!isOfLast && !(isFree && change.title.kind <= ChangeKind::Current)) {
        m_stack.push(new StepCommand(change));
        return;
    }
    if (last)
        last->after = change.after;
    if (m_stack.canRedo())
        stepAt(index).before = change.after;
    if (isOfLast && last->title.kind < change.title.kind)
        last->title = change.title;
}

/// Restores the project before the step at the current index plus `offset`, or after it if that is
/// the next one.
void History::restore(int offset)
{
    m_store.endStep();
    m_isRestoring = true;
    bool isDone = false;
    while (!isDone) {
        // The events of a step may make the panel request something at once.
        m_isRestoring = false;
        take();
        m_isRestoring = true;
        if (offset < 0 ? !m_stack.canUndo() : !m_stack.canRedo())
            break;
        const ProjectChange& step = stepAt(m_stack.index() + offset);
        isDone = m_store.restore(offset < 0 ? step.before : step.after);
    }
    if (isDone && offset < 0)
        m_stack.undo();
    else if (isDone)
        m_stack.redo();
    m_isRestoring = false;
    take();
    m_store.endStep();
    emit changed();
}

ProjectChange& History::stepAt(int index) const
{
    return *static_cast<const StepCommand*>(m_stack.command(index))->step;
}
