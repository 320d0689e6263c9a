#pragma once

#include "host/widgets/IPLineEdit.h"
#include "tests/support/WarningTrap.h"

#include <QAccessible>
#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

/// A window with an address field between two other fields.
struct AddressForm
{
    AddressForm()
    {
        window.resize(400, 100);
        before.setGeometry(10, 10, 60, 24);
        field.setGeometry(80, 10, 172, 24);
        after.setGeometry(260, 10, 60, 24);
        window.show();
        window.activateWindow();
    }

    bool isActive() { return QTest::qWaitForWindowActive(&window); }

    QString selected() const
    {
        const int start = qMin(field.selectionAnchor(), field.cursorPosition());
        const int end = qMax(field.selectionAnchor(), field.cursorPosition());
        return field.displayText().mid(start, end - start);
    }

    QPoint pointOf(int place) const { return field.cursorRect(place).center(); }

    bool drop(const QString& text, const QPoint& position)
    {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&field, &enter);
        QDropEvent dropped(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        dropped.ignore();
        QApplication::sendEvent(&field, &dropped);
        return enter.isAccepted() && dropped.isAccepted();
    }

    QAccessibleInterface& accessible() { return *QAccessible::queryAccessibleInterface(&field); }

    QWidget window;
    QLineEdit before{&window};
    CIPLineEdit field{&window};
    QLineEdit after{&window};
};
