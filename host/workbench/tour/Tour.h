#pragma once

#include "host/workbench/trace/TraceFile.h"

#include <QString>

#include <functional>
#include <vector>

class MainWindow;

/// Demonstrates the program in its window, step by step. A step ends when its expected result is
/// there, and saves a picture. The calls of the panel and the raised events are written to a file
/// as they happen.
class Tour final
{
public:
    /// Creates `folder`; the pictures "01-….png" and "trace.txt" are saved there.
    Tour(MainWindow& window, const QString& folder);
    Tour(const Tour&) = delete;
    Tour& operator=(const Tour&) = delete;

    /// Returns the exit code. Prints a message to the standard error stream if it is not 0.
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
