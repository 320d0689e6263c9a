#include "host/workbench/program/Inspector.h"
#include "tests/support/WarningTrap.h"

#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLineEdit>
#include <QListView>
#include <QLocalSocket>
#include <QMenu>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#endif

namespace {
/// "Role:name" of what is told, front to back, and of what lies in it. What has no name stands with
/// its value, as a combo box does on Windows.
QStringList told(const QJsonArray& elements)
{
    QStringList found;
    for (const QJsonValue& element : elements) {
        const QString value = element[QLatin1String("value")].toString();
        found.append(QStringLiteral("%1:%2").arg(element[QLatin1String("role")].toString(),
                                                 element[QLatin1String("name")].toString(value)));
        found += told(element[QLatin1String("children")].toArray());
    }
    return found;
}

QStringList told()
{
    return told(Inspector::tree()[QLatin1String("windows")].toArray());
}

/// The first one of that name, wherever it is.
QJsonObject element(const QString& name, const QJsonArray& elements)
{
    for (const QJsonValue& value : elements) {
        if (value[QLatin1String("name")].toString() == name)
            return value.toObject();
        QJsonObject inside = element(name, value[QLatin1String("children")].toArray());
        if (!inside.isEmpty())
            return inside;
    }
    return {};
}

QJsonObject element(const QString& name)
{
    return element(name, Inspector::tree()[QLatin1String("windows")].toArray());
}

QStringList states(const QString& name)
{
    return element(name)[QLatin1String("states")].toVariant().toStringList();
}

struct Window : QWidget
{
    Window()
    {
        new QVBoxLayout(this);
        setWindowTitle(QStringLiteral("Main"));
    }

    template <typename Widget>
    Widget* add(Widget* widget)
    {
        layout()->addWidget(widget);
        return widget;
    }

    void open()
    {
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }
};

void fill(QStandardItemModel& model, int rows, const QString& prefix)
{
    model.clear();
    for (int row = 0; row < rows; ++row)
        model.appendRow(new QStandardItem(prefix + QString::number(row)));
}

} // namespace

class InspectorTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldDescribeWidgets();
    void shouldOmitHiddenElements();
    void shouldDescribeOnlyVisibleCells();
    void shouldDescribeTreeRowsAndTheirStates();
    void shouldDescribeCellsAgainAfterAChange();
    void shouldListTheForemostWindowFirst();
    void shouldReportTheFocusedElement();
    void shouldAnswerEveryClient_data();
    void shouldAnswerEveryClient();
#ifdef Q_OS_UNIX // A local socket is no file on Windows.
    void shouldReplaceASocketThatNobodyListensTo();
#endif
#ifdef Q_OS_UNIX // A local socket is no file on Windows.
    void shouldLeaveWhatIsNotItsOwn();
#endif
    void shouldLeaveTheNameOfAnother();
    void shouldReportWhyItCannotListen_data();
    void shouldReportWhyItCannotListen();
};

void InspectorTest::shouldDescribeWidgets()
{
    Window window;
    auto* button = window.add(new QPushButton(QStringLiteral("&Go")));
    button->setToolTip(QStringLiteral("Goes"));
    button->setEnabled(false);
    auto* field = window.add(new QLineEdit(QStringLiteral("text")));
    field->setAccessibleName(QStringLiteral("Field"));
    window.open();
    QCOMPARE(told(), QStringList({QStringLiteral("Client:Main"), QStringLiteral("Button:Go"),
                                  QStringLiteral("EditableText:Field")}));
    QCOMPARE(states(QStringLiteral("Go")), QStringList{QStringLiteral("disabled")});
    QCOMPARE(element(QStringLiteral("Go"))[QLatin1String("description")].toString(),
             QStringLiteral("Goes"));
    QCOMPARE(element(QStringLiteral("Field"))[QLatin1String("value")].toString(),
             QStringLiteral("text"));
    const QPoint corner = button->mapToGlobal(QPoint(0, 0));
    QCOMPARE(element(QStringLiteral("Go"))[QLatin1String("rect")].toArray(),
             QJsonArray({corner.x(), corner.y(), button->width(), button->height()}));
}

