#pragma once

#include <QStringList>

/// What changes something or asks for it. Questions are left out: how many there are depends on how
/// often rows are painted and hovered, and on the PC's network.
QStringList requests(const QStringList& calls);

/// What a project file holds, such as "Group[One,Two],Three".
QString projectText(const QString& path);
