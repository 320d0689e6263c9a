#include "host/workbench/window/FileCommands.h"

#include "host/common/SoftwareName.h"
#include "host/workbench/dialogs/Prompts.h"
#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/PlainText.h"
#include "host/workbench/window/SameFile.h"
#include "host/workbench/window/Settings.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace {

constexpr int kRecentShown = 8;

QString recentKey()
{
    return QStringLiteral("recentProjects");
}

} // namespace

FileCommands::FileCommands(QMainWindow* window, Actions& actions, ProjectStore& store)
    : QObject(window)
    , m_window(window)
    , m_actions(actions)
    , m_store(store)
{
    connect(actions[ActionId::NewProject], &QAction::triggered, this, [this] {
        if (!confirmLoss())
            return;
        m_path.clear();
        m_store.replace(Project());
    });
    connect(actions[ActionId::OpenProject], &QAction::triggered, this,
            &FileCommands::chooseAndOpen);
    connect(actions[ActionId::OpenSample], &QAction::triggered, this,
            [this] { openAsked(sampleProject()); });
    connect(actions[ActionId::SaveProject], &QAction::triggered, this, &FileCommands::saveAsked);
    connect(actions[ActionId::SaveProjectAs], &QAction::triggered, this,
            &FileCommands::chooseAndSave);
    connect(actions.recentMenu(), &QMenu::aboutToShow, this, &FileCommands::fillRecent);
    connect(&store, &ProjectStore::changed, this, &FileCommands::retranslate);
    connect(&store, &ProjectStore::ipListChanged, this, &FileCommands::retranslate);
    fillRecent();
    retranslate();
}

QString FileCommands::sampleProject()
{
    return QStringLiteral(":/Workbench/projects/sample.json");
}

bool FileCommands::open(const QString& path, QString& problem)
{
    const auto project = loadProject(path, problem);
    if (!project)
        return false;
    const bool isOwn = path.startsWith(QLatin1String(":/"));
    m_path = isOwn ? QString() : QFileInfo(path).absoluteFilePath();
    if (!isOwn)
        remember(m_path);
    m_store.replace(*project);
    return true;
}

bool FileCommands::save(const QString& path, QString& problem)
{
    if (isSameFile(path, m_traceFile)) {
        problem = tr("%1 cannot be written: the live log is written there")
                      .arg(QDir::toNativeSeparators(path));
        return false;
    }
    if (!saveProject(m_store.snapshot(), path, problem))
        return false;
    m_path = QFileInfo(path).absoluteFilePath();
    remember(m_path);
    m_store.markSaved();
    return true;
}

bool FileCommands::confirmLoss()
{
    if (!m_askBeforeLoss || !m_store.isModified())
        return true;
    QMessageBox box(QMessageBox::Question, custom_software_name(),
                    tr("The project has unsaved changes. Save them?"),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window);
    box.setDefaultButton(QMessageBox::Save);
    box.button(QMessageBox::Save)->setText(tr("Save"));
    box.button(QMessageBox::Discard)->setText(tr("Discard"));
    box.button(QMessageBox::Cancel)->setText(tr("Cancel"));
    const int answer = box.exec();
    if (answer == QMessageBox::Save)
        return saveAsked();
    return answer == QMessageBox::Discard;
}

void FileCommands::retranslate()
{
    const QString name = m_path.isEmpty() ? tr("Untitled") : QFileInfo(m_path).fileName();
    m_window->setWindowTitle(
        QStringLiteral("%1[*] - %2").arg(PlainText::windowTitle(name), custom_software_name()));
    m_window->setWindowModified(m_store.isModified());
}

void FileCommands::openAsked(const QString& path)
{
    if (!confirmLoss())
        return;
    QString problem;
    if (!open(path, problem))
        showProblem(m_window, problem);
}

void FileCommands::chooseAndOpen()
{
    if (!confirmLoss())
        return;
    const QString path = QFileDialog::getOpenFileName(m_window, tr("Open a project"),
                                                      QFileInfo(m_path).absolutePath(),
                                                      tr("Projects (*.json);;All files (*)"));
    QString problem;
    if (!path.isEmpty() && !open(path, problem))
        showProblem(m_window, problem);
}

bool FileCommands::saveAsked()
{
    if (m_path.isEmpty())
        return chooseAndSave();
    QString problem;
    const bool saved = save(m_path, problem);
    if (!saved)
        showProblem(m_window, problem);
    return saved;
}

bool FileCommands::chooseAndSave()
{
    const QString path = QFileDialog::getSaveFileName(m_window, tr("Save the project"), m_path,
                                                      tr("Projects (*.json);;All files (*)"));
    if (path.isEmpty())
        return false;
    QString problem;
    const bool saved = save(path, problem);
    if (!saved)
        showProblem(m_window, problem);
    return saved;
}

void FileCommands::remember(const QString& path)
{
    WorkbenchSettings settings;
    QStringList recent = settings.value(recentKey()).toStringList();
    recent.removeAll(path);
    recent.prepend(path);
    settings.setValue(recentKey(), QStringList(recent.mid(0, kRecentShown)));
    fillRecent();
}

void FileCommands::fillRecent()
{
    QMenu* menu = m_actions.recentMenu();
    menu->clear();
    const QStringList recent = WorkbenchSettings().value(recentKey()).toStringList();
    for (const QString& path : recent) {
        const QAction* action =
            menu->addAction(PlainText::menuEntry(QDir::toNativeSeparators(path)));
        connect(action, &QAction::triggered, this, [this, path] { openAsked(path); });
    }
    menu->setEnabled(!recent.isEmpty());
}
