#pragma once

#include "tests/support/ProgramRun.h"

/// Returns the file of the workbench's program.
QString workbenchProgram();

/// Returns the arguments for the program, before which stands the option for the panel's library.
QStringList withPanel(const QStringList& arguments);

/// Returns the file of the panel's library.
QString panelLibrary();

/// Returns the file of the sample project.
QString sampleProject();

/// Runs the program with the panel to its end, with `input` as its standard input.
ProgramRun runWorkbench(const QStringList& arguments, const QByteArray& input = {});

#ifdef Q_OS_UNIX
/// The same on a disk that is nearly full: no file gets more than 512 bytes.
ProgramRun runWorkbenchOnAFullDisk(const QStringList& arguments);
#endif

/// Returns what a workbench that was started with `--inspect NAME` shows; empty while it does not
/// listen.
QByteArray inspectWorkbench(const QString& name);
