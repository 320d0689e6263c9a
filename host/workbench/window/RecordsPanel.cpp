#include "host/workbench/window/RecordsPanel.h"

#include "host/widgets/HostTheme.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/dialogs/FieldDelegate.h"
#include "host/workbench/dialogs/FieldTable.h"
#include "host/workbench/dialogs/PlainText.h"
#include "host/workbench/project/FieldEdit.h"

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
#include <utility>

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

QList<FieldText> ipListFields(const IpList& list)
{
    QList<FieldText> texts;
    for (const IpEntry& entry : list.entries())
        texts.append({dottedAddress(entry.address), entry.name, false, true});
    return texts;
}

} // namespace

RecordsPanel::RecordsPanel(QWidget* parent)
    : QWidget(parent)
    , m_model(new RecordsModel(this))
    , m_caption(captionLabel(this))
    , m_fieldsCaption(captionLabel(this))
    , m_view(new QTreeView(this))
    , m_fields(new FieldTable(this))
    , m_splitter(new QSplitter(Qt::Horizontal, this))
{
    m_view->setModel(m_model);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    m_view->header()->setStretchLastSection(true);
    m_view->viewport()->installEventFilter(this);
    m_fields->setAlternatingRowColors(true);
    m_fields->setColumnCount(2);
    auto* delegate = new FieldDelegate(
        [this](const QModelIndex& index, const QString& text) { return refusal(index, text); },
        [this](const QModelIndex& index, const QString& text) { edit(index, text); }, m_fields);
    m_fields->setItemDelegate(delegate);
    // The keys of an editor are meant for the value.
    connect(m_fields, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item && m_fields->currentColumn() == 0 && !showsIpList())
            m_fields->setCurrentItem(item, 1);
    });

    m_splitter->setHandleWidth(8);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(stacked(m_caption, m_view));
    m_splitter->addWidget(stacked(m_fieldsCaption, m_fields));
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setSizes({kRecordsWidth, kFieldsWidth});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 0);
    layout->addWidget(m_splitter);

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

QUuid RecordsPanel::shownRecord() const
{
    return (selectedProcessors() + selectedGroups()).value(0);
}

void RecordsPanel::showFields()
{
    const QUuid id = shownRecord();
    QList<FieldText> texts;
    if (const ProcessorNode* node = m_project.processor(id))
        texts = fieldTexts(*node);
    else if (m_project.hasGroup(id))
        texts = fieldTexts(m_project.group(id));
    else
        texts = ipListFields(m_project.ipList);
    retranslateFields();
    // What is edited stays open while other records change.
    if (std::exchange(m_fieldsOf, id) != id || m_fields->topLevelItemCount() != texts.size())
        m_fields->clear();
    fillFields(texts);
    m_fields->setColumnWidth(0, kFieldNameWidth);
}

void RecordsPanel::fillFields(const QList<FieldText>& texts)
{
    for (int row = 0; row < texts.size(); ++row) {
        const FieldText& field = texts.at(row);
        QTreeWidgetItem* item = m_fields->topLevelItem(row);
        if (!item) {
            item = new QTreeWidgetItem(m_fields);
            item->setFlags(item->flags().setFlag(Qt::ItemIsEditable, field.isEditable));
            item->setData(0, FieldDelegate::HasTwoValuesRole, showsIpList());
        }
        // A view sets the text of an open editor anew whenever the value is set.
        if (item->text(0) != field.name)
            item->setText(0, field.name);
        if (item->text(1) != field.value)
            item->setText(1, field.value);
        if (field.isFlag)
            item->setCheckState(1, field.value == QStringLiteral("true") ? Qt::Checked
                                                                         : Qt::Unchecked);
        const QString tip = field.isEditable || showsIpList()
                                ? field.value
                                : tr("%1 (does not change)").arg(field.value);
        item->setToolTip(1, PlainText::toolTip(tip));
    }
}

QString RecordsPanel::refusal(const QModelIndex& index, const QString& text) const
{
    if (!showsIpList())
        return fieldRefusal(m_project, m_fieldsOf, index.siblingAtColumn(0).data().toString(),
                            text);
    const bool isAddress = index.column() == 0;
    IpList list = m_project.ipList;
    return setIpEntry(list, index.row(),
                      isAddress ? text : index.siblingAtColumn(0).data().toString(),
                      isAddress ? index.siblingAtColumn(1).data().toString() : text);
}

void RecordsPanel::edit(const QModelIndex& index, const QString& text)
{
    const QString first = index.siblingAtColumn(0).data().toString();
    if (!showsIpList())
        emit fieldEdited(m_fieldsOf, first, text);
    else if (index.column() == 0)
        emit ipEntryEdited(index.row(), text, index.siblingAtColumn(1).data().toString());
    else
        emit ipEntryEdited(index.row(), first, text);
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
