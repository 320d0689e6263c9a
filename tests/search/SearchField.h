#pragma once

#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "search/ProcessorCompleter.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <memory>

/// A line edit that records its focus and key events.
class FieldProbe final : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

    int focusLosses = 0;
    QString preedit;
    QStringList keys; // "press 16777216", "release 16777313"

    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::FocusOut)
            ++focusLosses;
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
            const bool press = event->type() == QEvent::KeyPress;
            keys.append((press ? QStringLiteral("press ") : QStringLiteral("release "))
                        + QString::number(static_cast<QKeyEvent*>(event)->key()));
        }
        if (event->type() == QEvent::InputMethod)
            preedit = static_cast<QInputMethodEvent*>(event)->preeditString();
        return QLineEdit::event(event);
    }
};

/// Counts the key events that reach it.
class WindowProbe final : public QWidget
{
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        ++keys;
        QWidget::keyPressEvent(event);
    }
};

/// A search field with its completer, and another field below, in a window. The project has "Stage
/// 1" to "Stage 12", addressed by number, of which the even ones are in the group 100 and the
/// others in no group, and "Foyer" with the address 10.0.0.7.
struct SearchField
{
    explicit SearchField(const QPoint& position = QPoint(100, 100),
                         Qt::WindowFlags flags = Qt::WindowFlags())
    {
        QList<ProcessorNode> processors;
        for (quint32 n = 1; n <= 12; ++n) {
            processors.append(testProcessor(n, n % 2 == 0 ? 100 : 0));
            processors.last().name = QStringLiteral("Stage %1").arg(n);
        }
        processors.append(testIpProcessor(50, 0x0A000007));
        processors.last().name = QStringLiteral("Foyer");
        panel.host().setProject({testGroup(100)}, processors);
        model().reset();

        window = new WindowProbe;
        window->setWindowFlags(flags);
        field = new FieldProbe(window);
        field->setGeometry(10, 10, 176, 24);
        other = new QLineEdit(window);
        other->setGeometry(200, 10, 80, 24);
        completer =
            new CProcessorCompleter(field, *CTargetSelectData::Instance()->GetModel(), window);
        list = listOf(*field);
        QObject::connect(field, &QLineEdit::textEdited, completer.data(),
                         &CProcessorCompleter::setFilterText);
        spy = std::make_unique<QSignalSpy>(completer.data(), &CProcessorCompleter::activated);
        window->setGeometry(QRect(position, QSize(300, 360)));
        window->show();
        window->activateWindow();
        field->setFocus();
        if (!QTest::qWaitForWindowActive(window, 30000) || !field->hasFocus())
            QTest::qFail("the field does not get the focus", __FILE__, __LINE__);
    }

    ~SearchField() { delete window; }
    SearchField(const SearchField&) = delete;
    SearchField& operator=(const SearchField&) = delete;

    CProcessorTreeModel& model() { return panel.model(); }

    QModelIndex index(quint32 n) { return panel.index(n); }

    QListView* popup() const { return list; }

    bool isOpen() const { return completer->isOpen(); }

    /// Sends a key to the active window, like the window system.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::sendKeyEvent(QTest::Click, window->windowHandle(), static_cast<Qt::Key>(key),
                            QString(), modifiers);
    }

    void type(const QString& text) const
    {
        for (const QChar character : text)
            QTest::keyClick(window->windowHandle(), character.toLatin1());
    }

    /// Returns the rows of the list: "Stage 1,Stage 10".
    QString rows() const
    {
        QStringList names;
        const QAbstractItemModel* results = popup()->model();
        for (int row = 0; row < results->rowCount(); ++row)
            names.append(results->index(row, 0).data().toString());
        return names.join(QLatin1Char(','));
    }

    QModelIndex row(int n) const { return popup()->model()->index(n, 0); }

    QString current() const { return popup()->currentIndex().data().toString(); }

    /// Returns the centre of row `n` in the popup.
    QPoint place(int n) const
    {
        const QRect rect = popup()->visualRect(row(n));
        return popup()->viewport()->mapTo(popup(), rect.center());
    }

    /// Returns the emissions since the last call: "Stage 1", or "-" for an invalid index.
    QString told() const
    {
        QStringList texts;
        for (const QList<QVariant>& arguments : qAsConst(*spy)) {
            const auto index = arguments.first().toModelIndex();
            texts.append(index.isValid() ? index.data().toString() : QStringLiteral("-"));
        }
        spy->clear();
        return texts.join(QLatin1Char(' '));
    }

    TestPanel panel;
    QPointer<WindowProbe> window;
    QPointer<FieldProbe> field;
    QPointer<QLineEdit> other;
    QPointer<CProcessorCompleter> completer;
    QPointer<QListView> list; // owned by the completer
    std::unique_ptr<QSignalSpy> spy;

private:
    /// Returns the popup of `field`. The panel's own completer has another one.
    static QListView* listOf(const QWidget& field)
    {
        const auto widgets = QApplication::topLevelWidgets();
        for (QWidget* widget : widgets) {
            if (widget->objectName() == QLatin1String("ProcessorCompleter")
                && widget->focusProxy() == &field)
                return qobject_cast<QListView*>(widget);
        }
        return nullptr;
    }
};