void InspectorTest::shouldOmitHiddenElements()
{
    Window window;
    window.add(new QPushButton(QStringLiteral("Shown")));
    auto* choice = window.add(new QComboBox);
    choice->addItems({QStringLiteral("One"), QStringLiteral("Two")});
    window.open();
    window.add(new QPushButton(QStringLiteral("Hidden")))->hide();
    QCOMPARE(told(), QStringList({QStringLiteral("Client:Main"), QStringLiteral("Button:Shown"),
                                  QStringLiteral("ComboBox:One")}));
    choice->showPopup();
    QTRY_VERIFY(told().contains(QStringLiteral("ListItem:Two")));
    choice->hidePopup();
    QTRY_VERIFY(!told().contains(QStringLiteral("ListItem:Two")));
}

void InspectorTest::shouldDescribeOnlyVisibleCells()
{
    Window window;
    QStandardItemModel model(100000, 3);
    auto* table = window.add(new QTableView);
    table->setModel(&model);
    window.open();
    const int few = told().filter(QStringLiteral("Cell:")).size();
    QVERIFY2(few > 3 && few < 300, qPrintable(QString::number(few)));
    const QRect frame(table->viewport()->mapToGlobal(QPoint(0, 0)), table->viewport()->size());
    model.setItem(0, new QStandardItem(QStringLiteral("first")));
    QVERIFY(!element(QStringLiteral("first")).isEmpty());
    table->scrollToBottom();
    QVERIFY(element(QStringLiteral("first")).isEmpty());
    model.setItem(99999, new QStandardItem(QStringLiteral("last")));
    const QJsonArray place = element(QStringLiteral("last"))[QLatin1String("rect")].toArray();
    QVERIFY(frame.contains(
        QRect(place.at(0).toInt(), place.at(1).toInt(), place.at(2).toInt(), place.at(3).toInt())));
}

void InspectorTest::shouldDescribeTreeRowsAndTheirStates()
{
    Window window;
    QStandardItemModel model;
    fill(model, 2, QStringLiteral("row "));
    model.item(0)->appendRow(new QStandardItem(QStringLiteral("inner")));
    auto* tree = window.add(new QTreeView);
    tree->setHeaderHidden(true);
    tree->setModel(&model);
    window.open();
    QVERIFY(!told().contains(QStringLiteral("TreeItem:inner")));
    tree->expandAll();
    tree->setCurrentIndex(model.index(1, 0));
    QCOMPARE(told().filter(QStringLiteral("TreeItem:")),
             QStringList({QStringLiteral("TreeItem:row 0"), QStringLiteral("TreeItem:inner"),
                          QStringLiteral("TreeItem:row 1")}));
    QVERIFY(states(QStringLiteral("row 0")).contains(QStringLiteral("expanded")));
    QVERIFY(states(QStringLiteral("row 1")).contains(QStringLiteral("selected")));
    QVERIFY(!states(QStringLiteral("row 0")).contains(QStringLiteral("selected")));
}

/// A view keeps the cells that were told of.
void InspectorTest::shouldDescribeCellsAgainAfterAChange()
{
    Window window;
    QStandardItemModel model;
    fill(model, 3, QStringLiteral("old "));
    auto* list = window.add(new QListView);
    list->setModel(&model);
    window.open();
    QVERIFY(told().contains(QStringLiteral("ListItem:old 2")));
    fill(model, 2, QStringLiteral("new "));
    QTRY_COMPARE(told().filter(QStringLiteral("ListItem:")),
                 QStringList({QStringLiteral("ListItem:new 0"), QStringLiteral("ListItem:new 1")}));
    model.removeRow(0);
    QTRY_COMPARE(told().filter(QStringLiteral("ListItem:")),
                 QStringList{QStringLiteral("ListItem:new 1")});
}

