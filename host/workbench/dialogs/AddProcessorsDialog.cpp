#include "host/workbench/dialogs/AddProcessorsDialog.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/store/ProjectStore.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

#include <algorithm>

AddProcessorsDialog::AddProcessorsDialog(ProjectStore& store, const QUuid& group, QWidget* parent)
    : FormDialog(tr("Add processors"), parent)
    , m_store(store)
    , m_group(new QComboBox(this))
    , m_count(new QSpinBox(this))
    , m_address(new QLineEdit(this))
{
    const Project project = store.snapshot();
    m_group->addItem(tr("No group"), QUuid());
    for (const ProcessorGroupNode& known : project.groups)
        m_group->addItem(known.name, known.id);
    m_group->setCurrentIndex(std::max(0, m_group->findData(group)));
    m_group->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_count->setRange(1, std::max(1, project.roomForProcessors()));
    m_count->setValue(std::min(2, project.roomForProcessors()));
    m_address->setPlaceholderText(tr("none: addressed by number"));
    addField(tr("&Group"), m_group);
    addField(tr("&Number of processors"), m_count);
    addField(tr("&First address"), m_address);
    m_count->setFocus();
    m_count->selectAll();
}

QString AddProcessorsDialog::complete()
{
    const QUuid group = m_group->currentData().toUuid();
    const QString text = m_address->text().trimmed();
    if (text.isEmpty()) {
        m_store.addProcessors(group, m_count->value());
        return {};
    }
    quint32 first = 0;
    if (!parseDottedAddress(text, first))
        return tr("\"%1\" is no address; 192.168.0.1 is one.").arg(text);
    const quint32 last = first + static_cast<quint32>(m_count->value() - 1);
    if (last < first)
        return tr("There are not so many addresses from %1 on.").arg(text);
    if (first <= kNoProcessorAddress && kNoProcessorAddress <= last)
        return tr("127.0.0.1 stands for no address.");
    QList<quint32> addresses;
    for (int at = 0; at < m_count->value(); ++at)
        addresses.append(first + static_cast<quint32>(at));
    m_store.addProcessors(group, addresses);
    return {};
}
