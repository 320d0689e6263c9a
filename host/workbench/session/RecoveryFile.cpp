#include "host/workbench/session/RecoveryFile.h"

#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/session/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QUuid>

namespace {

constexpr char kFormat[] = "workbenchRecovery";
constexpr int kVersion = 1;
constexpr qint64 kMaxNoteSize = 64LL * 1024;

QByteArray noteLine(const RecoveryNote& note)
{
    const QJsonObject object{
        {QLatin1String(kFormat), kVersion},
        {QStringLiteral("project"), note.path},
        {QStringLiteral("known"), QString::fromLatin1(note.known.toHex())},
        {QStringLiteral("saved"), note.saved.toString(Qt::ISODateWithMs)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

QString RecoveryFile::folder()
{
    const WorkbenchSettings settings;
    return QFileInfo(settings.fileName()).absoluteDir().filePath(QStringLiteral("recovery"));
}

RecoveryFile::Left RecoveryFile::findLeft()
{
    Left left;
    const QFileInfoList all = QDir(folder()).entryInfoList(
        {QStringLiteral("*.recovery")}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo& file : all) {
        std::unique_ptr<RecoveryFile> found(new RecoveryFile(file.absoluteFilePath()));
        if (found->m_lock.tryLock(0))
            left.push_back(std::move(found));
    }
    return left;
}

RecoveryFile::RecoveryFile()
    : RecoveryFile(QDir(folder()).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces)
                                           + QStringLiteral(".recovery")))
{
}

RecoveryFile::RecoveryFile(const QString& path)
    : m_path(path)
    , m_lock(path + QStringLiteral(".lock"))
{
    // A lock is free when its program has ended, however old it is.
    m_lock.setStaleLockTime(0);
}

RecoveryFile::~RecoveryFile() = default;

bool RecoveryFile::write(const RecoveryNote& note, const Project& project, QString& problem)
{
    const QString place = QDir::toNativeSeparators(m_path);
    // Locked first: another program takes a file without a lock for one that is left behind.
    if (!QDir().mkpath(folder()) || (!m_lock.isLocked() && !m_lock.tryLock(0))) {
        problem = tr("%1 cannot be locked").arg(place);
        return false;
    }
    const QByteArray json = projectToJson(project);
    // Nobody could read it again; the line of the note counts there.
    if (json.size() + 1 > kMaxProjectFileSize) {
        problem = tr("%1 cannot be written: the project is larger than %2 MiB")
                      .arg(place)
                      .arg(kMaxProjectFileSize >> 20);
        return false;
    }
    QSaveFile file(m_path);
    const QByteArray content = noteLine(note) + json;
    if (!file.open(QIODevice::WriteOnly)
        || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)
        || file.write(content) != content.size() || !file.flush() || !file.commit()) {
        problem = tr("%1 cannot be written: %2").arg(place, file.errorString());
        return false;
    }
    return true;
}

RecoveryNote RecoveryFile::note() const
{
    QFile file(m_path);
    RecoveryNote note;
    note.saved = QFileInfo(m_path).lastModified();
    if (!file.open(QIODevice::ReadOnly))
        return note;
    const QJsonObject object = QJsonDocument::fromJson(file.readLine(kMaxNoteSize)).object();
    note.path = object.value(QStringLiteral("project")).toString();
    note.known = QByteArray::fromHex(object.value(QStringLiteral("known")).toString().toLatin1());
    const auto saved =
        QDateTime::fromString(object.value(QStringLiteral("saved")).toString(), Qt::ISODateWithMs);
    if (saved.isValid())
        note.saved = saved;
    return note;
}

std::optional<Project> RecoveryFile::read(QString& problem) const
{
    const QString place = QDir::toNativeSeparators(m_path);
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = tr("%1 cannot be read: %2").arg(place, file.errorString());
        return std::nullopt;
    }
    const QJsonObject note = QJsonDocument::fromJson(file.readLine(kMaxNoteSize)).object();
    if (note.value(QLatin1String(kFormat)).toInt() != kVersion) {
        problem = tr("%1, line 1: this is not the copy of a project").arg(place);
        return std::nullopt;
    }
    // The line of the note counts, so that the lines in a message are those of the file.
    QString reason;
    auto project = parseProject('\n' + file.read(kMaxProjectFileSize), reason);
    if (!project)
        problem = tr("%1, %2").arg(place, reason);
    return project;
}

QString RecoveryFile::setAside()
{
    QString damaged = m_path + QStringLiteral(".damaged");
    return QFile::rename(m_path, damaged) ? damaged : m_path;
}

void RecoveryFile::remove()
{
    QFile::remove(m_path);
    m_lock.unlock();
}
