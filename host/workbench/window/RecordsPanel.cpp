#include "host/workbench/window/RecordsPanel.h"

#include "host/widgets/HostTheme.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/FieldTexts.h"

#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QSplitter>
#include <QTreeView>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kColumnWidths[] = {168, 56, 104, 56, 88, 88, 60, 72};
static_assert(std::size(kColumnWidths) == RecordsModel::ColumnCount);
constexpr int kRecordsWidth = 720;
constexpr int kFieldsWidth = 304;
constexpr int kFieldNameWidth = 128;

QLabel* captionLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setProperty("hint", true);
    return label;
}

QWidget* stacked(QLabel* caption, QWidget* below)
{
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(caption);
    layout->addWidget(below, 1);
    caption->setBuddy(below);
    return box;
}

QList<FieldText> ipListTexts(const IpList& list)
{
    QList<FieldText> texts;
    for (const IpEntry& entry : list.entries())
        texts.append({dottedAddress(entry.address), entry.name});
    return texts;
}

} // namespace

RecordsPanel::RecordsPanel(QWidget* parent)
    : QWidget(parent)
    , m_model(new RecordsModel(this))
    , m_caption(captionLabel(this))
    , m_fieldsCaption(captionLabel(this))
    , m_view(new QTreeView(this))
    , m_fields(new QTreeWidget(this))
{
    m_view->setModel(m_model);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    m_view->header()->setStretchLastSection(true);
    m_view->viewport()->installEventFilter(this);
    m_fields->setRootIsDecorated(false);
    m_fields->setUniformRowHeights(true);
    m_fields->setAlternatingRowColors(true);
    m_fields->setColumnCount(2);

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(stacked(m_caption, m_view));
    splitter->addWidget(stacked(m_fieldsCaption, m_fields));
    splitter->setStretchFactor(0, 1);
    splitter->setSizes({kRecordsWidth, kFieldsWidth});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 0);
    layout->addWidget(splitter);

    connect(m_view, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
        m_closed.insert(index.data(RecordsModel::IdRole).toUuid());
    });
    connect(m_view, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        m_closed.remove(index.data(RecordsModel::IdRole).toUuid());
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        showFields();
        emit selectionChanged();
    });
    retranslate();
}

void RecordsPanel::show(const Project& project)
{
    const QList<QUuid> chosen = selectedGroups() + selectedProcessors();
    const QUuid current =
        m_view->currentIndex().siblingAtColumn(0).data(RecordsModel::IdRole).toUuid();
    const int scroll = m_view->verticalScrollBar()->value();
    m_project = project;
    m_model->show(project);
    for (int column = 0; column < RecordsModel::ColumnCount; ++column)
        m_view->setColumnWidth(column, kColumnWidths[column]);
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex index = m_model->index(row, 0);
        m_view->setFirstColumnSpanned(row, QModelIndex(),
                                      index.data(RecordsModel::IsGroupRole).toBool());
        m_view->setExpanded(index, !m_closed.contains(index.data(RecordsModel::IdRole).toUuid()));
    }
    m_view->selectionModel()->setCurrentIndex(m_model->indexOf(current),
                                              QItemSelectionModel::NoUpdate);
    selectRows(chosen);
    m_view->verticalScrollBar()->setValue(scroll);
    retranslate();
    showFields();
    emit selectionChanged();
}

void RecordsPanel::showIpList(const IpList& list)
{
    m_project.ipList = list;
    if (showsIpList())
        showFields();
}

QList<QUuid> RecordsPanel::selectedProcessors() const
{
    return selected(false);
}

QList<QUuid> RecordsPanel::selectedGroups() const
{
    return selected(true);
}

QUuid RecordsPanel::currentGroup() const
{
    const QModelIndex index = m_view->currentIndex().siblingAtColumn(0);
    const QModelIndex group = index.parent().isValid() ? index.parent() : index;
    return group.data(RecordsModel::IsGroupRole).toBool()
               ? group.data(RecordsModel::IdRole).toUuid()
               : QUuid();
}

void RecordsPanel::select(const QList<QUuid>& ids)
{
    selectRows(ids);
    const QModelIndex first = m_model->indexOf(ids.value(0));
    if (!first.isValid())
        return;
    m_view->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    m_view->scrollTo(first);
}

void RecordsPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        show(m_project);
    QWidget::changeEvent(event);
}

bool RecordsPanel::eventFilter(QObject* watched, QEvent* event)
{
    const bool done = QWidget::eventFilter(watched, event);
    if (watched != m_view->viewport() || event->type() != QEvent::Paint || m_model->rowCount() > 0)
        return done;
    paintHint();
    return true;
}

/// Shows how to fill an empty project where its rows would be.
void RecordsPanel::paintHint()
{
    QPainter painter(m_view->viewport());
    painter.setPen(hostColors().weakText);
    painter.drawText(m_view->viewport()->rect().adjusted(24, 24, -24, -24),
                     static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap,
                     tr("The project is empty.\nAdd processors with Change > Add processor."));
}

void RecordsPanel::selectRows(const QList<QUuid>& ids)
{
    QItemSelection selection;
    for (const QUuid& id : ids) {
        const QModelIndex index = m_model->indexOf(id);
        selection.select(index, index);
    }
    m_view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect
                                                    | QItemSelectionModel::Rows);
}

QList<QUuid> RecordsPanel::selected(bool groups) const
{
    QModelIndexList rows = m_view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [this](const QModelIndex& left, const QModelIndex& right) {
        return m_view->visualRect(left).top() < m_view->visualRect(right).top();
    });
    QList<QUuid> ids;
    for (const QModelIndex& row : qAsConst(rows)) {
        if (row.data(RecordsModel::IsGroupRole).toBool() == groups)
            ids.append(row.data(RecordsModel::IdRole).toUuid());
    }
    return ids;
}

bool RecordsPanel::showsIpList() const
{
    return m_view->selectionModel()->selectedRows().isEmpty();
}

void RecordsPanel::showFields()
{
    const QUuid id = (selectedProcessors() + selectedGroups()).value(0);
    QList<FieldText> texts;
    if (const ProcessorNode* node = m_project.processor(id))
        texts = fieldTexts(*node);
    else if (m_project.hasGroup(id))
        texts = fieldTexts(m_project.group(id));
    else
        texts = ipListTexts(m_project.ipList);
    retranslateFields();
    m_fields->clear();
    for (const FieldText& field : texts) {
        auto* row = new QTreeWidgetItem(m_fields, {field.first, field.second});
        row->setToolTip(1, field.second);
    }
    m_fields->setColumnWidth(0, kFieldNameWidth);
}

void RecordsPanel::retranslate()
{
    m_caption->setText(tr("Project (groups: %1, processors: %2)")
                           .arg(m_project.groups.size())
                           .arg(m_project.processors.size()));
    m_view->setAccessibleName(tr("Records of the project"));
    retranslateFields();
}

void RecordsPanel::retranslateFields()
{
    const bool isIpList = showsIpList();
    const QString caption = isIpList ? tr("IP list (entries: %1)").arg(m_project.ipList.size())
                                     : tr("Fields of the selected record");
    m_fieldsCaption->setText(caption);
    m_fields->setAccessibleName(caption);
    m_fields->setHeaderLabels(isIpList ? QStringList{tr("Address"), tr("Name")}
                                       : QStringList{tr("Field"), tr("Value")});
}
