#include "tests/support/WarningTrap.h"
#include "tests/system/Elements.h"
#include "tests/system/Outcome.h"
#include "tests/system/User.h"
#include "tests/system/WorkbenchProgram.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <memory>

/// The workbench loads the shipped library and is used through a whole day's work with mouse and
/// keys. What the panel asks of its host is compared after every step, and all of it at the end.
class DaysWorkTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldDoADaysWork_data();
    void shouldDoADaysWork();

private:
    QString doIt(const QStringList& arguments);
    void openProject();
    void pickAndSearch();
    void rename();
    void addByCount();
    void addByAddress();
    void addByList();
    void group();
    void drag();
    void remove();
    void ungroup();
    void manageAddresses();
    void importAndExport();
    void switchDeviceSet();
    void detect();
    void switchLanguage();
    void lock();
    void readOnly();
    void quit();
    void replay();

    void search(const char* words, const char* name);
    void answer(const char* answerName);
    void confirm(const char* question, const char* reply);
    void expect(const QStringList& requests);
    QString report(const char* step, const QString& what);

    std::unique_ptr<WorkbenchProgram> m_program;
    std::unique_ptr<User> m_user;
    QStringList m_expected;
    bool m_eventsInside = false;
};

void DaysWorkTest::shouldDoADaysWork_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("events on a thread of the host") << QStringList();
    QTest::newRow("events on the GUI thread") << QStringList{text("--gui-thread-events")};
}

void DaysWorkTest::shouldDoADaysWork()
{
    QFETCH(QStringList, arguments);
    m_expected.clear();
    m_eventsInside = !arguments.isEmpty();
    m_program = std::make_unique<WorkbenchProgram>();
    m_user = std::make_unique<User>(*m_program);
    const QString failure = doIt(arguments);
    m_user.reset();
    m_program.reset();
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
}

/// What went wrong; empty for nothing.
QString DaysWorkTest::doIt(const QStringList& arguments)
{
    const std::pair<const char*, void (DaysWorkTest::*)()> steps[] = {
        {"open the project", &DaysWorkTest::openProject},
        {"pick and search", &DaysWorkTest::pickAndSearch},
        {"rename", &DaysWorkTest::rename},
        {"add by count", &DaysWorkTest::addByCount},
        {"add by address", &DaysWorkTest::addByAddress},
        {"add by the list", &DaysWorkTest::addByList},
        {"group", &DaysWorkTest::group},
        {"drag", &DaysWorkTest::drag},
        {"delete", &DaysWorkTest::remove},
        {"ungroup", &DaysWorkTest::ungroup},
        {"manage addresses", &DaysWorkTest::manageAddresses},
        {"import and export", &DaysWorkTest::importAndExport},
        {"switch the device set", &DaysWorkTest::switchDeviceSet},
        {"detect", &DaysWorkTest::detect},
        {"switch the language", &DaysWorkTest::switchLanguage},
        {"lock", &DaysWorkTest::lock},
        {"read-only", &DaysWorkTest::readOnly},
        {"quit", &DaysWorkTest::quit},
        {"replay", &DaysWorkTest::replay},
    };
    const char* step = "start";
    try {
        m_program->start(arguments
                         + QStringList{text("--record"), m_program->path(text("day.jsonl"))});
        for (const auto& [name, work] : steps) {
            step = name;
            (this->*work)();
        }
    } catch (const Stuck& stuck) {
        return report(step, QString::fromStdString(stuck.what()));
    }
    return {};
}

/// The sample first, as a first try; then the day's own project.
void DaysWorkTest::openProject()
{
    const QString project = m_program->path(text("day.json"));
    if (!QFile::copy(text(DAYSWORK_PROJECT), project)
        || !QFile::setPermissions(project, QFile::ReadOwner | QFile::WriteOwner))
        throw Stuck(text("%1 cannot be copied").arg(project));
    m_program->nameIdentities(project);
    m_user->pressKeys(text("ctrl+shift+s"));
    m_user->find(row("All processors(120)"));
    m_user->pressKeys(text("ctrl+o"));
    m_user->waitForKeyboardIn(text("EditableText"));
    m_user->write(project);
    m_user->pressKeys(text("Return"));
    m_user->find(row("All processors(4)"));
    m_user->findIn(text("selected"), row("Stage left"));
    expect({text("SetObserver()")});
}

