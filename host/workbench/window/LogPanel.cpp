#include "host/workbench/window/LogPanel.h"

#include "host/workbench/trace/TraceModel.h"
#include "host/workbench/window/LogFilter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int kRowHeight = 20;
constexpr int kFilterWidth = 280;

} // namespace

LogPanel::LogPanel(TraceModel& trace, QWidget* parent)
    : QWidget(parent)
    , m_trace(trace)
    , m_filter(new LogFilter(this))
    , m_filterField(new QLineEdit(this))
    , m_kindSelector(new QComboBox(this))
    , m_follow(new QCheckBox(this))
    , m_count(new QLabel(this))
    , m_clearButton(new QPushButton(this))
    , m_view(new QTableView(this))
{
    m_filter->setSourceModel(&trace);
    m_filterField->setClearButtonEnabled(true);
    m_filterField->setMinimumWidth(kFilterWidth);
    m_kindSelector->addItem(QString(), -1);
    for (const auto kind : {TraceEntry::Kind::Call, TraceEntry::Kind::Event, TraceEntry::Kind::Log})
        m_kindSelector->addItem(QString(), static_cast<int>(kind));
    m_follow->setChecked(true);
    m_count->setProperty("hint", true);
    m_clearButton->setAutoDefault(false);

    m_view->setModel(m_filter);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    m_view->setAlternatingRowColors(true);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setTabKeyNavigation(false);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->verticalHeader()->setDefaultSectionSize(kRowHeight);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_view->horizontalHeader()->setHighlightSections(false);
    m_view->setColumnWidth(TraceModel::TimeColumn, 96);
    m_view->setColumnWidth(TraceModel::KindColumn, 64);
    m_view->setColumnWidth(TraceModel::ThreadColumn, 64);

    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    bar->addWidget(m_filterField);
    bar->addWidget(m_kindSelector);
    bar->addWidget(m_follow);
    bar->addStretch(1);
    bar->addWidget(m_count);
    bar->addWidget(m_clearButton);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 0, 8, 8);
    layout->setSpacing(8);
    layout->addLayout(bar);
    layout->addWidget(m_view, 1);

    connect(m_filterField, &QLineEdit::textChanged, this, [this](const QString& words) {
        m_filter->setWords(words);
        follow();
    });
    connect(m_kindSelector, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        m_filter->setKind(m_kindSelector->currentData().toInt());
        follow();
    });
    connect(m_follow, &QCheckBox::toggled, this, &LogPanel::follow);
    connect(m_clearButton, &QPushButton::clicked, &trace, &TraceModel::clear);
    connect(&trace, &TraceModel::added, this, &LogPanel::follow);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_filter, signal, this, &LogPanel::showCount);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &LogPanel::showCount);
    retranslate();
}

void LogPanel::showWords(const QString& words)
{
    m_kindSelector->setCurrentIndex(0);
    m_filterField->setText(words);
}

void LogPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        m_trace.retranslate();
    }
    QWidget::changeEvent(event);
}

void LogPanel::retranslate()
{
    m_filterField->setPlaceholderText(tr("Filter: words to find, -word to leave out"));
    m_filterField->setAccessibleName(tr("Log filter"));
    const QStringList kinds{tr("All kinds"), tr("Calls"), tr("Events"), tr("Log records")};
    for (int at = 0; at < kinds.size(); ++at)
        m_kindSelector->setItemText(at, kinds.at(at));
    m_kindSelector->setAccessibleName(tr("Kind of line"));
    m_follow->setText(tr("Follow"));
    m_follow->setToolTip(tr("Keep the latest line in sight"));
    m_clearButton->setText(tr("Clear"));
    m_clearButton->setToolTip(tr("Empty the log"));
    m_view->setAccessibleName(tr("Live log"));
    showCount();
}

/// Scrolls to the latest line if the user has switched that on.
void LogPanel::follow()
{
    if (m_follow->isChecked())
        m_view->scrollToBottom();
}

void LogPanel::showCount()
{
    m_count->setText(tr("%1 of %2 lines").arg(m_filter->rowCount()).arg(m_trace.rowCount()));
}
