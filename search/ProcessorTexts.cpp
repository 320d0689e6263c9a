#include "search/ProcessorTexts.h"

#include "Interface/ProcessorNode.h"
#include "base/IPText.h"
#include "search/CompleterProcessorDelegate.h"

#include <QStringList>

namespace {

constexpr int kBackupMode = 2;

} // namespace

QString processorDetail(const ProcessorNode& processor)
{
    if (!processor.reachedByIp) {
        return QStringLiteral("%1: %2").arg(CCompleterProcessorDelegate::tr("Number"),
                                            QString::number(qint64(processor.number) + 1));
    }
    return QStringLiteral("IP:%1").arg(processor.ipAddress == kNoProcessorAddress
                                           ? CCompleterProcessorDelegate::tr("Invalid")
                                           : addressText(processor.ipAddress));
}

QString processorDescription(const ProcessorNode& processor)
{
    QStringList texts;
    texts << (processor.redundancyMode == kBackupMode
                  ? CCompleterProcessorDelegate::tr("Backup processor")
                  : CCompleterProcessorDelegate::tr("Processor"));
    texts << (processor.online ? CCompleterProcessorDelegate::tr("Online")
                               : CCompleterProcessorDelegate::tr("Offline"));
    if (processor.redundancyMode != 0 && processor.redundancyMode != kBackupMode)
        texts << CCompleterProcessorDelegate::tr("Has a backup");
    if (processor.hostFlag17)
        texts << CCompleterProcessorDelegate::tr("Warning");
    texts << processorDetail(processor);
    return texts.join(QStringLiteral(", "));
}
