#include "host/workbench/project/HostReply.h"

QList<HostReply> allHostReplies()
{
    return {HostReply::WhenRaised, HostReply::BeforeReturn, HostReply::AfterReturn,
            HostReply::SecondLater};
}

QString hostReplyName(HostReply reply)
{
    switch (reply) {
    case HostReply::WhenRaised:
        return QStringLiteral("whenRaised");
    case HostReply::BeforeReturn:
        return QStringLiteral("beforeReturn");
    case HostReply::AfterReturn:
        return QStringLiteral("afterReturn");
    case HostReply::SecondLater:
        return QStringLiteral("secondLater");
    }
    return {};
}
