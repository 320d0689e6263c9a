#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

/// Small questions to the user, asked by window-modal dialogs that do not block the caller. `done`
/// is called with the answer; when the user cancels, it is not.

void askText(QWidget* parent, const QString& title, const QString& label, const QString& preset,
             const std::function<void(const QString&)>& done);

void askNumber(QWidget* parent, const QString& title, const QString& label, int preset, int least,
               int most, const std::function<void(int)>& done);

/// `done` gets the number of the chosen entry.
void askChoice(QWidget* parent, const QString& title, const QString& label,
               const QStringList& entries, const std::function<void(int)>& done);

/// Tells the user that something went wrong.
void showProblem(QWidget* parent, const QString& problem);
