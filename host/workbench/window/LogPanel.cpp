#include "host/workbench/window/LogPanel.h"

#include "host/widgets/ActionLineEdit.h"
#include "host/workbench/dialogs/Prompts.h"
#include "host/workbench/trace/TraceModel.h"
#include "host/workbench/window/LogFilter.h"
#include "host/workbench/window/TableLook.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QSaveFile>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int kLineHeight = 20;
constexpr int kFilterWidth = 280;

} // namespace

LogPanel::LogPanel(TraceModel& trace, QWidget* parent)
    : QWidget(parent)
    , m_trace(trace)
    , m_filter(new LogFilter(this))
    , m_filterField(new CActionLineEdit(this))
    , m_kindSelector(new QComboBox(this))
    , m_follow(new QCheckBox(this))
    , m_painting(new QCheckBox(this))
    , m_count(new QLabel(this))
    , m_exportButton(new QPushButton(this))
    , m_clearButton(new QPushButton(this))
    , m_view(new QTableView(this))
    , m_copy(new QAction(this))
{
    m_filter->setSourceModel(&trace);
    m_filterField->setClearButtonEnabled(true);
    m_filterField->setMinimumWidth(kFilterWidth);
    m_kindSelector->addItem(QString(), -1);
    for (const auto kind : {TraceEntry::Kind::Call, TraceEntry::Kind::Event, TraceEntry::Kind::Log,
                            TraceEntry::Kind::Finding})
        m_kindSelector->addItem(QString(), static_cast<int>(kind));
    m_follow->setChecked(true);
    m_count->setProperty("hint", true);
    m_exportButton->setAutoDefault(false);
    m_clearButton->setAutoDefault(false);
    m_copy->setShortcut(QKeySequence::Copy);
    m_copy->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(m_copy);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);

    m_view->setModel(m_filter);
    applyTableLook(*m_view, kLineHeight);
    m_view->setWordWrap(false);
    m_view->setColumnWidth(TraceModel::TimeColumn, 96);
    m_view->setColumnWidth(TraceModel::KindColumn, 64);
    m_view->setColumnWidth(TraceModel::ThreadColumn, 64);
    m_view->setColumnWidth(TraceModel::DurationColumn, 88);

    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    bar->addWidget(m_filterField);
    bar->addWidget(m_kindSelector);
    bar->addWidget(m_painting);
    bar->addWidget(m_follow);
    bar->addStretch(1);
    bar->addWidget(m_count);
    bar->addWidget(m_exportButton);
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
    connect(m_painting, &QCheckBox::toggled, this, [this](bool shows) {
        m_filter->setShowsPainting(shows);
        follow();
    });
    connect(m_copy, &QAction::triggered, this, &LogPanel::copyLines);
    connect(m_exportButton, &QPushButton::clicked, this, &LogPanel::exportLines);
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

QLineEdit* LogPanel::filterField() const
{
    return m_filterField;
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
    const QStringList kinds{tr("All kinds"), tr("Calls"), tr("Events"), tr("Log records"),
                            tr("Findings")};
    for (int at = 0; at < kinds.size(); ++at)
        m_kindSelector->setItemText(at, kinds.at(at));
    m_kindSelector->setAccessibleName(tr("Kind of line"));
    m_painting->setText(tr("Painting"));
    m_painting->setToolTip(tr("Show what the panel asks while it paints"));
    m_follow->setText(tr("Follow"));
    m_follow->setToolTip(tr("Keep the latest line in sight"));
    m_copy->setText(tr("Copy lines"));
    m_exportButton->setText(tr("Export..."));
    m_exportButton->setToolTip(tr("Write the lines that are shown to a file"));
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

/// The whole lines of `rows`, in the order in which they are shown.
QStringList LogPanel::lines(const QModelIndexList& rows) const
{
    QMap<int, QString> texts;
    for (const QModelIndex& row : rows)
        texts.insert(row.row(), row.data(TraceModel::LineRole).toString());
    return texts.values();
}

void LogPanel::copyLines()
{
    const QStringList copied = lines(m_view->selectionModel()->selectedRows());
    if (!copied.isEmpty())
        QApplication::clipboard()->setText(copied.join(QLatin1Char('\n')));
}

void LogPanel::exportLines()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Export the log"), QString(),
                                                      tr("Text files (*.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    const QString refusal = m_refusal ? m_refusal(path) : QString();
    if (!refusal.isEmpty()) {
        showProblem(this, refusal);
        return;
    }
    QModelIndexList rows;
    for (int row = 0; row < m_filter->rowCount(); ++row)
        rows.append(m_filter->index(row, TraceModel::TextColumn));
    const QByteArray text = (lines(rows).join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()
        || !file.commit()) {
        showProblem(
            this,
            tr("%1 cannot be written: %2").arg(QDir::toNativeSeparators(path), file.errorString()));
    }
}
