#include "host/workbench/trace/ShortIds.h"

#include <QStringList>

namespace {

constexpr int kIdsShown = 4;

} // namespace

QString shortId(const QUuid& id)
{
    // Numbered identities differ only in their last digits, random ones in all digits.
    const QString digits = id.toString(QUuid::WithoutBraces);
    return id.isNull() ? QStringLiteral("{}")
                       : QStringLiteral("{%1…%2}").arg(digits.left(4), digits.right(4));
}

QString shortIds(const QList<QUuid>& ids)
{
    QStringList texts;
    for (const QUuid& id : ids.mid(0, kIdsShown))
        texts.append(shortId(id));
    if (ids.size() > kIdsShown)
        texts.append(QStringLiteral("…"));
    return QStringLiteral("%1: [%2]").arg(ids.size()).arg(texts.join(QStringLiteral(", ")));
}
