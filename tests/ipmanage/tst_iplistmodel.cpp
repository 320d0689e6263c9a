#include "ipmanage/IPListModel.h"
#include "plugin/TargetSelectArea.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QIdentityProxyModel>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include <memory>

namespace {
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/// Returns the rows of a model as "address|name|entry".
QString dump(const QAbstractItemModel& model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        rows.append(model.index(row, 0).data().toString() + QLatin1Char('|')
                    + model.index(row, 1).data().toString() + QLatin1Char('|')
                    + model.index(row, 0).data(CIPListModel::EntryRole).toString());
    }
    return rows.join(QLatin1Char(' '));
}

/// Hides the children that the model reports for each row, as table views do.
class Table final : public QIdentityProxyModel
{
    Q_OBJECT

public:
    QModelIndex index(int row, int column, const QModelIndex& parent) const override
    {
        return parent.isValid() ? QModelIndex() : QIdentityProxyModel::index(row, column, parent);
    }
    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : QIdentityProxyModel::rowCount(parent);
    }
    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : QIdentityProxyModel::columnCount(parent);
    }
};

} // namespace

class IPListModelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void shouldStartEmpty();
    void shouldShowTheHostsList();
    void shouldKeepParenthesesInNames();
    void shouldShowAtMost255Rows();
    void shouldShowARowForEachAddress_data();
    void shouldShowARowForEachAddress();
    void shouldShowNothingWithoutAHandler();
    void shouldFetchTheHandlerForEachCall();
    void shouldReturnDataForItsRolesOnly();
    void shouldHaveIndexesInTheTableOnly();
    void shouldIgnoreParents();
    void shouldAcceptAnyIndex();
    void shouldKeepHorizontalHeaders();
    void shouldRefuseOtherHeaders();
    void shouldReplaceAllRowsInAReset();
    void shouldKeepItsRowsDuringAHostCall();
    void shouldKeepTheResultOfANestedReload();
    void shouldSurviveItsDestructionInAHostCall();
    void shouldWorkInATable();

private:
    FakeHandler& host() const { return m_panel->host(); }

    std::unique_ptr<TestPanel> m_panel;
    std::unique_ptr<CIPListModel> m_model;
    std::unique_ptr<Table> m_table;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void IPListModelTest::init()
{
    m_panel = std::make_unique<TestPanel>();
    m_model = std::make_unique<CIPListModel>();
    m_table = std::make_unique<Table>();
    m_table->setSourceModel(m_model.get());
    m_tester = std::make_unique<QAbstractItemModelTester>(m_table.get());
    host().ipList = QStringList{text("10.0.0.1(Hall)"), text("10.0.0.2()")};
}

void IPListModelTest::cleanup()
{
    m_tester.reset();
    m_table.reset();
    m_model.reset();
    m_panel.reset();
}

void IPListModelTest::shouldStartEmpty()
{
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(m_model->columnCount(), 2);
    QVERIFY(host().calls().isEmpty());
}

void IPListModelTest::shouldShowTheHostsList()
{
    m_model->reload();
    QCOMPARE(dump(*m_model), text("10.0.0.1|Hall|10.0.0.1(Hall) 10.0.0.2||10.0.0.2()"));
    QCOMPARE(m_model->index(0, 1).data(257).toString(), text("10.0.0.1(Hall)"));
    QCOMPARE(host().callNames(), (QStringList{text("GetIPNameLists"), text("GetIPList")}));
    host().ipList = QStringList{text("10.0.0.3(Yard)")};
    m_model->reload();
    QCOMPARE(dump(*m_model), text("10.0.0.3|Yard|10.0.0.3(Yard)"));
    host().ipList.clear();
    m_model->reload();
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(m_model->columnCount(), 2);
}

void IPListModelTest::shouldKeepParenthesesInNames()
{
    host().ipList = QStringList{text("10.0.0.1(Hall (east))")};
    m_model->reload();
    QCOMPARE(m_model->index(0, 1).data().toString(), text("Hall (east)"));
    QCOMPARE(m_model->index(0, 0).data(257).toString(), text("10.0.0.1(Hall (east))"));
}

void IPListModelTest::shouldShowAtMost255Rows()
{
    host().ipList.clear();
    for (int n = 0; n < 300; ++n)
        host().ipList.append(QStringLiteral("10.0.%1.1(N%1)").arg(n));
    m_model->reload();
    QCOMPARE(m_model->rowCount(), 255);
    QCOMPARE(m_model->index(254, 1).data().toString(), text("N254"));
    QVERIFY(!m_model->index(255, 0).isValid());
}

