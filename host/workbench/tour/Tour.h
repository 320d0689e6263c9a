#pragma once

#include "host/workbench/trace/TraceFile.h"

#include <QString>

#include <functional>
#include <vector>

class MainWindow;

/// Drives the window through what the program does, one step after the other. Each step goes on
/// when what it was about has come true, and leaves a picture; what the panel called and what was
/// raised meanwhile is written down as it happens.
class Tour final
{
public:
    /// Pictures "01-….png" and "trace.txt" go to `folder`, which is created.
    Tour(MainWindow& window, const QString& folder);
    Tour(const Tour&) = delete;
    Tour& operator=(const Tour&) = delete;

    /// Returns the exit code, after a message on the standard error stream unless that is 0.
    int run();

private:
    struct Step
    {
        QString name;
        std::function<void()> act;
        std::function<bool()> reached;
    };

    std::vector<Step> steps();
    bool perform(const Step& step);
    void pictureNextDialog(const QString& name);
    bool takePicture(const QString& name);

    MainWindow& m_window;
    QString m_folder;
    TraceFile m_trace;
    int m_pictures = 0;
    bool m_dialogAwaited = false;
};
