#include "host/workbench/dialogs/DeviceSetsDialog.h"

#include "host/workbench/project/Guid.h"
#include "host/workbench/store/ProjectStore.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int kListHeight = 160;

} // namespace

DeviceSetsDialog::DeviceSetsDialog(ProjectStore& store, QWidget* parent)
    : FormDialog(tr("Device sets"), parent)
    , m_store(store)
    , m_list(new QListWidget(this))
    , m_current(new QComboBox(this))
{
    m_list->setFixedHeight(kListHeight);
    addField(tr("&Sets"), m_list);
    addField(tr("&Current set"), m_current);
    const Project project = store.snapshot();
    for (const DeviceSet& set : project.deviceSets)
        add(set);
    connect(m_list, &QListWidget::itemChanged, this, &DeviceSetsDialog::updateCurrent);
    updateCurrent();
    for (int at = 0; at < m_sets.size(); ++at) {
        if (m_sets.at(at).info.id == project.currentDeviceSet)
            m_current->setCurrentIndex(at + 1);
    }

    auto* addButton = new QPushButton(tr("&Add"), this);
    auto* removeButton = new QPushButton(tr("&Remove"), this);
    auto* row = new QHBoxLayout;
    for (QPushButton* button : {addButton, removeButton}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch(1);
    form()->insertRow(1, QString(), row);
    m_list->setFocus();
    connect(addButton, &QPushButton::clicked, this, [this] {
        DeviceSet set;
        set.info.id = toGuid(QUuid::createUuid());
        set.text = tr("Set %1").arg(m_sets.size() + 1);
        add(set);
        updateCurrent();
        m_list->setCurrentRow(m_list->count() - 1);
        m_list->editItem(m_list->currentItem());
    });
    connect(removeButton, &QPushButton::clicked, this, [this] {
        const int chosen = m_list->currentRow();
        if (chosen < 0)
            return;
        delete m_list->takeItem(chosen);
        m_sets.removeAt(chosen);
        updateCurrent();
    });
}

QString DeviceSetsDialog::complete()
{
    for (int at = 0; at < m_sets.size(); ++at)
        m_sets[at].text = m_list->item(at)->text();
    const int current = m_current->currentIndex() - 1;
    m_store.setDeviceSets(m_sets, current < 0 ? GUID{} : m_sets.at(current).info.id);
    return {};
}

void DeviceSetsDialog::add(const DeviceSet& set)
{
    m_sets.append(set);
    auto* item = new QListWidgetItem(set.text, m_list);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
}

/// Lists the sets; keeps the chosen one if it still exists.
void DeviceSetsDialog::updateCurrent()
{
    const int chosen = m_current->currentIndex();
    m_current->clear();
    m_current->addItem(tr("None"));
    for (int row = 0; row < m_list->count(); ++row)
        m_current->addItem(m_list->item(row)->text());
    m_current->setCurrentIndex(std::clamp(chosen, 0, m_current->count() - 1));
}
