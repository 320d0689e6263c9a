#include "tests/support/WarningTrap.h"
#include "tests/system/ScreenReader.h"
#include "tests/system/User.h"
#include "tests/system/WorkbenchProgram.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <functional>

namespace {

constexpr int kPatienceMs = 20000;

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// "button menu Add {Press,ShowMenu}": one line for each thing that shows below `heard`, with its
/// description in parentheses, and with those of its states and actions that matter. Fillers are
/// left out.
void tell(const Heard& heard, int depth, QStringList& lines)
{
    const QStringList states = heard.states();
    if (!states.contains(text("showing")))
        return;
    QString line = heard.role();
    const bool isFiller = line == text("filler") && heard.name().isEmpty();
    if (!heard.name().isEmpty())
        line += text(" ") + heard.name();
    if (!heard.description().isEmpty())
        line += text(" (%1)").arg(heard.description());
    for (const char* state : {"selected", "checked", "expanded", "collapsed"}) {
        if (states.contains(text(state)))
            line += text(" ") + text(state);
    }
    QStringList actions = heard.actions();
    if (!actions.isEmpty())
        line += text(" {%1}").arg(actions.join(text(",")));
    if (!isFiller)
        lines.append(QString(depth, QLatin1Char(' ')) + line);
    for (const Heard& child : heard.children())
        tell(child, isFiller ? depth : depth + 1, lines);
}

QString told(const Heard& heard)
{
    QStringList lines;
    tell(heard, 0, lines);
    return lines.join(QLatin1Char('\n'));
}

/// The workbench with the day's project, and somebody who hears it and has a keyboard.
struct Session
{
    Session()
    {
        QFile original(text(DAYSWORK_PROJECT));
        QFile copy(program.path(text("day.json")));
        if (!reader.isListening() || !original.open(QIODevice::ReadOnly)
            || !copy.open(QIODevice::WriteOnly))
            throw Stuck(text("neither bus nor project"));
        QJsonObject project = QJsonDocument::fromJson(original.readAll()).object();
        QJsonObject answers = project[text("answers")].toObject();
        answers[text("ipManagementAvailable")] = true;
        project[text("answers")] = answers;
        // A detection finds what has an address.
        QJsonArray processors = project[text("processors")].toArray();
        QJsonObject first = processors.first().toObject();
        first[text("ipAddress")] = text("203.0.113.20");
        processors[0] = first;
        project[text("processors")] = processors;
        copy.write(QJsonDocument(project).toJson());
        copy.close();
        program.start({text("--project"), copy.fileName()});
        // The last that the host says of a project that it opens.
        user.waitFor(text("the project"), [&] {
            const auto current = inPanel("tree item", "Stage left");
            return current && current->is("selected");
        });
    }

    /// Waits until it is there and shows.
    Heard find(const char* role, const char* name)
    {
        std::optional<Heard> found;
        user.waitFor(text("%1 %2").arg(text(role), text(name)), [&] {
            found = ScreenReader::find(text("workbench"), text(role), text(name));
            return found && found->is("showing");
        });
        return *found;
    }

    /// The first one in the panel; the workbench has things of the same names.
    static std::optional<Heard> inPanel(const char* role, const char* name)
    {
        const auto panel =
            ScreenReader::find(text("workbench"), text("frame"), text("Target selection area"));
        return panel ? ScreenReader::findIn(*panel, text(role), text(name)) : std::nullopt;
    }

    Heard row(const char* name)
    {
        std::optional<Heard> found;
        user.waitFor(text(name), [&] { return (found = inPanel("tree item", name)).has_value(); });
        return *found;
    }

    /// Does something and waits until it is announced, "focus Stage".
    void hear(const char* announcement, const std::function<void()>& act)
    {
        reader.forget();
        act();
        const QString wanted = text(announcement);
        const bool came =
            QTest::qWaitFor([&] { return reader.announced().contains(wanted); }, kPatienceMs);
        if (!came)
            throw Stuck(
                text("no \"%1\", but: %2").arg(wanted, reader.announced().join(QLatin1Char('|'))));
    }

    void hearKey(const char* announcement, const char* key)
    {
        hear(announcement, [&] { user.pressKeys(text(key)); });
    }

    void hearAction(const char* announcement, const Heard& thing, const char* action)
    {
        hear(announcement, [&] {
            if (!thing.act(action))
                throw Stuck(text("no action ") + text(action));
        });
    }

    /// The entries of the open menu, which has the focus in one of them.
    QStringList entries() const
    {
        QStringList names;
        for (const Heard& entry : reader.focus().parent().children()) {
            if (entry.role() == text("menu item"))
                names.append(entry.name());
        }
        return names;
    }

    Heard entry(const char* name) const
    {
        const auto found =
            ScreenReader::findIn(reader.focus().parent(), text("menu item"), text(name));
        if (!found)
            throw Stuck(text("no entry ") + text(name));
        return *found;
    }

