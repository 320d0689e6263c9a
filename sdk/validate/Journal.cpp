#include "sdk/validate/Journal.h"

#include <QList>

#include <atomic>
#include <cstdio>
#include <unistd.h>

namespace {

/// Writes one line with one call, which keeps the lines of threads apart.
void write(const char* kind, const QByteArray& first, const QString& second)
{
    QByteArray text = second.toUtf8();
    text.replace('\n', ' ').replace('\t', ' ').truncate(3000);
    const QByteArray line = Journal::kMark + QByteArray(kind) + '\t' + first + '\t' + text + '\n';
    // The runner is gone when this fails, and nobody is left to tell.
    const auto written =
        ::write(STDOUT_FILENO, line.constData(), static_cast<unsigned>(line.size()));
    static_cast<void>(written);
}

} // namespace

int Journal::begin(const QString& what)
{
    static std::atomic<int> calls{0};
    const int number = ++calls;
    write("begin", QByteArray::number(number), what);
    return number;
}

void Journal::end(int number)
{
    write("end", QByteArray::number(number), QString());
}

void Journal::find(const QString& code, const QString& text)
{
    write("find", code.toUtf8(), text);
}

void Journal::skip(const QString& reason)
{
    write("skip", QByteArray(), reason);
}

void Journal::done()
{
    write("done", QByteArray(), QString());
}

Journal::Line Journal::read(const QByteArray& line)
{
    Line result;
    const QList<QByteArray> parts = line.trimmed().split('\t');
    // The mark itself ends in a tabulator; a line without an argument loses its last one.
    if (parts.size() < 2 || parts.at(0) + '\t' != kMark) {
        result.text = QString::fromLocal8Bit(line.trimmed());
        return result;
    }
    const QByteArray& kind = parts.at(1);
    const QByteArray first = parts.value(2);
    result.text = QString::fromUtf8(parts.value(3));
    if (kind == "begin") {
        result.kind = Line::Kind::Begin;
        result.number = first.toInt();
    } else if (kind == "end") {
        result.kind = Line::Kind::End;
        result.number = first.toInt();
    } else if (kind == "find") {
        result.kind = Line::Kind::Find;
        result.code = QString::fromUtf8(first);
    } else if (kind == "skip") {
        result.kind = Line::Kind::Skip;
    } else if (kind == "done") {
        result.kind = Line::Kind::Done;
    }
    return result;
}