void IPListModelTest::shouldShowARowForEachAddress_data()
{
    QTest::addColumn<QStringList>("addresses");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("rows");

    QTest::newRow("fewer names") << QStringList{text("1"), text("2")} << QStringList{text("a")}
                                 << QStringList{text("1(a)"), text("2(b)")}
                                 << text("1|a|1(a) 2||2(b)");
    QTest::newRow("fewer entries")
        << QStringList{text("1"), text("2")} << QStringList{text("a"), text("b")}
        << QStringList{text("X")} << text("1|a|X 2|b|2(b)");
    QTest::newRow("addresses only") << QStringList{text("1"), text("2")} << QStringList()
                                    << QStringList() << text("1||1() 2||2()");
    QTest::newRow("place marks in names") << QStringList{text("%2")} << QStringList{text("%1")}
                                          << QStringList() << text("%2|%1|%2(%1)");
    QTest::newRow("fewer addresses")
        << QStringList{text("1")} << QStringList{text("a"), text("b"), text("c")}
        << QStringList{text("1(a)"), text("2(b)")} << text("1|a|1(a)");
    QTest::newRow("no addresses") << QStringList() << QStringList{text("a")}
                                  << QStringList{text("1(a)")} << QString();
}

void IPListModelTest::shouldShowARowForEachAddress()
{
    QFETCH(QStringList, addresses);
    QFETCH(QStringList, names);
    QFETCH(QStringList, entries);
    QFETCH(QString, rows);
    host().ipAddresses = addresses;
    host().ipNames = names;
    host().ipList = entries;
    m_model->reload();
    QCOMPARE(dump(*m_model), rows);
}

void IPListModelTest::shouldShowNothingWithoutAHandler()
{
    m_model->reload();
    QCOMPARE(m_model->rowCount(), 2);
    m_panel->area().m_controlHandler.reset();
    m_model->reload();
    QCOMPARE(m_model->rowCount(), 0);
}

void IPListModelTest::shouldFetchTheHandlerForEachCall()
{
    const auto other = std::make_shared<FakeHandler>();
    other->ipList = QStringList{text("X"), text("Y")};
    const std::shared_ptr<IAbstractControlInterface> first = m_panel->area().m_controlHandler;
    host().inside = [&](const QString&) { m_panel->area().m_controlHandler = other; };
    m_model->reload();
    host().inside = {};
    m_panel->area().m_controlHandler = first;
    QCOMPARE(host().callNames(), QStringList{text("GetIPNameLists")});
    QCOMPARE(other->callNames(), QStringList{text("GetIPList")});
    QCOMPARE(dump(*m_model), text("10.0.0.1|Hall|X 10.0.0.2||Y"));
}

void IPListModelTest::shouldReturnDataForItsRolesOnly()
{
    m_model->reload();
    for (int column = 0; column < 2; ++column) {
        const QModelIndex index = m_model->index(0, column);
        for (int role = 0; role < 300; ++role) {
            const bool known = role == Qt::DisplayRole || role == 257;
            QCOMPARE(index.data(role).isValid(), known);
        }
        QVERIFY(!index.data(-1).isValid());
    }
}

void IPListModelTest::shouldHaveIndexesInTheTableOnly()
{
    m_model->reload();
    const QModelIndex last = m_model->index(1, 1);
    QVERIFY(last.isValid());
    QCOMPARE(last.row(), 1);
    QCOMPARE(last.column(), 1);
    QVERIFY(!last.internalPointer());
    QVERIFY(!m_model->index(2, 0).isValid());
    QVERIFY(!m_model->index(0, 2).isValid());
    QVERIFY(!m_model->index(-1, 0).isValid());
    QVERIFY(!m_model->index(0, -1).isValid());
}

void IPListModelTest::shouldIgnoreParents()
{
    m_model->reload();
    const QModelIndex row = m_model->index(0, 0);
    QCOMPARE(m_model->rowCount(row), 2);
    QCOMPARE(m_model->columnCount(row), 2);
    QCOMPARE(m_model->index(1, 1, row), m_model->index(1, 1));
    QVERIFY(!m_model->parent(m_model->index(1, 1, row)).isValid());
    QVERIFY(!m_model->parent({}).isValid());
}

void IPListModelTest::shouldAcceptAnyIndex()
{
    m_model->reload();
    const QModelIndex second = m_model->index(1, 0);
    host().ipList.removeLast();
    m_model->reload();
    QVERIFY(!m_model->data(second, Qt::DisplayRole).isValid());
    QVERIFY(!m_model->data(second, CIPListModel::EntryRole).isValid());
    QVERIFY(!m_model->data({}, Qt::DisplayRole).isValid());
    const QStandardItemModel larger(300, 5);
    QVERIFY(!m_model->data(larger.index(299, 0), Qt::DisplayRole).isValid());
    QVERIFY(!m_model->data(larger.index(0, 2), CIPListModel::EntryRole).isValid());
    QVERIFY(!m_model->data(larger.index(0, 4), Qt::DisplayRole).isValid());
}

