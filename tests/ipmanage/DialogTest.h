#pragma once

#include "host/widgets/IPLineEdit.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QDialog>
#include <QLineEdit>
#include <QTest>

#include <functional>

/// Fixture of a dialog test: a host, a window for the dialog, and a driver that operates the
/// dialog.
struct DialogTest
{
    DialogTest()
    {
        window.resize(800, 600);
        window.show();
    }

    FakeHandler& host() { return panel.host(); }

    /// Returns the calls to the host with their arguments: "GetIPCount(0)".
    QStringList asked() const
    {
        QStringList texts;
        const auto calls = panel.host().calls();
        for (const FakeHandler::Call& call : calls) {
            texts.append(call.argument.isEmpty()
                             ? call.name
                             : call.name + QLatin1Char('(') + call.argument + QLatin1Char(')'));
        }
        return texts;
    }

    /// Fills `dialog` by `fillIn`, presses OK and returns the message. The dialog must stay open
    /// and is closed by Escape.
    QString refusal(
        QDialog& dialog, const std::function<void(QWidget&)>& fillIn = [](QWidget&) {})
    {
        QString message;
        driver
            .then([&](QWidget& shown) {
                fillIn(shown);
                host().clearCalls();
                clickButton(shown, QStringLiteral("OK"));
                QVERIFY(shown.isVisible());
                QTest::keyClick(&shown, Qt::Key_Escape);
            })
            .thenReadMessage(message);
        return dialog.exec() == QDialog::Rejected ? message : QStringLiteral("accepted");
    }

    mutable TestPanel panel;
    QWidget window;
    DialogDriver driver;
};

/// Returns address field `n` of `dialog`, counted from the top.
inline CIPLineEdit* addressField(const QWidget& dialog, int n = 0)
{
    return dialog.findChildren<CIPLineEdit*>().value(n);
}

/// Returns the name field; null if the dialog has none.
inline QLineEdit* nameField(const QWidget& dialog)
{
    const auto fields = dialog.findChildren<QLineEdit*>();
    for (QLineEdit* field : fields) {
        const QString name = field->accessibleName();
        if (name == QLatin1String("Name") || name == QStringLiteral("名称"))
            return field;
    }
    return nullptr;
}

/// Replaces the text of `field` by typing.
inline void retype(QWidget* field, const QString& text)
{
    QTest::mouseClick(field, Qt::LeftButton);
    QWidget* focus = field->window()->focusWidget();
    QTest::keyClick(focus, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(focus, Qt::Key_Delete);
    QTest::keyClicks(focus, text);
}
