#include "host/workbench/window/RecordsModel.h"

#include "host/widgets/HostTheme.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/dialogs/PlainText.h"

#include <QFont>

namespace {

QStandardItem* cell(const QString& text)
{
    auto* item = new QStandardItem(text);
    item->setEditable(false);
    return item;
}

QStandardItem* nameCell(const QString& text, const QUuid& id, bool isGroup)
{
    QStandardItem* item = cell(text);
    item->setData(id, RecordsModel::IdRole);
    item->setData(isGroup, RecordsModel::IsGroupRole);
    item->setToolTip(PlainText::toolTip(text));
    return item;
}

} // namespace

RecordsModel::RecordsModel(QObject* parent)
    : QStandardItemModel(parent)
{
}

void RecordsModel::show(const Project& project)
{
    clear();
    setHorizontalHeaderLabels({tr("Name"), tr("Number"), tr("Address"), tr("State"),
                               tr("Addressed by"), tr("Redundancy"), tr("Monitor"),
                               tr("Front panel")});
    const auto processor = [&](const ProcessorNode& node) {
        return processorRow(node, node.id == project.currentProcessor,
                            project.litFrontPanels.contains(node.id));
    };
    for (const ProcessorGroupNode& group : project.allGroups()) {
        QStandardItem* row = nameCell(group.name, group.id, true);
        row->setForeground(hostColors().strongText);
        for (const ProcessorNode& node : group.processors)
            row->appendRow(processor(node));
        const QString text = project.litFrontPanels.contains(group.id)
                                 ? tr("%1 (%2), front panel lit")
                                 : tr("%1 (%2)");
        row->setText(text.arg(group.name, QString::number(group.processors.size())));
        appendRow(row);
    }
    for (const ProcessorNode& node : project.processors) {
        if (node.groupId.isNull())
            appendRow(processor(node));
    }
}

QModelIndex RecordsModel::indexOf(const QUuid& id) const
{
    if (id.isNull() || rowCount() == 0)
        return {};
    const QModelIndexList found =
        match(index(0, NameColumn), IdRole, id, 1, Qt::MatchExactly | Qt::MatchRecursive);
    return found.value(0);
}

QList<QStandardItem*> RecordsModel::processorRow(const ProcessorNode& node, bool isCurrent,
                                                 bool isLit) const
{
    const QString address =
        node.ipAddress == kNoProcessorAddress ? tr("none") : dottedAddress(node.ipAddress);
    QString redundancy;
    if (node.redundancyMode == 1)
        redundancy = tr("has a backup");
    else if (node.redundancyMode != 0)
        redundancy = tr("backup");
    QList<QStandardItem*> row{nameCell(node.name, node.id, false),
                              cell(QString::number(qint64{node.number} + 1)),
                              cell(address),
                              cell(node.online ? tr("online") : tr("offline")),
                              cell(node.reachedByIp ? tr("address") : tr("number")),
                              cell(redundancy),
                              cell(node.hostFlag17 ? tr("warning") : QString()),
                              cell(isLit ? tr("lit") : QString())};
    if (!node.online)
        row.at(StateColumn)->setForeground(hostColors().weakText);
    if (node.ipAddress == kNoProcessorAddress)
        row.at(AddressColumn)->setForeground(hostColors().weakText);
    if (isCurrent) {
        QFont font;
        font.setBold(true);
        for (QStandardItem* item : qAsConst(row)) {
            item->setFont(font);
            item->setForeground(hostColors().strongText);
        }
        row.at(NameColumn)->setText(tr("%1 (current)").arg(node.name));
    }
    return row;
}