void DaysWorkTest::pickAndSearch()
{
    m_user->click(row("Stage right"));
    expect({pickedProcessor("Stage right", "Stage left")});
    search("wing", "Wing east");
    expect({pickedProcessor("Wing east", "Stage right")});
}

void DaysWorkTest::rename()
{
    m_user->choose(text("Rename"), row("Spare"));
    m_user->waitForKeyboardIn(text("EditableText"), text("Spare"));
    m_user->write(text("Foyer"));
    m_user->pressKeys(text("Return"));
    expect({pickedProcessor("Spare", "Wing east"), text("AppendContextMenu(2, <Spare>, false)"),
            text(R"(RenameProcessor(<Spare>, "Foyer"))"), text("RenameProcessor() = true")});
    m_user->find(row("Foyer"));
}

/// Neither addresses nor a list of them: processors are only counted.
void DaysWorkTest::addByCount()
{
    m_user->choose(text("Add 1 processor"), row("Wings"));
    m_user->findIn(text("selected"), row("Processor 5"));
    expect({pickedGroup("Wings", "Wing east"), text("AppendContextMenu(1, <Wings>, false)"),
            text("AddProcessors(<Wings>, 1)"), pickedProcessor("new 1", "Spare")});
    m_user->click(menuButton("Add"));
    m_user->click(entry("Add 2 processor"));
    m_user->findIn(text("selected"), row("Processor 7"));
    expect({text("AddProcessors(<Wings>, 2)"), pickedProcessor("new 3", "Spare")});
    m_user->choose(text("Custom adds..."), row("Stage"));
    m_user->writeInto({text("SpinBox"), text("Number of processors"), {}}, text("2"));
    m_user->click({text("ComboBox"), {}, text("Custom add processor")});
    m_user->click({text("ListItem"), text("16"), {}});
    m_user->click(button("OK", "Custom add processor"));
    // Events raised inside a call are through when it returns.
    const QString arrived = pickedProcessor("new 5", "Spare");
    expect({pickedGroup("Stage", "Spare"), text("AppendContextMenu(1, <Stage>, false)"),
            text("AddProcessors(<Stage>, 2)"),
            m_eventsInside ? arrived : text("SetNewProcessorOutputs(16)"),
            m_eventsInside ? text("SetNewProcessorOutputs(16)") : arrived});
    m_user->findIn(text("selected"), row("Processor 9"));
}

/// The host goes by addresses, and keeps no list.
void DaysWorkTest::addByAddress()
{
    answer("usesIpAddressing");
    m_user->choose(text("Add 1 processor"), row("Stage"));
    m_user->writeInto(field("IP address", "Add IP"), text("203.0.113.1"));
    m_user->click(button("OK", "Add IP"));
    expect({pickedGroup("Stage", "Spare"), text("AppendContextMenu(1, <Stage>, false)"),
            text("AddProcessorsWithIps(<Stage>, [203.0.113.1])"),
            pickedProcessor("new 6", "new 5")});
    m_user->click(menuButton("Add"));
    m_user->click(entry("Add 2 processor"));
    m_user->writeInto(field("IP 1", "Add IP"), text("203.0.113.2"));
    m_user->writeInto(field("IP 2", "Add IP"), text("203.0.113.3"));
    m_user->click(button("OK", "Add IP"));
    expect({text("AddProcessorsWithIps(<Stage>, [203.0.113.2, 203.0.113.3])"),
            pickedProcessor("new 8", "new 5")});
    m_user->click(menuButton("Add"));
    m_user->click(entry("Custom adds..."));
    m_user->writeInto({text("SpinBox"), text("Number"), text("Custom add processor")}, text("2"));
    m_user->writeInto(field("IP address", "Custom add processor"), text("203.0.113.4"));
    m_user->click(button("OK", "Custom add processor"));
    expect({text("AddProcessorsWithIps(<Stage>, [203.0.113.4, 203.0.113.5])"),
            pickedProcessor("new 10", "new 5")});
}

