#include "host/workbench/tour/Tour.h"

#include "host/widgets/HostTheme.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/tour/Wait.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/FileCommands.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/MainWindow.h"
#include "host/workbench/window/RecordsPanel.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QTableView>
#include <QTimer>

#include <iostream>

namespace {

constexpr int kStepLimitMs = 20000;
constexpr int kLookAgainMs = 5;

} // namespace

Tour::Tour(MainWindow& window, const QString& folder)
    : m_window(window)
    , m_folder(folder)
    , m_trace(window.session().trace(), QDir(folder).filePath(QStringLiteral("trace.txt")))
{
}

int Tour::run()
{
    QString problem;
    if (!QDir().mkpath(m_folder)) {
        std::cerr << "workbench: cannot write to " << qPrintable(QDir::toNativeSeparators(m_folder))
                  << '\n';
        return 1;
    }
    if (!m_trace.open(problem)) {
        std::cerr << "workbench: " << qPrintable(problem) << '\n';
        return 1;
    }
    m_window.files().setAskBeforeLoss(false);
    for (const Step& step : steps()) {
        if (!perform(step)) {
            std::cerr << "workbench: the tour got stuck in \"" << qPrintable(step.name) << "\"\n";
            return 1;
        }
    }
    std::cout << "workbench: " << m_pictures << " pictures and trace.txt are in "
              << qPrintable(QDir::toNativeSeparators(m_folder)) << '\n';
    return 0;
}

std::vector<Tour::Step> Tour::steps()
{
    Session* session = &m_window.session();
    ProjectStore* store = &session->store();
    RecordsPanel* records = &m_window.records();
    const auto trigger = [this](ActionId id) { m_window.actions()[id]->trigger(); };
    const auto shown = [session] { return session->panelShowsProject(); };
    const auto count = [store] { return store->snapshot().processors.size(); };
    const auto processorAt = [store](int at) { return store->snapshot().processors.value(at).id; };

    return {
        {QStringLiteral("empty project"), [=] { trigger(ActionId::NewProject); },
         [=] { return shown() && count() == 0; }},
        {QStringLiteral("sample project"), [=] { trigger(ActionId::OpenSample); },
         [=] { return shown() && count() == 120; }},
        {QStringLiteral("processor added"),
         [=] {
             records->select({store->snapshot().groups.first().id});
             trigger(ActionId::AddProcessor);
         },
         [=] { return shown() && count() == 121; }},
        {QStringLiteral("processor moved"),
         [=] {
             const Project project = store->snapshot();
             store->regroup({project.processors.last().id}, project.groups.at(1).id);
             records->select({project.processors.last().id});
         },
         [=] {
             const Project project = store->snapshot();
             return shown() && project.processors.last().groupId == project.groups.at(1).id;
         }},
        {QStringLiteral("processors offline"),
         [=] {
             records->select({processorAt(0), processorAt(1), processorAt(2)});
             trigger(ActionId::GoOffline);
         },
         [=] { return shown() && !store->snapshot().processors.first().online; }},
        {QStringLiteral("raise event"), [=] { trigger(ActionId::RaiseEvent); },
         [] { return QApplication::activeModalWidget() != nullptr; }},
        {QStringLiteral("event raised"),
         [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->accept(); },
         [=] { return !QApplication::activeModalWidget() && shown(); }},
        {QStringLiteral("network"), [=] { trigger(ActionId::Network); },
         [] { return QApplication::activeModalWidget() != nullptr; }},
        {QStringLiteral("network set"),
         [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->accept(); },
         [=] { return !QApplication::activeModalWidget() && shown(); }},
        {QStringLiteral("current processor"),
         [=] {
             records->select({processorAt(12)});
             trigger(ActionId::MakeCurrent);
         },
         [=] { return shown() && store->snapshot().currentProcessor == processorAt(12); }},
        {QStringLiteral("devices detected"),
         [=] {
             QObject half;
             QObject::connect(session, &Session::detectionProceeded, &half,
                              [this](int done, int total) {
                                  if (done == total / 2)
                                      takePicture(QStringLiteral("detecting"));
                              });
             trigger(ActionId::DetectDevices);
         },
         [=] { return shown() && store->snapshot().processors.first().online; }},
        {QStringLiteral("lan-usb mode"),
         [=] {
             store->setLanUsb(true, {store->snapshot().processors.first().ipAddress});
             records->select({processorAt(0), processorAt(1), processorAt(2)});
             pictureNextDialog(QStringLiteral("lan-usb warning"));
             trigger(ActionId::LanUsbWarning);
         },
         [this] { return !m_dialogAwaited && !QApplication::activeModalWidget(); }},
        {QStringLiteral("operations locked"), [=] { trigger(ActionId::LockOperations); },
         [=] { return m_window.actions()[ActionId::LockOperations]->isChecked(); }},
        {QStringLiteral("events only"),
         [=] {
             trigger(ActionId::LockOperations);
             m_window.log().filterField()->setText(QStringLiteral("returned"));
         },
         [this] { return m_window.log().view()->model()->rowCount() > 0; }},
        {QStringLiteral("handler answers"),
         [=] {
             m_window.log().filterField()->clear();
             trigger(ActionId::HandlerAnswers);
         },
         [] { return QApplication::activeModalWidget() != nullptr; }},
        {QStringLiteral("chinese"),
         [=] {
             qobject_cast<QDialog*>(QApplication::activeModalWidget())->reject();
             trigger(ActionId::Chinese);
         },
         [=] {
             return m_window.actions()[ActionId::SaveProject]->text().startsWith(QChar(0x4FDD))
                    && shown();
         }},
        {QStringLiteral("group removed"),
         [=] {
             records->select({store->snapshot().groups.at(2).id});
             trigger(ActionId::Remove);
         },
         [=] { return shown() && store->snapshot().groups.size() == 5; }},
        {QStringLiteral("panel destroyed"), [=] { trigger(ActionId::ClosePanel); },
         [=] { return !session->layer(); }},
        {QStringLiteral("panel back, english"),
         [=] {
             trigger(ActionId::English);
             trigger(ActionId::OpenPanel);
         },
         shown},
    };
}

