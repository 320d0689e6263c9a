#include "host/workbench/window/Autosave.h"

#include "host/common/AppendLog.h"
#include "host/common/SoftwareName.h"
#include "host/workbench/dialogs/Prompts.h"
#include "host/workbench/session/Settings.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/window/FileCommands.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int kDefaultSeconds = 10;
constexpr int kMaxSeconds = 3600;

int intervalMs()
{
    const WorkbenchSettings settings;
    const int seconds = settings.value(QStringLiteral("autosaveSeconds"), kDefaultSeconds).toInt();
    return std::clamp(seconds, 1, kMaxSeconds) * 1000;
}

} // namespace

Autosave::Autosave(QWidget& window, FileCommands& files, ProjectStore& store)
    : m_window(window)
    , m_files(files)
    , m_store(store)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(intervalMs());
    connect(&m_timer, &QTimer::timeout, this, &Autosave::write);
    connect(&store, &ProjectStore::changed, this, &Autosave::follow);
    connect(&store, &ProjectStore::ipListChanged, this, &Autosave::follow);
    follow();
}

Autosave::~Autosave()
{
    m_file.remove();
}

void Autosave::offerRecovery()
{
    const RecoveryFile::Left left = RecoveryFile::findLeft();
    for (const auto& file : left) {
        const Answer answer = ask(file->note());
        if (answer == Answer::Discard)
            file->remove();
        if (answer == Answer::Recover && recover(*file))
            return;
    }
}

/// A change after the last copy starts the time; later ones do not prolong it.
void Autosave::follow()
{
    if (!m_store.isModified()) {
        m_timer.stop();
        m_file.remove();
    } else if (!m_timer.isActive()) {
        m_timer.start();
    }
}

void Autosave::write()
{
    if (!m_store.isModified())
        return;
    QString problem;
    const RecoveryNote note{m_files.path(), m_files.knownContent(), QDateTime::currentDateTime()};
    if (!m_file.write(note, m_store.snapshot(), problem))
        AppendLog("autosave", "Autosave.cpp", __LINE__, problem.toUtf8().constData());
}

Autosave::Answer Autosave::ask(const RecoveryNote& note)
{
    const QString name =
        note.path.isEmpty() ? tr("a project without a file") : QDir::toNativeSeparators(note.path);
    QMessageBox box(QMessageBox::Question, custom_software_name(),
                    tr("The program ended without warning. There is a copy of %1 with unsaved "
                       "changes, of %2.")
                        .arg(name, note.saved.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))),
                    QMessageBox::NoButton, &m_window);
    box.setTextFormat(Qt::PlainText);
    const QPushButton* recovering = box.addButton(tr("Recover"), QMessageBox::AcceptRole);
    const QPushButton* discarding = box.addButton(tr("Discard"), QMessageBox::DestructiveRole);
    QPushButton* later = box.addButton(tr("Later"), QMessageBox::RejectRole);
    box.setEscapeButton(later);
    box.exec();
    if (box.clickedButton() == recovering)
        return Answer::Recover;
    return box.clickedButton() == discarding ? Answer::Discard : Answer::Later;
}

bool Autosave::recover(RecoveryFile& left)
{
    QString problem;
    const auto project = left.read(problem);
    if (!project) {
        const QString kept = QDir::toNativeSeparators(left.setAside());
        showProblem(&m_window, tr("%1\nThe copy is kept as %2.").arg(problem, kept));
        return false;
    }
    const RecoveryNote note = left.note();
    m_files.openRecovered(*project, note.path, note.known);
    // The old copy goes only when there is a new one.
    write();
    if (QFile::exists(m_file.path()))
        left.remove();
    return true;
}
