#pragma once

#include "ipmanage/IPListView.h"
#include "ipmanage/IPManageDialog.h"
#include "tests/ipmanage/DialogTest.h"

#include <QAbstractItemModel>
#include <QFileDialog>
#include <QMenu>
#include <QToolButton>

/// Operates the management dialog like a user: buttons by name, rows by clicks, menus by keys.
class ManageDriver final
{
public:
    explicit ManageDriver(QWidget& dialog)
        : m_dialog(dialog)
    {
    }

    CIPListView& view() const { return *m_dialog.findChild<CIPListView*>(); }
    int rows() const { return view().model()->rowCount(); }

    QString cell(int row, int column) const
    {
        return view().model()->index(row, column).data().toString();
    }

    QAbstractButton* button(const char* name) const
    {
        return buttonOf(m_dialog, QLatin1String(name));
    }

    /// Returns the names of the enabled tool buttons from left to right: "Add Import".
    QString enabled() const
    {
        QStringList names;
        const auto buttons =
            m_dialog.findChildren<QToolButton*>(QStringLiteral("IPManageToolButton"));
        for (const QToolButton* tool : buttons) {
            if (tool->isEnabled())
                names.append(tool->accessibleName());
        }
        return names.join(QLatin1Char(' '));
    }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        const QModelIndex index = view().model()->index(row, 0);
        view().scrollTo(index);
        QTest::mouseClick(view().viewport(), Qt::LeftButton, modifiers,
                          view().visualRect(index).center());
    }

    void click(const char* name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    /// Opens the add menu and chooses entry `entry` by keyboard.
    void pickAdd(DialogDriver& driver, int entry) const
    {
        driver.thenFirst([entry](QWidget& menu) {
            for (int n = 0; n <= entry; ++n)
                QTest::keyClick(&menu, Qt::Key_Down);
            QTest::keyClick(&menu, Qt::Key_Return);
        });
        click("Add");
    }

    void close() const { QTest::keyClick(&m_dialog, Qt::Key_Escape); }

private:
    QWidget& m_dialog;
};

/// Enters `path` in a file dialog and confirms it.
inline void chooseFile(QWidget& dialog, const QString& path)
{
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QVERIFY(name);
    // Not typed, because the completer of Qt's dialog changes typed text.
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
}

/// Returns "10.0.0.1(Name 1)" and so on.
inline QStringList manageEntries(int count)
{
    QStringList list;
    for (int n = 1; n <= count; ++n) {
        list.append(QStringLiteral("10.0.%1.%2(Name %3)").arg(n / 256).arg(n % 256).arg(n));
    }
    return list;
}
