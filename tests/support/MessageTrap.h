#pragma once

#include <QStringList>
#include <QtGlobal>

/// While one lives, what the product logs in categories of its own, whatever the level, is
/// collected instead of printed. What Qt itself says goes on as before.
class MessageTrap final
{
public:
    MessageTrap();
    ~MessageTrap();
    MessageTrap(const MessageTrap&) = delete;
    MessageTrap& operator=(const MessageTrap&) = delete;

    /// The messages since the last time, each as "category: text". Any thread.
    static QStringList take();

private:
    QtMessageHandler m_previous;
};