/// The host keeps a list of addresses.
void DaysWorkTest::addByList()
{
    answer("ipManagementAvailable");
    m_user->choose(text("Add 1 processor"), row("Wings"));
    m_user->writeInto(field("IP address", "Add IP"), text("203.0.113.21"));
    m_user->writeInto(field("Name", "Add IP"), text("Balcony"));
    m_user->click(button("OK", "Add IP"));
    expect({pickedGroup("Wings", "new 5"), text("AppendContextMenu(1, <Wings>, false)"),
            text("RefreshIPList()"), text(R"(AddIPAddress("203.0.113.21", "Balcony"))"),
            text("SaveIPList()"), text("AddProcessorsFromIpList(<Wings>, 1 texts)"),
            pickedProcessor("new 11", "new 10")});
    m_user->click(menuButton("Add"));
    m_user->click(entry("Add 2 processor"));
    m_user->writeInto(field("IP 1", "Add IP"), text("203.0.113.22"));
    m_user->writeInto(field("IP 2", "Add IP"), text("203.0.113.23"));
    m_user->click(button("OK", "Add IP"));
    expect({text("RefreshIPList()"), text(R"(AddIPAddress("203.0.113.22", ""))"),
            text(R"(AddIPAddress("203.0.113.23", ""))"), text("SaveIPList()"),
            text("AddProcessorsFromIpList(<Wings>, 2 texts)"),
            pickedProcessor("new 13", "new 10")});
    m_user->click(menuButton("Add"));
    m_user->click(entry("Custom adds..."));
    m_user->writeInto({text("SpinBox"), text("Number"), text("Custom add processor")}, text("2"));
    m_user->writeInto(field("IP address", "Custom add processor"), text("203.0.113.24"));
    m_user->click(button("OK", "Custom add processor"));
    expect({text("RefreshIPList()"), text(R"(AddIPAddress("203.0.113.24", ""))"),
            text(R"(AddIPAddress("203.0.113.25", ""))"), text("SaveIPList()"),
            text("AddProcessorsFromIpList(<Wings>, 2 texts)"),
            pickedProcessor("new 15", "new 10")});
    m_user->click(menuButton("Add"));
    m_user->click(entry("Add 1 processor"));
    m_user->click(button("Cancel", "Add IP"));
    m_user->waitUntilGone(dialog("Add IP"));
    expect({text("RefreshIPList()")});
}

void DaysWorkTest::group()
{
    m_user->click(menuButton("Add"));
    m_user->click(entry("Add processor group"));
    m_user->waitForKeyboardIn(text("EditableText"), text("Group 3"));
    m_user->write(text("Roof"));
    m_user->pressKeys(text("Return"));
    expect({text(R"(CreateGroup("Group 3"))"), text("CreateGroup() = <new group 1>"),
            pickedGroup("new group 1", "new 10"), text(R"(RenameGroup(<new group 1>, "Roof"))")});
    m_user->findIn(text("selected"), row("Roof"));
}

void DaysWorkTest::drag()
{
    const auto moves = [this] {
        return m_program->log(text("call")).filter(text("IsRestrictedMode(")).size();
    };
    search("foy", "Foyer");
    expect({pickedProcessor("Spare", "new 15")});
    m_user->drag(row("Foyer"), row("Roof"), moves);
    // The row stays selected, so nothing is picked.
    expect({text(R"(SetProcessorGroup("Roof", <new group 1>, 1: [<Spare>]))")});
}