    ScreenReader reader;
    WorkbenchProgram program;
    User user{program};
};

void inSession(const std::function<void(Session&)>& walk)
{
    try {
        Session session;
        walk(session);
        // Qt says when somebody asks about what has gone meanwhile.
        QStringList complaints =
            QString::fromUtf8(session.program.complaints()).split(QLatin1Char('\n'));
        complaints.removeAll(QString());
        const QStringList stale = complaints.filter(text("Accessible invalid"));
        QCOMPARE(complaints, stale);
    } catch (const Stuck& stuck) {
        QFAIL(stuck.what());
    }
}

} // namespace

/// The workbench with the shipped library, as a screen reader hears it on the accessibility bus.
class ScreenReaderTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldHearThePanel();
    void shouldHearRowsThatKeysReach();
    void shouldHearARename();
    void shouldHearAMoveByKeys();
    void shouldHearMenus();
    void shouldHearTheSearch();
    void shouldHearDevicesComeOnline();
    void shouldHearDialogs();
    void shouldHearAlerts();
};

void ScreenReaderTest::shouldHearThePanel()
{
    inSession([](Session& session) {
        const QString expected =
            text("frame Target selection area\n"
                 " button menu Detect devices {Press,ShowMenu,SetFocus}\n"
                 " push button IP address management... {Press,SetFocus}\n"
                 " combo box Evening {ShowMenu,Press}\n"
                 "  list\n"
                 "   list item Evening {Toggle}\n"
                 "   list item Rehearsal {Toggle}\n"
                 " text Search (Search) {SetFocus}\n"
                 "  push button Search (Search) {Press}\n"
                 " button menu Add {Press,ShowMenu,SetFocus}\n"
                 " tree Processors {SetFocus}\n"
                 "  tree item All processors(4) (Project, Processor groups: 2) expanded"
                 " {SetFocus,Collapse,ShowMenu}\n"
                 "   tree item Stage (Processor group, Processors: 2) expanded"
                 " {SetFocus,Collapse,ShowMenu,Rename}\n"
                 "    tree item Stage left (Processor, Offline, Number: 1) selected"
                 " {SetFocus,ShowMenu,Rename}\n"
                 "    tree item Stage right (Processor, Offline, Number: 2)"
                 " {SetFocus,ShowMenu,Rename}\n"
                 "   tree item Wings (Processor group, Processors: 1) expanded"
                 " {SetFocus,Collapse,ShowMenu,Rename}\n"
                 "    tree item Wing east (Processor, Offline, Number: 3)"
                 " {SetFocus,ShowMenu,Rename}\n"
                 "   tree item Spare (Processor, Offline, Number: 4) {SetFocus,ShowMenu,Rename}\n"
                 " push button Float (Undocks and re-attaches the dock widget) {Press}");
        const Heard panel = session.find("frame", "Target selection area");
        QTRY_COMPARE(told(panel), expected);
        QCOMPARE(session.find("combo box", "Evening").label(), text("Device set"));
    });
}

void ScreenReaderTest::shouldHearRowsThatKeysReach()
{
    inSession([](Session& session) {
        session.row("Stage left").act("SetFocus");
        session.hearAction("focus Stage right", session.row("Stage right"), "SetFocus");
        session.hearKey("focus Stage left", "Up");
        session.hearKey("focus Stage", "Up");
        session.hearKey("focus All processors(4)", "Up");
        session.hearKey("focus Stage", "Down");
        session.hearKey("focus Stage left", "Down");
        session.hearKey("focus Stage", "Left");
        QVERIFY(session.row("Stage").is("focused"));
        session.user.pressKeys(text("Left"));
        session.user.waitFor(text("collapsed"),
                             [&] { return session.row("Stage").is("collapsed"); });
        QVERIFY(!Session::inPanel("tree item", "Stage left"));
        session.row("Stage").act("Expand");
        session.row("Stage left");
        QVERIFY(session.row("Stage").is("expanded"));
    });
}

void ScreenReaderTest::shouldHearARename()
{
    inSession([](Session& session) {
        const Heard row = session.row("Spare");
        session.hearAction("focus Name", row, "Rename");
        QCOMPARE(session.reader.focus().role(), text("text"));
        QCOMPARE(session.reader.focus().text(), text("Spare"));
        session.user.write(text("Attic"));
        session.hearKey("name Attic", "Return");
        QCOMPARE(row.name(), text("Attic"));
    });
}

void ScreenReaderTest::shouldHearAMoveByKeys()
{
    inSession([](Session& session) {
        session.hearAction("focus Stage right", session.row("Stage right"), "SetFocus");
        session.hearKey("description Stage right", "ctrl+x");
        QCOMPARE(session.row("Stage right").description(),
                 text("Processor, Offline, Number: 2, Marked to be moved"));
        session.hearAction("focus Wings", session.row("Wings"), "SetFocus");
        session.hearKey("focus Stage right", "ctrl+v");
        QCOMPARE(session.row("Stage right").parent().name(), text("Wings"));
        QTRY_COMPARE(session.row("Stage right").description(),
                     text("Processor, Offline, Number: 2"));
    });
}

