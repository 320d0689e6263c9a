#pragma once

#include <QStringList>
#include <QtGlobal>

/// While one lives, every warning of Qt's is collected, and warnings nobody took are a test
/// failure: what Qt says on stderr is a defect of ours.
class WarningTrap final
{
public:
    WarningTrap();
    ~WarningTrap();
    WarningTrap(const WarningTrap&) = delete;
    WarningTrap& operator=(const WarningTrap&) = delete;

    /// The warnings so far; they count as expected from here on. Any thread.
    static QStringList take();

private:
    QtMessageHandler m_previous;
};