void DaysWorkTest::remove()
{
    search("RIGHT", "Stage right");
    m_user->choose(text("Delete"), row("Stage right"));
    confirm("Want to delete the selected processor?", "No");
    expect({pickedProcessor("Stage right", "Spare"),
            text("AppendContextMenu(2, <Stage right>, false)")});
    m_user->click(row("Processor 8"));
    m_user->clickWith(text("ctrl"), row("Processor 9"));
    expect({pickedProcessor("new 4", "Stage right"),
            text("ReportSelection(<new 5>, 2: [<new 4>, <new 5>], 0, <new 4>)")});
    m_user->pressKeys(text("Delete"));
    confirm("Want to delete the selected processor?", "Yes");
    expect({text("PreDeleteProcessors(2: [<new 4>, <new 5>])"),
            text("DeleteProcessors(2: [<new 4>, <new 5>])"),
            pickedProcessor("Stage right", "new 5")});
    m_user->waitUntilGone(row("Processor 9"));
}

void DaysWorkTest::ungroup()
{
    search("foy", "Foyer");
    m_user->choose(text("Delete"), row("Roof"));
    confirm("Are you sure you want to ungroup the selected processor group (the processors under "
            "the group still remains)?",
            "Yes");
    // The processor moves out and stays current.
    expect({pickedProcessor("Spare", "Stage right"), pickedGroup("new group 1", "Stage right"),
            text("AppendContextMenu(1, <new group 1>, false)"), text("Ungroup(<new group 1>)"),
            text("SetProcessorGroup(no group, {}, 1: [<Spare>])"),
            text("ReportSelection({}, 0: [], 0, <Stage right>)")});
    m_user->waitUntilGone(row("Roof"));
}

void DaysWorkTest::manageAddresses()
{
    m_user->click(button("IP address management..."));
    m_user->click(menuButton("Add", "IP address management"));
    m_user->click(entry("Add an IP address..."));
    m_user->writeInto(field("IP address", "Add IP"), text("203.0.113.31"));
    m_user->writeInto(field("Name", "Add IP"), text("Bridge"));
    m_user->click(button("OK", "Add IP"));
    expect({text("RefreshIPList()"), text(R"(AddIPAddress("203.0.113.31", "Bridge"))"),
            text("SaveIPList()")});
    m_user->click({text("Cell"), text("203.0.113.31"), text("IP addresses")});
    m_user->click(button("Edit", "IP address management"));
    m_user->writeInto(field("IP address", "Change IP address"), text("203.0.113.32"));
    m_user->writeInto(field("Name", "Change IP address"), text("Tunnel"));
    m_user->click(button("OK", "Change IP address"));
    expect({text("RefreshIPList()"), text(R"(ModifyIPAddress(6, "203.0.113.32", "Tunnel"))")});
    m_user->click({text("Cell"), text("203.0.113.24"), text("IP addresses")});
    m_user->clickWith(text("ctrl"), {text("Cell"), text("203.0.113.25"), text("IP addresses")});
    m_user->click(button("Delete", "IP address management"));
    expect(
        {text(R"(DeleteIPAddress("203.0.113.24"))"), text(R"(DeleteIPAddress("203.0.113.25"))")});
    m_user->waitUntilGone({text("Cell"), text("203.0.113.25"), text("IP addresses")});
}

