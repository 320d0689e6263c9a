#pragma once

#include <QString>
#include <QStringList>

/// Returns those of `calls` that change something or request a change. Questions are left out,
/// because their number depends on painting, on the mouse, and on the network of the PC.
QStringList requests(const QStringList& calls);

/// Returns the report of the panel, as requests() has it, that a processor or a group was picked,
/// and a processor before.
/// @{
QString pickedProcessor(const char* name, const char* previous);
QString pickedGroup(const char* name, const char* previous);
/// @}

/// Returns the contents of a project file, such as "Group[One,Two],Three".
QString projectText(const QString& path);
