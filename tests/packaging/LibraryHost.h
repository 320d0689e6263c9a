#pragma once

#include "Interface/ObserverPattern"
#include "Interface/TargetSelectAreaInterface.h"
#include "tests/packaging/Library.h"
#include "tests/support/FakeHandler.h"
#include "tests/support/HostThread.h"

#include <QWidget>

#include <memory>

inline QUuid identity(ushort number)
{
    return {number, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
}

inline ProcessorNode processor(ushort number, ushort group = 0)
{
    ProcessorNode node;
    node.id = identity(number);
    node.name = QString::number(number);
    node.number = number - 1;
    if (group != 0)
        node.groupId = identity(group);
    return node;
}

inline ProcessorGroupNode group(ushort number)
{
    ProcessorGroupNode node;
    node.id = identity(number);
    node.name = QStringLiteral("G%1").arg(number);
    return node;
}

inline QString names(const QList<ProcessorNode>& processors)
{
    QStringList texts;
    for (const ProcessorNode& node : processors)
        texts.append(node.name);
    return texts.join(QLatin1Char(','));
}

/// What a host's application does with the library: a window, a handler, a thread for its events.
class LibraryHost final
{
public:
    bool open()
    {
        const TargetSelectAreaInit init = Library::init();
        if (!init || !init(&m_layer, m_window.get()))
            return false;
        m_layer->m_controlHandler = m_handler;
        return m_layer->Initialize();
    }

    QWidget* window() { return m_window.get(); }
    void closeWindow() { m_window.reset(); }
    FakeHandler& handler() { return *m_handler; }
    IAbstractLayerInterface* layer() { return m_layer; }
    ITargetSelectAreaInterface* area()
    {
        return dynamic_cast<ITargetSelectAreaInterface*>(m_layer);
    }

    template <typename... Args>
    bool notify(quint32 event, Args... arguments)
    {
        return m_thread.run([&] {
            CSubject subject;
            subject.Attach(m_handler->observer);
            subject.Notify<Args...>(event, arguments...);
        });
    }

    /// The tree as the panel hands it out: "G100[1],2".
    QString tree()
    {
        ProcessorTreeSnapshot snapshot;
        area()->GetProcessorTree(snapshot, false);
        QStringList rows;
        for (const ProcessorGroupNode& node : qAsConst(snapshot.groups))
            rows.append(QStringLiteral("%1[%2]").arg(node.name, names(node.processors)));
        if (!snapshot.processors.isEmpty())
            rows.append(names(snapshot.processors));
        return rows.join(QLatin1Char(','));
    }

private:
    std::unique_ptr<QWidget> m_window = std::make_unique<QWidget>();
    std::shared_ptr<FakeHandler> m_handler = std::make_shared<FakeHandler>();
    IAbstractLayerInterface* m_layer = nullptr; // owned by its Qt parent, the window
    HostThread m_thread;
};