/// The dialog of before is open still.
void DaysWorkTest::importAndExport()
{
    const QString imported = m_program->path(text("import.txt"));
    QFile file(imported);
    if (!file.open(QIODevice::WriteOnly) || file.write("203.0.113.41,Tower\r\n") < 0)
        throw Stuck(text("%1 cannot be written").arg(imported));
    file.close();
    m_user->click(button("Import", "IP address management"));
    m_user->find(dialog("Import an IP address list"));
    m_user->waitForKeyboardIn(text("EditableText"));
    m_user->write(imported);
    m_user->pressKeys(text("Return"));
    m_user->find({text("Cell"), text("203.0.113.41"), text("IP addresses")});
    expect({text(R"(ImportIPFile("~/import.txt"))"), text("ImportIPFile() = 0"),
            text(R"(ShowTipMessage("Import successfully."))")});

    const QString exported = m_program->path(text("export.txt"));
    m_user->click(button("Export", "IP address management"));
    m_user->find(dialog("Export an IP address list"));
    m_user->waitForKeyboardIn(text("EditableText"));
    m_user->write(exported);
    m_user->pressKeys(text("Return"));
    expect({text(R"(ShowTipMessage("Export successfully."))")});
    QFile written(exported);
    const QByteArray wanted = "203.0.113.10,Desk\n203.0.113.21,Balcony\n203.0.113.22,\n"
                              "203.0.113.23,\n203.0.113.32,Tunnel\n203.0.113.41,Tower\n";
    if (!written.open(QIODevice::ReadOnly) || written.readAll() != wanted)
        throw Stuck(text("%1 is not as it should be").arg(exported));
    m_user->click(button("Close", "IP address management"));
    m_user->waitUntilGone(dialog("IP address management"));
    expect({text("IpListChanged(6 texts, 6 texts) = true"), text("DetectProcessorsOnly()")});
}

void DaysWorkTest::switchDeviceSet()
{
    m_user->click({text("ComboBox"), text("Evening"), {}});
    m_user->click({text("ListItem"), text("Rehearsal"), {}});
    expect({text("ConfirmDeviceSetChange(<Rehearsal>, 1) = true")});
    m_user->find({text("ComboBox"), text("Rehearsal"), {}});
}

void DaysWorkTest::detect()
{
    const Element detection = m_user->find(menuButton("Detect devices"));
    m_user->click(menuButton("Detect devices"));
    expect({text("DetectAllDevices()"), text("DetectAllDevices() = 0")});
    m_user->clickAt(QPoint(detection.rect.right() - 6, detection.rect.center().y()));
    m_user->click(entry("Processors only"));
    expect({text("DetectProcessorsOnly()")});
    // Closing the IP list had the host look at its addresses: three of them are new processors.
    m_user->scrollUp({text("Tree"), text("Processors"), {}}, row("All processors(20)"));
}

void DaysWorkTest::switchLanguage()
{
    m_user->pressKeys(text("ctrl+alt+z"));
    m_user->find(menuButton("检测设备"));
    m_user->find({text("TreeItem"), text("全部处理器(20)"), text("处理器")});
    m_user->pressKeys(text("ctrl+alt+e"));
    m_user->find(menuButton("Detect devices"));
    m_user->find(row("All processors(20)"));
    expect({});
}

void DaysWorkTest::lock()
{
    m_user->pressKeys(text("ctrl+alt+l"));
    m_user->findIn(text("disabled"), menuButton("Add"));
    m_user->findIn(text("disabled"), button("IP address management..."));
    m_user->findIn(text("disabled"), {text("ComboBox"), text("Rehearsal"), {}});
    // No menu comes; the click after it would only close one.
    m_user->rightClick(row("Processor 10"));
    m_user->click(row("Processor 11"));
    expect({pickedProcessor("new 6", "Spare"), pickedProcessor("new 7", "new 6")});
    m_user->pressKeys(text("ctrl+alt+l"));
    m_user->findIn(text("enabled"), menuButton("Add"));
}

void DaysWorkTest::readOnly()
{
    m_user->pressKeys(text("ctrl+alt+r"));
    m_user->findIn(text("disabled"), menuButton("Add"));
    m_user->rightClick(row("Stage"));
    m_user->find(entry("Rename"));
    m_user->findIn(text("disabled"), entry("Delete"));
    if (m_program->look().find(entry("Add 1 processor")))
        throw Stuck(text("a read-only tree offers additions"));
    m_user->pressKeys(text("Escape"));
    m_user->waitUntilGone(entry("Rename"));
    expect({pickedGroup("Stage", "new 6"), text("AppendContextMenu(1, <Stage>, true)")});
    m_user->pressKeys(text("ctrl+alt+r"));
    m_user->findIn(text("enabled"), menuButton("Add"));
}

