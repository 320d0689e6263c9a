#include "tests/support/ProgramRun.h"

#include <QFile>
#include <QProcess>

ProgramRun runProgram(const QString& program, const QStringList& arguments, const QByteArray& input,
                      std::chrono::milliseconds limit)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    ProgramRun run;
    const bool isOver = process.waitForFinished(static_cast<int>(limit.count()));
    run.output = QString::fromUtf8(process.readAllStandardOutput());
    run.errors = QString::fromUtf8(process.readAllStandardError());
    if (isOver && process.exitStatus() == QProcess::NormalExit) {
        run.exitCode = process.exitCode();
    } else {
        run.errors += QLatin1Char('\n') + process.errorString();
        process.kill();
        process.waitForFinished();
    }
    return run;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}
