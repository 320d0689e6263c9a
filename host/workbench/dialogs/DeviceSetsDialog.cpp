#include "host/workbench/dialogs/DeviceSetsDialog.h"

#include "host/workbench/dialogs/FieldDelegate.h"
#include "host/workbench/dialogs/FieldTable.h"
#include "host/workbench/project/FieldEdit.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/store/ProjectStore.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr QSize kListSize(448, 184);
constexpr int kNumberWidth = 112;

/// The fields of the columns, as a project file names them.
constexpr const char* kFields[] = {"text", "hostAttribute2", "hostAttribute3"};

QString fieldOf(int column)
{
    return QLatin1String(kFields[column]);
}

} // namespace

DeviceSetsDialog::DeviceSetsDialog(ProjectStore& store, QWidget* parent)
    : FormDialog(tr("Device sets"), parent)
    , m_store(store)
    , m_list(new FieldTable(this))
    , m_current(new QComboBox(this))
    , m_add(new QPushButton(tr("&Add"), this))
{
    buildList();
    addField(tr("&Sets"), m_list);
    buildButtons();
    m_current->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addField(tr("&Current set"), m_current);
    const Project project = store.snapshot();
    for (const DeviceSet& set : project.deviceSets)
        add(set);
    updateCurrent(fromGuid(project.currentDeviceSet));
    m_list->setCurrentItem(m_list->topLevelItem(0));
    m_list->setFocus();
}

QString DeviceSetsDialog::complete()
{
    // The click on OK has ended the editing of a text that was refused.
    if (!m_givenUp.isEmpty())
        return std::exchange(m_givenUp, QString());
    m_store.setDeviceSets(m_sets, toGuid(current()));
    return {};
}

void DeviceSetsDialog::buildList()
{
    m_list->setMinimumSize(kListSize);
    m_list->setColumnCount(static_cast<int>(std::size(kFields)));
    m_list->setHeaderLabels({tr("Text"), fieldOf(1), fieldOf(2)});
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->header()->resizeSection(1, kNumberWidth);
    m_list->header()->resizeSection(2, kNumberWidth);
    auto* delegate = new FieldDelegate(
        [this](const QModelIndex& index, const QString& text) {
            DeviceSet copy = m_sets.at(index.row());
            return setField(copy, fieldOf(index.column()), text);
        },
        [this](const QModelIndex& index, const QString& text) {
            setField(m_sets[index.row()], fieldOf(index.column()), text);
            m_list->topLevelItem(index.row())->setText(index.column(), text);
            updateCurrent(current());
        },
        m_list);
    connect(delegate, &FieldDelegate::closeEditor, this,
            [this](const QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
                // Another widget takes the keyboard; the editor tells why it refuses its text.
                const bool isGivenUp = hint == QAbstractItemDelegate::NoHint;
                m_givenUp = isGivenUp ? editor->accessibleDescription() : QString();
            });
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, [this] { m_givenUp.clear(); });
    m_list->setItemDelegate(delegate);
}

void DeviceSetsDialog::buildButtons()
{
    auto* removeButton = new QPushButton(tr("&Remove"), this);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (QPushButton* button : {m_add, removeButton}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch(1);
    form()->addRow(QString(), row);
    connect(m_add, &QPushButton::clicked, this, &DeviceSetsDialog::addNew);
    connect(removeButton, &QPushButton::clicked, this, &DeviceSetsDialog::remove);
}

void DeviceSetsDialog::add(const DeviceSet& set)
{
    m_sets.append(set);
    auto* item = new QTreeWidgetItem(m_list, {set.text, QString::number(set.info.hostAttribute2),
                                              QString::number(set.info.hostAttribute3)});
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    item->setData(0, FieldDelegate::HasTwoValuesRole, true);
}

void DeviceSetsDialog::addNew()
{
    DeviceSet set;
    set.info.id = toGuid(QUuid::createUuid());
    int number = m_sets.size();
    do {
        set.text = tr("Set %1").arg(++number);
    } while (std::any_of(m_sets.cbegin(), m_sets.cend(),
                         [&](const DeviceSet& known) { return known.text == set.text; }));
    add(set);
    updateCurrent(current());
    QTreeWidgetItem* item = m_list->topLevelItem(m_list->topLevelItemCount() - 1);
    m_list->setCurrentItem(item, 0);
    m_list->editItem(item, 0);
}

void DeviceSetsDialog::remove()
{
    const int chosen = m_list->indexOfTopLevelItem(m_list->currentItem());
    if (chosen < 0)
        return;
    const QUuid kept = current();
    delete m_list->takeTopLevelItem(chosen);
    m_sets.removeAt(chosen);
    updateCurrent(kept);
}

/// Lists the sets, and chooses the wanted one if it still exists.
void DeviceSetsDialog::updateCurrent(const QUuid& wanted)
{
    m_current->clear();
    m_current->addItem(tr("None"), QUuid());
    for (const DeviceSet& set : qAsConst(m_sets))
        m_current->addItem(set.text, fromGuid(set.info.id));
    m_current->setCurrentIndex(std::max(m_current->findData(wanted), 0));
    m_add->setEnabled(m_sets.size() < ProjectRanges::kMaxDeviceSets);
}

QUuid DeviceSetsDialog::current() const
{
    return m_current->currentData().toUuid();
}
