#include "base/ProcessorTexts.h"

#include "Interface/ProcessorNode.h"
#include "base/IPText.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

constexpr int kBackupMode = 2;

struct ProcessorTexts
{
    Q_DECLARE_TR_FUNCTIONS(ProcessorTexts)
};

} // namespace

QString processorDetail(const ProcessorNode& processor)
{
    if (!processor.reachedByIp) {
        return QStringLiteral("%1: %2").arg(ProcessorTexts::tr("Number"),
                                            QString::number(qint64(processor.number) + 1));
    }
    return QStringLiteral("IP:%1").arg(processor.ipAddress == kNoProcessorAddress
                                           ? ProcessorTexts::tr("Invalid")
                                           : addressText(processor.ipAddress));
}

QString processorDescription(const ProcessorNode& processor)
{
    QStringList texts;
    texts << (processor.redundancyMode == kBackupMode ? ProcessorTexts::tr("Backup processor")
                                                      : ProcessorTexts::tr("Processor"));
    texts << (processor.online ? ProcessorTexts::tr("Online") : ProcessorTexts::tr("Offline"));
    if (processor.redundancyMode != 0 && processor.redundancyMode != kBackupMode)
        texts << ProcessorTexts::tr("Has a backup");
    if (processor.hostFlag17)
        texts << ProcessorTexts::tr("Warning");
    texts << processorDetail(processor);
    return texts.join(QStringLiteral(", "));
}
