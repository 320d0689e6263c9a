#pragma once

#include "host/workbench/store/ProjectStore.h"

#include <QObject>
#include <QUndoStack>

/// Undo and redo for every change of a project, whoever made it: the user, or the panel by its
/// requests. Keeps the last kMaxSteps steps of the project that is open. GUI thread.
///
/// A step holds the project before and after it; the lists that it does not change are shared. All
/// changes of one request belong to one step, see ProjectStore::step(). A choice of the current
/// processor belongs to the step before it, and never drops what can be redone.
class History final : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxSteps = 200;

    /// `store` must outlive this object.
    explicit History(ProjectStore& store, QObject* parent = nullptr);

    bool canUndo() const { return m_stack.canUndo(); }
    bool canRedo() const { return m_stack.canRedo(); }

    /// Returns the number of steps, those that can be redone included.
    int count() const { return m_stack.count(); }

    /// Returns what would be undone or redone; valid while there is such a step.
    ChangeTitle undoTitle() const { return stepAt(m_stack.index() - 1).title; }
    ChangeTitle redoTitle() const { return stepAt(m_stack.index()).title; }

    /// Takes the last step back, or makes it again, and raises the events for what differs. Has no
    /// effect if there is no such step.
    void undo();
    void redo();

signals:
    /// Emitted when another step would be undone or redone.
    void changed();

private:
    void take();
    void add(const ProjectChange& change);
    void restore(int offset);
    ProjectChange& stepAt(int index) const;

    ProjectStore& m_store;
    QUndoStack m_stack;
    bool m_isRestoring = false;
};
