// The changes of the IP list that take their entries from elsewhere.

#include "Interface/IPStatusCodes.h"
#include "host/common/AppendLog.h"
#include "host/simulator/protocol/Loopback.h"
#include "host/workbench/addresses/IpCheck.h"
#include "host/workbench/addresses/IpFile.h"
#include "host/workbench/store/ProjectStore.h"

#include <QFile>
#include <QFileInfo>

namespace {

void logImport(const QString& message)
{
    AppendLog("importIpFile", "ProjectStoreIpList.cpp", __LINE__, message.toUtf8().constData());
}

/// Returns the bytes of an address file. On failure returns nothing and sets `problem`.
std::optional<QByteArray> readIpFile(const QString& path, QString& problem)
{
    QFile file(path);
    // Opening a pipe could block.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1 cannot be opened").arg(path);
        return std::nullopt;
    }
    const QByteArray bytes = file.read(kMaxIpFileSize + 1);
    if (file.error() != QFile::NoError) {
        problem = QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    if (bytes.size() > kMaxIpFileSize) {
        problem = QStringLiteral("%1 has more than %2 bytes").arg(path).arg(kMaxIpFileSize);
        return std::nullopt;
    }
    return bytes;
}

/// Returns whether a processor can be reached at the address.
bool isReachable(const Project& project, quint32 address)
{
    return isHostAddress(address) || (project.network.enabled && Loopback::isDevice(address));
}

} // namespace

quint32 ProjectStore::mergeOnlineAddresses()
{
    const QList<IpEntry> online = read([](const Project& project) {
        QList<IpEntry> entries;
        for (const ProcessorNode& node : project.processors) {
            if (node.online && isReachable(project, node.ipAddress))
                entries.append({node.ipAddress, node.name.left(IpList::kMaxNameLength)});
        }
        return entries;
    });
    if (online.isEmpty())
        return IPLIST_ONLINE_EMPTY;
    bool complete = true;
    changeIpList([&](IpList& list) {
        const int before = list.size();
        for (const IpEntry& entry : online)
            complete = list.append(entry) != IpRefusal::Full && complete;
        return list.size() != before;
    });
    return complete ? 0 : quint32{IPLIST_FULL};
}

quint32 ProjectStore::importIpFile(const QString& path)
{
    QString problem;
    const auto bytes = readIpFile(path, problem);
    if (!bytes) {
        logImport(problem);
        return IPIMPORT_OPEN_FAILED;
    }
    ImportedIpList imported = parseIpFile(*bytes);
    int added = 0;
    changeIpList([&](IpList& list) {
        for (const ImportedIpLine& line : qAsConst(imported.lines)) {
            const IpRefusal reason = list.append(line.entry);
            if (reason == IpRefusal::None)
                ++added;
            else
                imported.refuse({line.number, reason, ipEntryText(line.entry)});
        }
        return added > 0;
    });
    for (const RefusedIpLine& line : qAsConst(imported.refused))
        logImport(QStringLiteral("line %1 is left out: %2: %3")
                      .arg(line.number)
                      .arg(refusalText(line.reason), line.text));
    logImport(QStringLiteral("%1: %2 lines added, %3 left out")
                  .arg(path)
                  .arg(added)
                  .arg(imported.refusedCount));
    return imported.lines.isEmpty() ? quint32{IPIMPORT_NO_VALID_IP} : 0;
}
