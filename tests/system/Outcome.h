#pragma once

#include <QStringList>

/// Returns those of `calls` that change something or request a change. Questions are left out,
/// because their number depends on painting, on the mouse, and on the network of the PC.
QStringList requests(const QStringList& calls);

/// Returns the contents of a project file, such as "Group[One,Two],Three".
QString projectText(const QString& path);
