// One keystroke in the search field, up to the length of the list of results: the product's two
// proxies against the same list made of stock ones, and against a completer over plain strings.

#include "benchmarks/support/Bench.h"
#include "benchmarks/support/StockSearch.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ExpandBranches.h"
#include "search/ProcessorFilterModel.h"
#include "search/ProcessorFilterProxyModel.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCompleter>
#include <QListView>
#include <QStringListModel>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <ctime>
#include <string>
#include <type_traits>

namespace {

/// What the field holds before a keystroke and after it.
struct Keystroke
{
    const char* name;
    const char* before;
    const char* after;
    int (*found)(int processors);
};

constexpr int kLargestProject = 255;
constexpr int kRowsARepetition = 16000;
constexpr int kFewestKeystrokes = 4;

constexpr Keystroke kKeystrokes[] = {
    {"all", "nowhere", "unit", [](int processors) { return processors; }},
    {"tenth", "unit", "tower", [](int processors) { return (processors + 9) / 10; }},
    {"one", "unit", "organ", [](int) { return 1; }},
    {"none", "unit", "nowhere", [](int) { return 0; }},
    {"clear", "tower", "", [](int) { return 0; }},
};

/// Names that the texts above tell apart; addresses and numbers hold none of them.
Project namedProject(int count)
{
    Project project = makeProject(count);
    for (int row = 0; row < count; ++row) {
        const char* kind = row == count / 2 + 1 ? "organ" : row % 10 == 0 ? "tower" : "stage";
        project.processors[row].name =
            QStringLiteral("Unit %1 %2").arg(QString::number(row + 1), QLatin1String(kind));
    }
    return project;
}

double threadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

class Tree
{
public:
    Tree(StoredHandler& handler, int processors)
    {
        handler.setProject(namedProject(processors));
        m_model.initRoot();
        m_model.reset();
    }

protected:
    CProcessorTreeModel m_model;
};

class ProductSearch : public Tree
{
public:
    ProductSearch(StoredHandler& handler, int processors)
        : Tree(handler, processors)
    {
        m_filter.setSourceModel(&m_model);
        m_list.setSourceModel(&m_filter);
        choose();
    }

    int type(const QString& text)
    {
        m_filter.setFilterText(text);
        return m_list.rowCount();
    }

    QAbstractItemModel& tree() { return m_model; }
    QAbstractItemModel& list() { return m_list; }

private:
    /// As the panel does. It asks the filter for a row, which a list alone does not need.
    void choose()
    {
        const int found = type(QStringLiteral("unit"));
        const QModelIndex row = m_list.mapToSource(m_list.index(found / 2, 0));
        require(m_filter.mapToSource(row).isValid(), "a row is found");
        type(QString());
    }

    CProcessorFilterProxyModel m_filter;
    CProcessorFilterModel m_list;
};

class BaselineSearch : public Tree
{
public:
    BaselineSearch(StoredHandler& handler, int processors)
        : Tree(handler, processors)
        , m_search(&m_model)
    {
    }

    int type(const QString& text)
    {
        m_search.setText(text);
        return m_search.list().rowCount();
    }

    QAbstractItemModel& tree() { return m_model; }
    QAbstractItemModel& list() { return m_search.list(); }

private:
    StockSearch m_search;
};

/// The names alone, as strings, beside the tree.
class Completer : public Tree
{
public:
    Completer(StoredHandler& handler, int processors)
        : Tree(handler, processors)
        , m_completer(&m_names)
    {
        m_completer.setFilterMode(Qt::MatchContains);
        m_completer.setCaseSensitivity(Qt::CaseInsensitive);
        QStringList names;
        for (const ProcessorNode& processor : handler.project().processors)
            names.append(processor.name);
        m_names.setStringList(names);
    }

    int type(const QString& text)
    {
        m_completer.setCompletionPrefix(text);
        return m_completer.completionCount();
    }

    /// It remembers what it found for a text once, and would look up nothing the second time.
    void forget() { emit m_names.layoutChanged(); }

