#pragma once

#include "tests/processortree/WholeTree.h"

#include <QAccessible>

/// The tree of WholeTree as a screen reader meets it.
struct HeardTree : WholeTree
{
    QAccessibleInterface& tree() { return *QAccessible::queryAccessibleInterface(view); }

    QAccessibleInterface* project() { return tree().child(0); }
    QAccessibleInterface* group() { return project()->child(0); }

    /// "All processors(4)[G10[1,2],G11[],3,4]": what is told of `row` and below it.
    QString told(const QAccessibleInterface& row)
    {
        const QString name = row.text(QAccessible::Name);
        QStringList below;
        for (int n = 0; n < row.childCount(); ++n) {
            QAccessibleInterface* child = row.child(n);
            if (child->parent() != &row || row.indexOfChild(child) != n || child != row.child(n))
                below.append(QStringLiteral("lost"));
            below.append(told(*child));
        }
        const bool isLeaf = below.isEmpty() && !name.startsWith(QLatin1Char('G'));
        return isLeaf ? name : QStringLiteral("%1[%2]").arg(name, below.join(QLatin1Char(',')));
    }

    QString allTold() { return told(*project()); }

    static QString actions(QAccessibleInterface& row)
    {
        return row.actionInterface()->actionNames().join(QLatin1Char(','));
    }

    static void act(QAccessibleInterface& row, const char* action)
    {
        row.actionInterface()->doAction(QLatin1String(action));
        QCoreApplication::processEvents();
    }
};
