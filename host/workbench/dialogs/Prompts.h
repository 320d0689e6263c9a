#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

/// Ask the user with a window-modal dialog and return at once. `done` is called with the answer,
/// and not called if the user cancels.

void askText(QWidget* parent, const QString& title, const QString& label, const QString& preset,
             const std::function<void(const QString&)>& done);

void askNumber(QWidget* parent, const QString& title, const QString& label, int preset, int least,
               int most, const std::function<void(int)>& done);

/// Calls `done` with the index of the chosen entry.
void askChoice(QWidget* parent, const QString& title, const QString& label,
               const QStringList& entries, const std::function<void(int)>& done);

/// Shows an error message. Does not block.
void showProblem(QWidget* parent, const QString& problem);