void DaysWorkTest::quit()
{
    m_user->pressKeys(text("ctrl+s"));
    m_user->find({text("Window"), text("day.json - Workbench"), {}});
    m_user->pressKeys(text("ctrl+q"));
    const QByteArray complaints = m_program->waitForEnd();
    if (m_program->exitCode() != 0 || !complaints.isEmpty())
        throw Stuck(text("it ended with %1").arg(m_program->exitCode()));
    expect({});
    const QString saved = projectText(m_program->path(text("day.json")));
    if (saved
        != text("Stage[Stage left,Stage right,Processor 10,Processor 11,Processor 12,"
                "Processor 13,Processor 14],Wings[Wing east,Processor 5,Processor 6,"
                "Processor 7,Processor 15,Processor 16,Processor 17,Processor 18,"
                "Processor 19],Foyer,Processor 20,Processor 21,Processor 22"))
        throw Stuck(text("saved is ") + saved);
}

/// The day without its user.
void DaysWorkTest::replay()
{
    // The user did not have to replace a file.
    QFile::remove(m_program->path(text("export.txt")));
    const QString difference = m_program->replay(m_program->path(text("day.jsonl")));
    if (!difference.isEmpty())
        throw Stuck(difference);
}

/// Finds a processor by part of its name; its row comes into view.
void DaysWorkTest::search(const char* words, const char* name)
{
    m_user->writeInto(field("Search", ""), text(words));
    m_user->click({text("ListItem"), text(name), text("Search results")});
    m_user->findIn(text("selected"), row(name));
}

/// Switches what the handler answers.
void DaysWorkTest::answer(const char* answerName)
{
    m_user->pressKeys(text("ctrl+shift+h"));
    m_user->click({text("CheckBox"), text(answerName), text("Handler answers")});
    m_user->click(button("OK", "Handler answers"));
    m_user->waitUntilGone(dialog("Handler answers"));
}

/// Answers a question of the panel's.
void DaysWorkTest::confirm(const char* question, const char* reply)
{
    m_user->waitFor(text(question), [this, question] {
        const std::optional<Element> box = m_program->look().find(messageBox("Workbench"));
        return box && box->description == text(question);
    });
    m_user->click(button(reply, "Workbench"));
    m_user->waitUntilGone(messageBox("Workbench"));
}

/// Waits until the panel has made these requests after those expected so far, and no other ones.
void DaysWorkTest::expect(const QStringList& more)
{
    m_expected += more;
    QStringList made;
    bool isAstray = false;
    const auto arrived = [&] {
        made = requests(m_program->log(text("call")));
        isAstray = made.size() > m_expected.size()
                   || !std::equal(made.begin(), made.end(), m_expected.begin());
        return isAstray || made.size() == m_expected.size();
    };
    try {
        if (!arrived())
            m_user->waitFor(text("requests"), arrived);
    } catch (const Stuck&) {
        isAstray = true;
    }
    if (isAstray)
        throw Stuck(text("requests expected:\n  %1\nrequests made:\n  %2")
                        .arg(more.join(text("\n  ")),
                             made.mid(m_expected.size() - more.size()).join(text("\n  "))));
}

/// Leaves what there is to know of a failure, and lets go of the keys.
QString DaysWorkTest::report(const char* step, const QString& what)
{
    const QString name = text(FAILURE_FOLDER "/dayswork-failure");
    m_program->keepTraces(name);
    QProcess::execute(text("xdotool"), {text("mouseup"), text("1"), text("keyup"), text("ctrl")});
    return text("%1: %2\nstandard error: %3\nscreen and log: %4.png, .json, .txt")
        .arg(text(step), what, QString::fromUtf8(m_program->complaints()), name);
}

TSA_TEST_MAIN(DaysWorkTest)

#include "tst_dayswork.moc"
