#pragma once

#include <QString>

class QWidget;

/// What the panel tells and asks its user, in the host's message boxes: the host software's name is
/// the caption, all are equally wide. GUI thread; modal over `parent`, which may be gone
/// afterwards.

/// Shows a message with an OK button.
void tellUser(QWidget* parent, const QString& text);

/// Asks a question with Yes, the default, and No. True for Yes.
bool askUser(QWidget* parent, const QString& text);
