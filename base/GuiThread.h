#pragma once

class QObject;

/// Returns whether the calling thread is the application's; false without an application.
bool isGuiThread();

/// Returns whether `object` lives on the calling thread. For assertions: holds also after the end
/// of the application, when events may still come on the thread that was its own.
bool isThreadOf(const QObject& object);
