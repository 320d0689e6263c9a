#pragma once

#include "tests/packaging/LibraryHost.h"

#include <QLineEdit>
#include <QTest>
#include <QTreeView>

/// A host whose panel is shown with two processors of no group.
class ShownHost final
{
public:
    ShownHost()
    {
        if (!host.open())
            qFatal("the library is not there");
        host.window()->resize(240, 600);
        host.layer()->GetWidget()->resize(220, 600);
        host.handler().setProject({group(100)}, {processor(1), processor(2)});
        host.handler().selectionMode = 2;
        host.handler().selectedProcessors = {identity(1), identity(2)};
        host.notify(16);
        host.window()->show();
    }

    QTreeView& tree() const { return *host.layer()->GetWidget()->findChild<QTreeView*>(); }

    /// The texts of the rows below the root: "G100,1,2".
    QString rows() const
    {
        QStringList texts;
        const QModelIndex root = tree().model()->index(0, 0);
        for (int row = 0; row < tree().model()->rowCount(root); ++row)
            texts.append(tree().model()->index(row, 0, root).data().toString());
        return texts.join(QLatin1Char(','));
    }

    /// Opens the field for the name of the selected row and gives it another one.
    bool rename(const QString& name) const
    {
        QTest::keyClick(&tree(), Qt::Key_F2);
        auto* const field = tree().viewport()->findChild<QLineEdit*>();
        if (!field)
            return false;
        QTest::keyClicks(field, name);
        QTest::keyClick(field, Qt::Key_Return);
        return true;
    }

    /// Selects rows as a user does.
    bool select(const QStringList& names)
    {
        const auto rows = [&] {
            return tree().model()->match(tree().model()->index(0, 0), Qt::DisplayRole,
                                         QStringLiteral("*"), -1,
                                         Qt::MatchWildcard | Qt::MatchRecursive);
        };
        host.window()->activateWindow();
        if (!QTest::qWaitForWindowActive(host.window())
            || !QTest::qWaitFor([&] { return rows().size() == 4; }))
            return false;
        Qt::KeyboardModifiers modifiers;
        for (const QModelIndex& row : rows()) {
            if (!names.contains(row.data().toString()))
                continue;
            QTest::mouseClick(tree().viewport(), Qt::LeftButton, modifiers,
                              tree().visualRect(row).center());
            modifiers = Qt::ControlModifier;
        }
        return true;
    }

    mutable LibraryHost host;
};