    QAbstractItemModel& tree() { return m_model; }
    QAbstractItemModel& list() { return *m_completer.completionModel(); }

private:
    QStringListModel m_names;
    QCompleter m_completer;
};

/// The tree and the list on the screen.
class Window
{
public:
    Window(QAbstractItemModel& tree, QAbstractItemModel& list)
    {
        m_tree.setHeaderHidden(true);
        m_tree.setModel(&tree);
        expandBranches(m_tree);
        m_list.setModel(&list);
        m_tree.resize(220, 800);
        m_list.resize(220, 270);
        for (QWidget* view : {static_cast<QWidget*>(&m_tree), static_cast<QWidget*>(&m_list)}) {
            view->show();
            require(QTest::qWaitForWindowExposed(view), "the view is on the screen");
        }
    }

    void paint()
    {
        m_tree.viewport()->repaint();
        m_list.viewport()->repaint();
    }

private:
    QTreeView m_tree;
    QListView m_list;
};

template <typename Search>
void forget(Search& search)
{
    if constexpr (std::is_same_v<Search, Completer>)
        search.forget();
}

template <typename Search>
void requireFound(int found, const Keystroke& keystroke, int processors)
{
    // Stock searches find everything with an empty text.
    const bool all = *keystroke.after == '\0' && !std::is_same_v<Search, ProductSearch>;
    require(found == (all ? processors : keystroke.found(processors)), "the text finds its rows");
}

template <typename Search>
void type(benchmark::State& state, const Keystroke& keystroke, StoredHandler& handler)
{
    const int processors = static_cast<int>(state.range(0));
    Search search(handler, processors);
    const QString before = QLatin1String(keystroke.before);
    const QString after = QLatin1String(keystroke.after);
    int found = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        search.type(before);
        forget(search);
        const double start = threadSeconds();
        found = search.type(after);
        state.SetIterationTime(threadSeconds() - start);
    }
    requireFound<Search>(found, keystroke, processors);
}

template <typename Search>
void typeAndPaint(benchmark::State& state, const Keystroke& keystroke, StoredHandler& handler)
{
    const int processors = static_cast<int>(state.range(0));
    Search search(handler, processors);
    Window window(search.tree(), search.list());
    const QString before = QLatin1String(keystroke.before);
    const QString after = QLatin1String(keystroke.after);
    int found = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        search.type(before);
        forget(search);
        window.paint();
        const double start = threadSeconds();
        found = search.type(after);
        window.paint();
        state.SetIterationTime(threadSeconds() - start);
    }
    requireFound<Search>(found, keystroke, processors);
}

/// Whether both lists hold the same processors in the same order.
void requireSameLists(const Keystroke& keystroke, StoredHandler& handler)
{
    ProductSearch product(handler, 255);
    BaselineSearch baseline(handler, 255);
    for (const char* text : {keystroke.before, keystroke.after, "10.0.0.7", "8"}) {
        if (*text == '\0')
            continue;
        const int found = product.type(QLatin1String(text));
        require(baseline.type(QLatin1String(text)) == found, "both find as many processors");
        for (int row = 0; row < found; ++row) {
            require(product.list().index(row, 0).data(UuidRole)
                        == baseline.list().index(row, 0).data(UuidRole),
                    "both find the same processors");
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    for (const Keystroke& keystroke : kKeystrokes) {
        requireSameLists(keystroke, *handler);
        const auto add = [&](const std::string& name, auto measure, int size) {
            benchmark::RegisterBenchmark(name.c_str(),
                                         [&handler, &keystroke, measure](benchmark::State& state) {
                                             measure(state, keystroke, *handler);
                                         })
                ->Arg(size)
                // What stands between two keystrokes takes much longer than some of them.
                ->Iterations(std::max(kRowsARepetition / size, kFewestKeystrokes))
                ->UseManualTime();
        };
        const std::string family = std::string("search-") + keystroke.name;
        for (const int size : kProjectSizes) {
            add(family + "/product", type<ProductSearch>, size);
            add(family + "/completer", type<Completer>, size);
            if (size <= kLargestProject)
                add(family + "/baseline", type<BaselineSearch>, size);
        }
        add(family + "-painted/product", typeAndPaint<ProductSearch>, kLargestProject);
        add(family + "-painted/baseline", typeAndPaint<BaselineSearch>, kLargestProject);
        add(family + "-painted/completer", typeAndPaint<Completer>, kLargestProject);
    }
    return runBenchmarks(argc, argv);
}