bool Tour::perform(const Step& step)
{
    step.act();
    Notifier& notifier = m_window.session().notifier();
    return waitUntil([&] { return notifier.isIdle() && step.reached(); }, kStepLimitMs)
           && takePicture(step.name);
}

/// Saves a picture of the dialog in whose event loop the tour waits, and closes it.
void Tour::pictureNextDialog(const QString& name)
{
    m_dialogAwaited = true;
    auto* watch = new QTimer(&m_window);
    QObject::connect(watch, &QTimer::timeout, watch, [this, watch, name] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        watch->stop();
        watch->deleteLater();
        m_dialogAwaited = !takePicture(name);
        dialog->close();
    });
    watch->start(kLookAgainMs);
}

/// Saves a picture of the window with the open dialog in front of it.
bool Tour::takePicture(const QString& name)
{
    // The first round lays the widgets out, the second one paints them.
    QCoreApplication::processEvents();
    m_window.session().trace().flush();
    QCoreApplication::processEvents();
    QPixmap picture = m_window.grab();
    if (QWidget* dialog = QApplication::activeModalWidget()) {
        QPainter painter(&picture);
        const QRect frame =
            dialog->rect().translated(m_window.rect().center() - dialog->rect().center());
        painter.drawPixmap(frame.topLeft(), dialog->grab());
        painter.setPen(hostColors().line);
        painter.drawRect(frame.adjusted(-1, -1, 0, 0));
    }
    QString file = name;
    file.replace(QLatin1Char(' '), QLatin1Char('-')).remove(QLatin1Char(','));
    ++m_pictures;
    return picture.save(QDir(m_folder).filePath(
        QStringLiteral("%1-%2.png").arg(m_pictures, 2, 10, QLatin1Char('0')).arg(file)));
}
