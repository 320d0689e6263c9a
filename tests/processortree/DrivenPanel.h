#pragma once

#include "host/widgets/ActionLineEdit.h"
#include "host/widgets/PureImageBtn.h"
#include "plugin/TargetSelectData.h"
#include "processortree/view/ProcessorTree.h"
#include "tests/processortree/DrivenTree.h"

#include <QVBoxLayout>

inline const QString kAddGroup = QStringLiteral("Add processor group");

/// The menu of the button when the host allows all of it.
inline const QString kAddAll =
    kAddGroup + QStringLiteral("|--|Add 1 processor|Add 2 processor|Custom adds...");

/// The tree panel, which the host may destroy, in a window of the host, over the host's project:
/// the groups 10 and 11, of which 10 holds the processors 1 and 2, and 3 and 4 outside.
struct DrivenPanel
{
    DrivenPanel()
        : tree(new CProcessorTree(*CTargetSelectData::Instance(),
                                  *CTargetSelectData::Instance()->GetModel(), &window))
    {
        auto* layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(tree);
        fill({testGroup(10), testGroup(11)},
             {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3), testProcessor(4)});
        host().canAdd = host().addEnabled = true;
        window.setGeometry(200, 100, 220, 420);
        window.show();
        activate();
    }

    FakeHandler& host() { return panel.host(); }
    CProcessorTreeModel& model() { return panel.model(); }
    CActionLineEdit& field() const { return *tree->findChild<CActionLineEdit*>(); }
    CPureImageBtn& button() const { return *tree->findChild<CPureImageBtn*>(); }
    QMenu& menu() const { return *button().menu(); }
    CProcessorTreeView& view() const { return *tree->findChild<CProcessorTreeView*>(); }

    void fill(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors)
    {
        host().setProject(groups, processors);
        model().reset();
        host().clearCalls();
    }

    /// Makes the host list this many processors, independent of the tree.
    void listProcessors(int count)
    {
        QList<ProcessorNode> processors;
        for (int n = 0; n < count; ++n)
            processors.append(testProcessor(static_cast<quint32>(1000 + n)));
        host().setProject({testGroup(10), testGroup(11)}, processors);
    }

    void activate()
    {
        window.activateWindow();
        view().setFocus();
        if (!QTest::qWaitForWindowActive(&window, 30000))
            QTest::qFail("the window is not active", __FILE__, __LINE__);
    }

    /// Row `n`; 0 is the root.
    QModelIndex index(quint32 n) { return panel.index(n); }

    QString selected() const { return selectedTexts(view()); }

    void press() { QTest::mouseClick(&button(), Qt::LeftButton); }

    /// Returns the entries of the menu.
    QString offered()
    {
        QString entries;
        driver.then([&](QWidget& opened) {
            entries = entriesOf(opened);
            opened.close();
        });
        press();
        return entries;
    }

    /// Returns the requests to add: "CreateGroup AddProcessors".
    QString asked()
    {
        QStringList names;
        const auto calls = host().calls();
        for (const FakeHandler::Call& call : calls) {
            if (call.name == QLatin1String("CreateGroup")
                || call.name.startsWith(QLatin1String("AddProcessors")))
                names.append(call.name);
        }
        return names.join(QLatin1Char(' '));
    }

    /// Makes the host run `action` once, inside the question of that name.
    void doInside(const QString& name, std::function<void()> action)
    {
        host().doInside(name, std::move(action));
    }

    TestPanel panel;
    QWidget window;
    QPointer<CProcessorTree> tree;
    DialogDriver driver;
};
