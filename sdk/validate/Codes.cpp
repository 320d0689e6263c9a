#include "sdk/validate/Codes.h"

#include <array>

namespace {

constexpr std::array<const char*, kCodes> kTitles{{
    "Library cannot be loaded",
    "Entry point is missing",
    "Headers and library differ",
    "Entry point breaks its contract",
    "Wrong widget",
    "Panel does not start",
    "Operation without its effect",
    "Event without its effect",
    "Tree differs from the project",
    "Wrong use has an effect",
    "Contract check is missing",
    "Contract check tells of a right host",
    "Panel does not end",
    "Something is kept for ever",
    "Qt warns",
    "Crash",
    "Hang",
    "Exception from the library",
    "Host plugin cannot be loaded",
    "Host plugin opens no project",
    "Events do not reach the observer",
    "List and record disagree",
    "Unknown identity is answered",
    "Null or repeated identity",
    "Group is not listed",
    "Request without an event",
    "Request is not carried out",
    "Event comes before the change",
    "Exception from the handler",
    "Threads get different answers",
    "Lists or counts disagree",
    "Nothing ran",
}};

} // namespace

QString codeText(Code code)
{
    return QStringLiteral("TSA-V%1").arg(static_cast<int>(code), 2, 10, QLatin1Char('0'));
}

QString codeTitle(Code code)
{
    return QString::fromLatin1(kTitles.at(static_cast<std::size_t>(code) - 1));
}

bool isFailure(const QString& code)
{
    return !code.startsWith(QLatin1String("TSA-W")) && code != codeText(Code::QtWarning);
}
