#pragma once

#include "Interface/ObserverPattern"
#include "tests/support/FakeHandler.h"
#include "tests/support/TestRecords.h"

#include <QCoreApplication>
#include <QModelIndex>
#include <QPointer>
#include <QUuid>
#include <QWidget>

#include <memory>

class CProcessorTreeModel;
class CTargetSelectArea;
class CTargetSelectData;

/// The panel of the process with a fake host behind it, initialised and empty. Destroys the panel.
class TestPanel final
{
public:
    TestPanel();
    ~TestPanel();
    TestPanel(const TestPanel&) = delete;
    TestPanel& operator=(const TestPanel&) = delete;

    FakeHandler& host() { return *m_host; }
    CTargetSelectArea& area() { return *m_area; }
    CTargetSelectData& data();
    CProcessorTreeModel& model();

    /// Delivers an event on the calling thread.
    template <typename... Args>
    void notify(quint32 event, Args... arguments)
    {
        CSubject subject;
        subject.Attach(m_host->observer);
        subject.Notify<Args...>(event, std::move(arguments)...);
    }

    QString dump();

    /// The row of testId(`n`), invalid when there is none; 0 is the root.
    QModelIndex index(quint32 n);

private:
    std::shared_ptr<FakeHandler> m_host = std::make_shared<FakeHandler>();
    QPointer<QWidget> m_widget;
    CTargetSelectArea* m_area; // destroyed here, unless its parent was faster
};