void IPListModelTest::shouldKeepHorizontalHeaders()
{
    qRegisterMetaType<Qt::Orientation>(); // for the spy
    QSignalSpy changes(m_model.get(), &QAbstractItemModel::headerDataChanged);
    QVERIFY(!m_model->headerData(0, Qt::Horizontal).isValid());
    QVERIFY(m_model->setHeaderData(0, Qt::Horizontal, text("IP"), Qt::DisplayRole));
    QVERIFY(m_model->setHeaderData(1, Qt::Horizontal, text("Name"), Qt::DisplayRole));
    QVERIFY(m_model->setHeaderData(7, Qt::Horizontal, 5, Qt::DisplayRole));
    QVERIFY(m_model->setHeaderData(0, Qt::Horizontal, text("IP address"), Qt::DisplayRole));
    m_model->reload();
    QCOMPARE(m_model->headerData(0, Qt::Horizontal).toString(), text("IP address"));
    QCOMPARE(m_model->headerData(1, Qt::Horizontal).toString(), text("Name"));
    QCOMPARE(m_model->headerData(7, Qt::Horizontal), QVariant(5));
    QVERIFY(!m_model->headerData(2, Qt::Horizontal).isValid());
    QVERIFY(!m_model->headerData(-1, Qt::Horizontal).isValid());
    QCOMPARE(changes.size(), 0);
}

void IPListModelTest::shouldRefuseOtherHeaders()
{
    QVERIFY(!m_model->setHeaderData(0, Qt::Vertical, text("1"), Qt::DisplayRole));
    QVERIFY(!m_model->setHeaderData(0, Qt::Horizontal, text("1"), Qt::EditRole));
    QVERIFY(!m_model->setHeaderData(0, Qt::Horizontal, text("1"), Qt::ToolTipRole));
    QVERIFY(!m_model->headerData(0, Qt::Horizontal).isValid());
    QVERIFY(m_model->setHeaderData(0, Qt::Horizontal, text("IP"), Qt::DisplayRole));
    QVERIFY(!m_model->headerData(0, Qt::Vertical).isValid());
    QVERIFY(!m_model->headerData(0, Qt::Horizontal, Qt::EditRole).isValid());
    QVERIFY(!m_model->headerData(0, Qt::Horizontal, Qt::TextAlignmentRole).isValid());
}

void IPListModelTest::shouldReplaceAllRowsInAReset()
{
    QStringList seen;
    const auto look = [&] { seen.append(QString::number(m_model->rowCount())); };
    connect(m_model.get(), &QAbstractItemModel::modelAboutToBeReset, this, look);
    connect(m_model.get(), &QAbstractItemModel::modelReset, this, look);
    m_model->reload();
    host().ipList.append(text("10.0.0.3()"));
    m_model->reload();
    QCOMPARE(seen.join(QLatin1Char(' ')), text("0 2 2 3"));
}

void IPListModelTest::shouldKeepItsRowsDuringAHostCall()
{
    m_model->reload();
    const QString before = dump(*m_model);
    QStringList seen;
    QSignalSpy begins(m_model.get(), &QAbstractItemModel::modelAboutToBeReset);
    host().ipList = QStringList{text("10.0.0.9()")};
    host().inside = [&](const QString&) { seen.append(dump(*m_model)); };
    m_model->reload();
    host().inside = {};
    QCOMPARE(seen, (QStringList{before, before}));
    QCOMPARE(begins.size(), 1);
    QCOMPARE(dump(*m_model), text("10.0.0.9||10.0.0.9()"));
}

void IPListModelTest::shouldKeepTheResultOfANestedReload()
{
    bool within = false;
    QSignalSpy resets(m_model.get(), &QAbstractItemModel::modelReset);
    host().inside = [&](const QString& name) {
        if (within || name != text("GetIPList"))
            return;
        within = true;
        host().ipList = QStringList{text("10.0.0.9(New)")};
        m_model->reload();
    };
    m_model->reload();
    host().inside = {};
    QVERIFY(within);
    QCOMPARE(resets.size(), 1);
    QCOMPARE(dump(*m_model), text("10.0.0.9|New|10.0.0.9(New)"));
}

void IPListModelTest::shouldSurviveItsDestructionInAHostCall()
{
    m_tester.reset();
    m_table.reset();
    host().inside = [&](const QString&) { m_model.reset(); };
    m_model->reload();
    host().inside = {};
    QVERIFY(!m_model);
    QCOMPARE(host().callCount(text("GetIPList")), 1);
}

void IPListModelTest::shouldWorkInATable()
{
    QTableView view;
    view.setModel(m_model.get());
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.show();
    m_model->reload();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.selectAll();
    QCOMPARE(view.selectionModel()->selectedRows(0).size(), 2);
    QCOMPARE(view.selectionModel()->selectedRows(0).at(1).data(257).toString(), text("10.0.0.2()"));
    host().ipList.removeFirst();
    m_model->reload();
    QVERIFY(!view.selectionModel()->hasSelection());
    QVERIFY(!view.currentIndex().isValid());
    QCOMPARE(view.verticalHeader()->count(), 1);
    QVERIFY(view.grab().width() > 0);
}

TSA_TEST_MAIN(IPListModelTest)
#include "tst_iplistmodel.moc"
