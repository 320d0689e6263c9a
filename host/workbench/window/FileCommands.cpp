#include "host/workbench/window/FileCommands.h"

#include "host/common/SoftwareName.h"
#include "host/workbench/dialogs/CompareDialog.h"
#include "host/workbench/dialogs/PlainText.h"
#include "host/workbench/dialogs/Prompts.h"
#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/session/Settings.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/ChangedFileBar.h"
#include "host/workbench/window/SameFile.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <optional>

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
    , m_bar(new ChangedFileBar(window))
{
    connect(&m_watch, &FileWatch::changed, this, [this](FileWatch::State state) {
        m_bar->tell(state, QFileInfo(m_path).fileName());
        // Nothing else holds the project now.
        if (state == FileWatch::State::Missing)
            m_store.markUnsaved();
    });
    connect(m_bar->reloadButton(), &QPushButton::clicked, this, [this] {
        if (confirmReload())
            reload();
    });
    connect(m_bar->compareButton(), &QPushButton::clicked, this, &FileCommands::compare);
    connect(m_bar->keepButton(), &QPushButton::clicked, this, &FileCommands::keep);
    connect(actions[ActionId::NewProject], &QAction::triggered, this, [this] {
        if (!confirmLoss())
            return;
        m_path.clear();
        m_watch.watch({}, {});
        m_bar->hide();
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
    const QByteArray seen = FileWatch::fingerprint(path);
    const auto project = loadProject(path, problem);
    if (!project)
        return false;
    const bool isOwn = path.startsWith(QLatin1String(":/"));
    m_path = isOwn ? QString() : QFileInfo(path).absoluteFilePath();
    m_watch.watch(m_path, seen);
    m_bar->hide();
    if (!isOwn)
        remember(m_path);
    m_store.replace(*project);
    return true;
}

void FileCommands::openRecovered(const Project& project, const QString& path,
                                 const QByteArray& known)
{
    m_path = path;
    m_watch.watch(m_path, known);
    m_bar->hide();
    m_store.replace(project);
    m_store.markUnsaved();
    m_watch.tell();
}

bool FileCommands::save(const QString& path, QString& problem)
{
    if (isSameFile(path, m_path) && m_watch.state() != FileWatch::State::Same) {
        problem = tr("%1 cannot be written: another program has changed or removed it")
                      .arg(QDir::toNativeSeparators(path));
        return false;
    }
    // Nobody is asked: a file that is no project is not ours.
    QString reason;
    if (QFileInfo(path).isFile() && !isInUse(path) && !isSameFile(path, m_path)
        && !loadProject(path, reason)) {
        problem =
            tr("%1 is not replaced, because it is no project").arg(QDir::toNativeSeparators(path));
        return false;
    }
    return write(path, problem);
}

bool FileCommands::isInUse(const QString& path) const
{
    return std::any_of(m_inUse.begin(), m_inUse.end(),
                       [&](const QString& used) { return isSameFile(path, used); });
}

QString FileCommands::exportRefusal(const QString& path) const
{
    const QString shown = QDir::toNativeSeparators(path);
    const QFileInfo existing(path);
    if (existing.exists() && !existing.isFile())
        return tr("%1 cannot be written: it is not a regular file").arg(shown);
    if (isInUse(path))
        return tr("%1 cannot be written: the workbench writes something else there").arg(shown);
    if (isSameFile(path, m_path))
        return tr("%1 cannot be written: it is the open project").arg(shown);
    return {};
}

bool FileCommands::write(const QString& path, QString& problem)
{
    if (isInUse(path)) {
        problem = tr("%1 cannot be written: the workbench writes something else there")
                      .arg(QDir::toNativeSeparators(path));
        return false;
    }
    const Project project = m_store.snapshot();
    if (!saveProject(project, path, problem))
        return false;
    m_path = QFileInfo(path).absoluteFilePath();
    m_watch.watch(m_path, FileWatch::fingerprintOf(projectToJson(project)));
    m_bar->hide();
    remember(m_path);
    m_store.markSaved();
    return true;
}

bool FileCommands::confirmLoss()
{
    endEditing();
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

/// Stores what stands in an open field.
void FileCommands::endEditing()
{
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (!field || !m_window->isAncestorOf(field))
        return;
    field->clearFocus();
    // The value is stored by a queued call.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

bool FileCommands::saveAsked()
{
    endEditing();
    if (m_path.isEmpty())
        return chooseAndSave();
    if (!mayOverwrite())
        return false;
    QString problem;
    const bool saved = write(m_path, problem);
    if (!saved)
        showProblem(m_window, problem);
    return saved;
}

bool FileCommands::chooseAndSave()
{
    endEditing();
    const QString path = QFileDialog::getSaveFileName(m_window, tr("Save the project"), m_path,
                                                      tr("Projects (*.json);;All files (*)"));
    if (path.isEmpty())
        return false;
    // The dialog has asked before an existing file is replaced, but not what has become of it.
    if (isSameFile(path, m_path) && !mayOverwrite())
        return false;
    QString problem;
    const bool saved = write(path, problem);
    if (!saved)
        showProblem(m_window, problem);
    return saved;
}

/// Returns whether the file of the project may be replaced. Asks the user if another program has
/// changed or removed it.
bool FileCommands::mayOverwrite()
{
    std::optional<QByteArray> agreed;
    for (;;) {
        const FileWatch::State state = m_watch.tell();
        // The answer holds for the content that the user was asked about.
        const QByteArray asked = m_watch.told();
        if (state == FileWatch::State::Same || agreed == asked)
            return true;
        QMessageBox box(QMessageBox::Warning, custom_software_name(),
                        tr("%1\nSave the project all the same?").arg(m_bar->text()),
                        QMessageBox::Save | QMessageBox::Cancel, m_window);
        box.setTextFormat(Qt::PlainText);
        box.button(QMessageBox::Save)->setText(tr("Save"));
        box.button(QMessageBox::Cancel)->setText(tr("Cancel"));
        box.setDefaultButton(QMessageBox::Cancel);
        const QPushButton* reloading = nullptr;
        const QPushButton* comparing = nullptr;
        if (state == FileWatch::State::Changed) {
            reloading = box.addButton(tr("Reload"), QMessageBox::DestructiveRole);
            comparing = box.addButton(tr("Compare..."), QMessageBox::ActionRole);
        }
        const int answer = box.exec();
        if (answer == QMessageBox::Save) {
            agreed = asked;
            continue;
        }
        if (comparing && box.clickedButton() == comparing) {
            compare();
            continue;
        }
        // The project that is open then is the one of the file: nothing is left to save.
        if (reloading && box.clickedButton() == reloading)
            reload();
        return false;
    }
}

/// Asks before changes that are nowhere else are dropped.
bool FileCommands::confirmReload()
{
    if (!m_askBeforeLoss || !m_store.isModified())
        return true;
    QMessageBox box(QMessageBox::Question, custom_software_name(),
                    tr("The project has unsaved changes. Discard them?"),
                    QMessageBox::Discard | QMessageBox::Cancel, m_window);
    box.setDefaultButton(QMessageBox::Cancel);
    box.button(QMessageBox::Discard)->setText(tr("Discard"));
    box.button(QMessageBox::Cancel)->setText(tr("Cancel"));
    return box.exec() == QMessageBox::Discard;
}

/// Opens the file of the project as it is now. Says why if that fails.
bool FileCommands::reload()
{
    QString problem;
    const bool opened = open(m_path, problem);
    if (!opened)
        showProblem(m_window, problem);
    return opened;
}

void FileCommands::compare()
{
    // What the user sees there is what Keep means afterwards.
    m_watch.tell();
    QString problem;
    const auto other = loadProject(m_path, problem);
    if (other)
        (new CompareDialog(compareProjects(m_store.snapshot(), *other), m_window))->exec();
    else
        showProblem(m_window, problem);
}

/// Keeps the project, which is no longer that of the file, for the next time it is saved. Holds for
/// the content that the bar told of.
void FileCommands::keep()
{
    const QByteArray agreed = m_watch.told();
    m_watch.tell();
    if (m_watch.told() != agreed)
        return;
    m_watch.acceptTold();
    m_bar->hide();
    m_store.markUnsaved();
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