void ScreenReaderTest::shouldHearMenus()
{
    inSession([](Session& session) {
        session.hearAction("focus Add processor group", session.find("button menu", "Add"),
                           "ShowMenu");
        QCOMPARE(session.entries().join(QLatin1Char('|')),
                 text("Add processor group|Add 1 processor|Add 2 processor|Custom adds..."));
        session.hearKey("focus Add 1 processor", "Down");
        session.user.pressKeys(text("Escape"));
        session.hearAction("focus Add processor group", session.row("Wings"), "ShowMenu");
        QVERIFY(session.entries().contains(text("Rename")));
        session.hearKey("focus Wings", "Escape");
        session.hearAction("focus All devices", session.find("button menu", "Detect devices"),
                           "ShowMenu");
        QCOMPARE(session.entries().join(QLatin1Char('|')), text("All devices|Processors only"));
    });
}

void ScreenReaderTest::shouldHearTheSearch()
{
    inSession([](Session& session) {
        const Heard field = session.find("text", "Search");
        session.hearAction("focus Search", field, "SetFocus");
        session.hear("description Search", [&] { session.user.write(text("wing")); });
        QTRY_COMPARE(field.description(), text("Processors found: 1"));
        QVERIFY(ScreenReader::findIn(field, text("push button"), text("Clear")));
        session.hearKey("focus Wing east", "Down");
    });
}

void ScreenReaderTest::shouldHearDevicesComeOnline()
{
    inSession([](Session& session) {
        const Heard row = session.row("Stage left");
        QCOMPARE(row.description(), text("Processor, Offline, Number: 1"));
        session.hearAction("description Stage left", session.find("button menu", "Detect devices"),
                           "Press");
        QCOMPARE(row.description(), text("Processor, Online, Number: 1"));
    });
}

void ScreenReaderTest::shouldHearDialogs()
{
    inSession([](Session& session) {
        session.find("push button", "IP address management...").act("Press");
        const Heard dialog = session.find("dialog", "IP address management");
        QTRY_COMPARE(told(dialog), text("dialog IP address management\n"
                                        " push button Close (Close) {Press}\n"
                                        " button menu Add (Add) {Press,ShowMenu,SetFocus}\n"
                                        " push button Edit (Edit)\n"
                                        " push button Delete (Delete)\n"
                                        " push button Clear (Clear) {Press,SetFocus}\n"
                                        " push button Import (Import) {Press,SetFocus}\n"
                                        " push button Export (Export) {Press,SetFocus}\n"
                                        " table IP addresses\n"
                                        "  panel\n"
                                        "  column header IP address\n"
                                        "  column header Name\n"
                                        "  row header\n"
                                        "  cell 203.0.113.10 {Toggle}\n"
                                        "  cell Desk {Toggle}"));
        session.hearAction("focus Read IP from online processors",
                           *ScreenReader::findIn(dialog, text("button menu"), text("Add")),
                           "Press");
        session.hearAction("focus IP address", session.entry("Add an IP address..."), "Press");
        QCOMPARE(session.reader.focus().label(), text("IP address"));
        QCOMPARE(told(session.find("dialog", "Add IP")),
                 text("dialog Add IP\n"
                      " push button Close (Close) {Press}\n"
                      " label IP address\n"
                      " text IP address {SetFocus}\n"
                      " label Name\n"
                      " text Name {SetFocus}\n"
                      " panel\n"
                      "  push button OK {Press,SetFocus}\n"
                      "  push button Cancel {Press,SetFocus}"));
        session.hearKey("focus Name", "Tab");
        session.hearKey("focus Add", "Escape");
    });
}

void ScreenReaderTest::shouldHearAlerts()
{
    inSession([](Session& session) {
        session.hearAction("focus Add processor group", session.row("Spare"), "ShowMenu");
        session.hearAction("focus Yes", session.entry("Delete"), "Press");
        const Heard alert = session.find("alert message", "Workbench");
        QCOMPARE(told(alert),
                 text("alert message Workbench (Want to delete the selected processor?)\n"
                      " push button Close (Close) {Press}\n"
                      " graphic Question\n"
                      " panel Message\n"
                      "  label Want to delete the selected processor?\n"
                      " panel\n"
                      "  push button Yes {Press,SetFocus}\n"
                      "  push button No {Press,SetFocus}"));
        session.hearAction("focus Spare",
                           *ScreenReader::findIn(alert, text("push button"), text("No")), "Press");
        session.row("Spare");
    });
}

TSA_TEST_MAIN(ScreenReaderTest)
#include "tst_screenreader.moc"