void InspectorTest::shouldListTheForemostWindowFirst()
{
    Window window;
    window.open();
    QDialog dialog(&window);
    dialog.setWindowTitle(QStringLiteral("Question"));
    dialog.setModal(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QMenu menu(&dialog);
    menu.addAction(QStringLiteral("&Entry"))->setEnabled(false);
    menu.popup(dialog.mapToGlobal(QPoint(0, 0)));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QCOMPARE(told(),
             QStringList({QStringLiteral("PopupMenu:"), QStringLiteral("MenuItem:Entry"),
                          QStringLiteral("Dialog:Question"), QStringLiteral("Client:Main")}));
    QCOMPARE(states(QStringLiteral("Entry")), QStringList{QStringLiteral("disabled")});
}

void InspectorTest::shouldReportTheFocusedElement()
{
    Window window;
    auto* field = window.add(new QLineEdit(QStringLiteral("text")));
    window.open();
    field->setFocus();
    const QJsonValue focus = Inspector::tree()[QLatin1String("focus")];
    QCOMPARE(focus[QLatin1String("value")].toString(), QStringLiteral("text"));
    QVERIFY(focus[QLatin1String("children")].isUndefined());
    field->clearFocus();
    QVERIFY(Inspector::tree()[QLatin1String("focus")].isNull());
}

void InspectorTest::shouldAnswerEveryClient_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("little") << 10;
    // More than a pipe takes before the client reads.
    QTest::newRow("much") << 1000000;
}

void InspectorTest::shouldAnswerEveryClient()
{
    QFETCH(int, size);
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("inspector"));
    Window window;
    window.setAccessibleDescription(QString(size, QLatin1Char('x')));
    window.open();
    Inspector inspector;
    QString problem;
    QVERIFY(inspector.listen(name, problem));
    for (int time = 0; time < 2; ++time) {
        QLocalSocket socket;
        socket.connectToServer(name);
        QTRY_COMPARE(socket.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(QJsonDocument::fromJson(socket.readAll()).object(), Inspector::tree());
    }
}

#ifdef Q_OS_UNIX
void InspectorTest::shouldReplaceASocketThatNobodyListensTo()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("inspector"));
    // As a program that was killed leaves it.
    const QByteArray path = QFile::encodeName(name);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int left = socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(bind(left, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(left);
    QVERIFY(QFileInfo::exists(name));
    Inspector inspector;
    QString problem;
    QVERIFY2(inspector.listen(name, problem), qPrintable(problem));
    QLocalSocket client;
    client.connectToServer(name);
    QTRY_COMPARE(client.state(), QLocalSocket::UnconnectedState);
    QVERIFY(!client.readAll().isEmpty());
}
#endif

#ifdef Q_OS_UNIX
void InspectorTest::shouldLeaveWhatIsNotItsOwn()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("inspector"));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("kept"), 4);
    file.close();
    QString problem;
    QVERIFY(!Inspector().listen(name, problem));
    QCOMPARE(problem, QStringLiteral("Nobody can connect to %1: the file that is there is not a "
                                     "socket")
                          .arg(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("kept"));
    QVERIFY(!Inspector().listen(folder.path(), problem));
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), S_IRUSR | S_IWUSR), 0);
    QVERIFY(!Inspector().listen(pipe, problem));
    QVERIFY(QFileInfo::exists(pipe));
}
#endif

void InspectorTest::shouldLeaveTheNameOfAnother()
{
    const QTemporaryDir folder;
    QString problem;
    const QString busy = folder.filePath(QStringLiteral("busy"));
    Inspector first;
    QVERIFY2(first.listen(busy, problem), qPrintable(problem));
    QVERIFY(!Inspector().listen(busy, problem));
    QCOMPARE(problem,
             QStringLiteral("Nobody can connect to %1: another program listens there").arg(busy));
    QLocalSocket client;
    client.connectToServer(busy);
    QTRY_COMPARE(client.state(), QLocalSocket::UnconnectedState);
    QVERIFY(!client.readAll().isEmpty());
}

void InspectorTest::shouldReportWhyItCannotListen_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("long name") << QString(300, QLatin1Char('x'));
#ifdef Q_OS_UNIX // A local socket is no file on Windows.
    QTest::newRow("missing folder") << QStringLiteral("/nowhere/inspector");
#endif
}

void InspectorTest::shouldReportWhyItCannotListen()
{
    QFETCH(QString, name);
    Inspector inspector;
    QString problem;
    QVERIFY(!inspector.listen(name, problem));
    QVERIFY2(problem.startsWith(QStringLiteral("Nobody can connect to %1: ").arg(name)),
             qPrintable(problem));
}

TSA_TEST_MAIN(InspectorTest)

#include "tst_inspector.moc"
