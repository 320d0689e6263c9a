#include "sdk/validate/Panel.h"

#include "sdk/validate/Project.h"
#include "sdk/validate/Threads.h"

#include <QAbstractButton>
#include <QLibrary>
#include <QTreeView>
#include <QWindow>

namespace {

QString rowsBelow(const QAbstractItemModel& model, const QModelIndex& parent, bool isSorted)
{
    QStringList groups;
    QStringList processors;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString text = index.data().toString().left(40);
        if (index.data(NodeTypeRole).toInt() == NodeGroup)
            groups.append(QStringLiteral("%1[%2]").arg(text, rowsBelow(model, index, isSorted)));
        else
            processors.append(text);
    }
    if (isSorted) {
        groups.sort();
        processors.sort();
    }
    return (groups + processors).join(QLatin1Char(','));
}

/// What describe() adds to the names stands in the records alone.
QString namesOnly(const QString& tree)
{
    QStringList rows = tree.split(QLatin1Char(','));
    for (QString& row : rows) {
        const bool endsGroup = row.endsWith(QLatin1Char(']'));
        row = row.section(QLatin1Char('@'), 0, 0).remove(QLatin1Char('*'));
        if (endsGroup && !row.endsWith(QLatin1Char(']')))
            row += QLatin1Char(']');
    }
    return rows.join(QLatin1Char(','));
}

} // namespace

TargetSelectAreaInit Panel::entryPoint(Test& test)
{
    // Never unloaded: Qt keeps pointers into what it has once used.
    static auto* const library = new QLibrary;
    if (!library->isLoaded()) {
        library->setFileName(test.library());
        library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
        const bool isLoaded =
            called(QStringLiteral("load %1").arg(test.library()), [] { return library->load(); });
        test.require(isLoaded, Code::NotLoaded, library->errorString());
    }
    const auto init =
        reinterpret_cast<TargetSelectAreaInit>(library->resolve(TARGETSELECTAREA_INIT_SYMBOL));
    test.require(init, Code::NoEntryPoint,
                 QStringLiteral("the library exports no " TARGETSELECTAREA_INIT_SYMBOL));
    return init;
}

Panel::Panel(Test& test)
    : m_test(test)
    , m_window(std::make_unique<QWidget>())
{
    const TargetSelectAreaInit init = entryPoint(test);
    const bool isBuilt = called(QStringLiteral("TargetSelectArea_Init"),
                                [&] { return init(&m_layer, m_window.get()); });
    test.require(isBuilt, Code::EntryPointFails,
                 QStringLiteral("TargetSelectArea_Init answers false"));
    test.require(m_layer, Code::EntryPointFails,
                 QStringLiteral("TargetSelectArea_Init answers true and stores no layer"));
    const QString difference = TargetSelectArea_Difference(*m_window);
    test.require(difference.isEmpty(), Code::VersionDiffers, difference);
    m_area = dynamic_cast<ITargetSelectAreaInterface*>(m_layer);
    test.require(m_area, Code::EntryPointFails,
                 QStringLiteral("the layer is no ITargetSelectAreaInterface"));
    m_widget = called(QStringLiteral("GetWidget"), [&] { return m_layer->GetWidget(); });
    test.require(m_widget, Code::WrongWidget, QStringLiteral("GetWidget answers null"));
    test.require(m_widget->parentWidget() == m_window.get(), Code::WrongWidget,
                 QStringLiteral("the widget is no child of the parent that was given"));
}

Panel::Panel(Test& test, const std::shared_ptr<IAbstractControlInterface>& handler)
    : Panel(test)
{
    m_window->resize(400, 600);
    m_widget->setGeometry(m_window->rect());
    m_widget->show();
    m_window->show();
    m_layer->m_controlHandler = handler;
    initialize();
}

Panel::~Panel()
{
    close();
    settle();
}

void Panel::initialize()
{
    const bool isStarted =
        called(QStringLiteral("Initialize"), [&] { return m_layer->Initialize(); });
    m_test.check(isStarted, Code::NotStarted, QStringLiteral("Initialize answers false"));
}

void Panel::close()
{
    if (m_window)
        called(QStringLiteral("the window is destroyed"), [&] { m_window.reset(); });
    m_layer = nullptr;
    m_area = nullptr;
}

void Panel::waitUntilPainted() const
{
    const bool isExposed = waitUntil([&] {
        const QWindow* const native = m_window->windowHandle();
        return native && native->isExposed();
    });
    m_test.require(isExposed, Code::WrongWidget, QStringLiteral("the window is never shown"));
    settle();
}

QString Panel::tree(bool isSorted) const
{
    ProcessorTreeSnapshot snapshot;
    called(QStringLiteral("GetProcessorTree"), [&] { m_area->GetProcessorTree(snapshot, false); });
    return describe(snapshot.groups, snapshot.processors, isSorted);
}

QTreeView* Panel::view() const
{
    const auto views = m_widget->findChildren<QTreeView*>();
    for (QTreeView* view : views) {
        const QAbstractItemModel* model = view->model();
        const QVariant type = model ? model->index(0, 0).data(NodeTypeRole) : QVariant();
        if (type.isValid() && type.toInt() == NodeRoot)
            return view;
    }
    return nullptr;
}

QString Panel::rows(bool isSorted) const
{
    const QTreeView* const tree = view();
    if (!tree)
        return QStringLiteral("(no tree)");
    return rowsBelow(*tree->model(), tree->model()->index(0, 0), isSorted);
}

QUuid Panel::currentRow() const
{
    const QTreeView* const tree = view();
    return tree ? tree->currentIndex().data(UuidRole).toUuid() : QUuid();
}

QAbstractButton* Panel::button(const QString& text) const
{
    const auto buttons = m_widget->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->text().startsWith(text) || button->toolTip().startsWith(text))
            return button;
    }
    return nullptr;
}

void expectTree(Test& test, const Panel& panel, const QString& expected, Code code,
                const QString& what, bool isSorted)
{
    const bool isSo = waitUntil([&] {
        return panel.tree(isSorted) == expected && panel.rows(isSorted) == namesOnly(expected);
    });
    if (isSo)
        return;
    test.compare(panel.tree(isSorted), expected, code, what + QStringLiteral(", tree"));
    test.compare(panel.rows(isSorted), namesOnly(expected), code, what + QStringLiteral(", rows"));
    throw Stop();
}
