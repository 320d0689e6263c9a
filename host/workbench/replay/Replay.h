#pragma once

#include <QString>

/// What `--replay` is given.
struct ReplayOptions
{
    QString recording;
    QString library;
    bool keepOpen = false; ///< Show the result until the user closes the window.
    QString pictures;      ///< The folder for a picture of the result; empty for none.
};

/// Replays a recording and returns the exit code: 0 if the panel made the recorded requests, 1 at
/// the first difference, which is printed with both sides, and if the recording cannot be read.
int runReplay(const ReplayOptions& options);
