#include "tests/system/WorkbenchProgram.h"

#include "tests/support/WorkbenchRun.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPixmap>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QScreen>

namespace {

constexpr int kEndMs = 60000;

const QRegularExpression& shortIdentity()
{
    static const QRegularExpression expression(
        QStringLiteral("\\{[0-9a-f]{4}\u2026[0-9a-f]{4}\\}"));
    return expression;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Stuck(QStringLiteral("%1 cannot be read").arg(path));
    return file.readAll();
}

} // namespace

// A short path, wherever temporary files go: names of sockets are, and the log cuts long texts.
WorkbenchProgram::WorkbenchProgram()
    : m_folder(QStringLiteral("/tmp/dayswork-XXXXXX"))
    , m_settings(path(QStringLiteral("settings")))
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    QObject::connect(&m_process, &QProcess::readyReadStandardError, &m_process,
                     [this] { m_complaints += m_process.readAllStandardError(); });
}

WorkbenchProgram::~WorkbenchProgram()
{
    if (!isRunning())
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void WorkbenchProgram::start(const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), m_folder.path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_settings);
    // Qt's own file dialogs, on whatever desktop.
    environment.remove(QStringLiteral("XDG_CURRENT_DESKTOP"));
    environment.remove(QStringLiteral("QT_QPA_PLATFORMTHEME"));
    // Qt tells of windows that the X server has closed before it was asked about them.
    environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                       QStringLiteral("qt.qpa.xcb.warning=false"));
    m_process.setProcessEnvironment(environment);
    m_process.start(
        workbenchProgram(),
        withPanel(QStringList{QStringLiteral("--trace"), path(QStringLiteral("trace.txt")),
                              QStringLiteral("--inspect"), path(QStringLiteral("inspector"))}
                  + arguments));
    if (!m_process.waitForStarted())
        throw Stuck(m_process.errorString());
}

QString WorkbenchProgram::replay(const QString& recording) const
{
    const ProgramRun run = runWorkbench({QStringLiteral("-platform"), QStringLiteral("offscreen"),
                                         QStringLiteral("--replay"), recording});
    return run.exitCode == 0 ? QString() : run.errors;
}

void WorkbenchProgram::kill()
{
    m_process.kill();
    if (!m_process.waitForFinished(kEndMs))
        throw Stuck(QStringLiteral("the workbench cannot be killed"));
}

Screen WorkbenchProgram::look() const
{
    const QByteArray told = inspectWorkbench(path(QStringLiteral("inspector")));
    return told.isEmpty() ? Screen() : Screen(QJsonDocument::fromJson(told).object());
}

QStringList WorkbenchProgram::log(const QString& kind) const
{
    const QStringList lines =
        QString::fromUtf8(contents(path(QStringLiteral("trace.txt")))).split(QLatin1Char('\n'));
    const QHash<QString, QString> fresh = namesOfNew(lines);
    QStringList found;
    for (const QString& line : lines) {
        const QStringList columns = line.split(QLatin1Char('\t'));
        if (columns.size() < 4 || columns.at(1) != kind)
            continue;
        QString text = columns.at(3);
        text.replace(m_folder.path(), QStringLiteral("~"));
        QRegularExpressionMatch match;
        while ((match = shortIdentity().match(text)).hasMatch()) {
            const QString id = match.captured();
            const QString name = m_names.value(id, fresh.value(id, QStringLiteral("unknown")));
            text.replace(id, QLatin1Char('<') + name + QLatin1Char('>'));
        }
        found.append(text);
    }
    return found;
}

void WorkbenchProgram::nameIdentities(const QString& projectFile)
{
    const QJsonObject project = QJsonDocument::fromJson(contents(projectFile)).object();
    for (const QString& list :
         {QStringLiteral("groups"), QStringLiteral("processors"), QStringLiteral("deviceSets")}) {
        const QJsonArray records = project[list].toArray();
        for (const QJsonValue& record : records) {
            const QString id = record[QLatin1String("id")].toString();
            const QString name = record[QLatin1String("name")].toString();
            m_names.insert(QStringLiteral("{%1\u2026%2}").arg(id.left(4), id.right(4)),
                           name.isEmpty() ? record[QLatin1String("text")].toString() : name);
        }
    }
}

void WorkbenchProgram::keepTraces(const QString& name) const
{
    QGuiApplication::primaryScreen()->grabWindow(0).save(name + QStringLiteral(".png"));
    QFile screen(name + QStringLiteral(".json"));
    if (screen.open(QIODevice::WriteOnly))
        screen.write(look().dump().toUtf8());
    QFile::remove(name + QStringLiteral(".txt"));
    QFile::copy(path(QStringLiteral("trace.txt")), name + QStringLiteral(".txt"));
}

QByteArray WorkbenchProgram::waitForEnd()
{
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(kEndMs))
        throw Stuck(QStringLiteral("the workbench does not end"));
    m_complaints += m_process.readAllStandardError();
    return m_complaints;
}

/// What was announced by events: 17 a group, 18 a processor, 19 several.
QHash<QString, QString> WorkbenchProgram::namesOfNew(const QStringList& lines) const
{
    static const QRegularExpression arrival(QStringLiteral("\tevent\t\\w+\t(17|18|19) \\w+\\("));
    QHash<QString, QString> names;
    int groups = 0;
    int processors = 0;
    for (const QString& line : lines) {
        const QRegularExpressionMatch announced = arrival.match(line);
        if (!announced.hasMatch())
            continue;
        QRegularExpressionMatchIterator ids = shortIdentity().globalMatch(line);
        while (ids.hasNext()) {
            const QString id = ids.next().captured();
            if (names.contains(id) || m_names.contains(id))
                continue;
            names.insert(id, announced.captured(1) == QLatin1String("17")
                                 ? QStringLiteral("new group %1").arg(++groups)
                                 : QStringLiteral("new %1").arg(++processors));
        }
    }
    return names;
}
