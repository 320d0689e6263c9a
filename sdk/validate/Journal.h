#pragma once

#include <QByteArray>
#include <QString>

/// The lines in which a test that runs in a process of its own tells the runner what it does, on
/// its standard output. Each is written at once and whole, so that none is lost in a crash. Any
/// thread.
namespace Journal {

/// Begins each line. What else appears on the standard output is the library's.
constexpr const char* kMark = "\x1etsa\t";

/// Notes that `what` is called, and returns the number of the call.
int begin(const QString& what);

/// Notes that call `number` has come back.
void end(int number);

/// Notes a finding.
void find(const QString& code, const QString& text);

/// Notes that the test does not run, and why.
void skip(const QString& reason);

/// Notes that the test has come to its end.
void done();

/// What a line says.
struct Line
{
    enum class Kind { Other, Begin, End, Find, Skip, Done };

    Kind kind = Kind::Other;
    int number = 0; ///< Of the call.
    QString code;
    QString text;
};

/// Returns what `line` says.
Line read(const QByteArray& line);

} // namespace Journal
