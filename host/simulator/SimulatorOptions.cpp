#include "host/simulator/SimulatorOptions.h"

#include "host/simulator/protocol/Message.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QHostAddress>

#include <algorithm>
#include <limits>

namespace {

constexpr int kLongestLifeMs = 24 * 60 * 60 * 1000;

QCommandLineOption option(const char* name, const char* description, const char* value,
                          const char* preset)
{
    return {QLatin1String(name), QLatin1String(description), QLatin1String(value),
            QLatin1String(preset)};
}

/// Reads the values of options, and keeps the first problem.
class Values final
{
public:
    Values(const QCommandLineParser& parser, QString& problem)
        : m_parser(parser)
        , m_problem(problem)
    {
    }

    template <typename Number>
    void read(const QCommandLineOption& option, qint64 least, qint64 most, Number& number)
    {
        bool isNumber = false;
        const qint64 value = m_parser.value(option).toLongLong(&isNumber);
        if (isNumber && value >= least && value <= most)
            number = static_cast<Number>(value);
        else
            refuse(option,
                   QStringLiteral("a whole number from %1 to %2 is expected").arg(least).arg(most));
    }

    void readAddress(const QCommandLineOption& option, quint32& address)
    {
        const QString text = m_parser.value(option);
        bool isAddress = false;
        address = QHostAddress(text).toIPv4Address(&isAddress);
        // Short forms such as "127.1" are addresses, too, and easily misread.
        if (!isAddress || QHostAddress(address).toString() != text)
            refuse(option, QStringLiteral("an address such as 127.0.1.1 is expected"));
    }

    void readNames(const QCommandLineOption& option, QStringList& names)
    {
        if (!m_parser.isSet(option))
            return;
        names = m_parser.value(option).split(QLatin1Char(','));
        if (!std::all_of(names.begin(), names.end(), isDeviceName))
            refuse(option, QStringLiteral("names of 1 to %1 characters, parted by commas, are "
                                          "expected")
                               .arg(kMaxDeviceNameLength));
    }

    void refuse(const QCommandLineOption& option, const QString& reason)
    {
        if (m_problem.isEmpty())
            m_problem = QStringLiteral("--%1: %2").arg(option.names().constFirst(), reason);
    }

private:
    const QCommandLineParser& m_parser;
    QString& m_problem;
};

} // namespace

std::optional<SimulatorOptions> parseSimulatorOptions(const QStringList& arguments,
                                                      QString& problem)
{
    const QCommandLineOption count =
        option("count", "Simulate <n> processors, 1 to 255.", "n", "50");
    const QCommandLineOption base = option(
        "base", "The address of the first one; the others follow it.", "address", "127.0.1.1");
    const QCommandLineOption port =
        option("port", "The port, 1024 to 65535, or 0 for any free one.", "n", "47800");
    const QCommandLineOption names =
        option("names", "Names of the first processors, parted by commas.", "names", "");
    const QCommandLineOption seed =
        option("seed", "Decides the outputs, and who dies by --die-after.", "n", "1");
    const QCommandLineOption backupEvery = option(
        "backup-every", "Each <n>th processor is the backup of the one before it.", "n", "0");
    const QCommandLineOption dieAfter =
        option("die-after", "One processor dies after <ms> milliseconds.", "ms", "0");
    const QCommandLineOption noInput(
        QStringLiteral("no-input"),
        QStringLiteral("Do not read commands; run until SIGTERM or SIGINT."));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Simulates processors on the loopback interface, for the workbench to detect. Reads "
        "commands from the standard input (\"help\" lists them), and ends with it."));
    parser.addHelpOption();
    parser.addOptions({count, base, port, names, seed, backupEvery, dieAfter, noInput});
    if (!parser.parse(arguments)) {
        problem = parser.errorText();
        return std::nullopt;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    if (!parser.positionalArguments().isEmpty()) {
        problem =
            QStringLiteral("\"%1\" is no option").arg(parser.positionalArguments().constFirst());
        return std::nullopt;
    }

    SimulatorOptions options;
    Values values(parser, problem);
    values.read(count, 1, Loopback::kMaxDevices, options.count);
    values.readAddress(base, options.base);
    values.read(port, 0, Loopback::kMostPort, options.port);
    values.readNames(names, options.names);
    values.read(seed, 0, std::numeric_limits<quint32>::max(), options.seed);
    values.read(backupEvery, 0, Loopback::kMaxDevices, options.backupEvery);
    values.read(dieAfter, 0, kLongestLifeMs, options.dieAfterMs);
    options.readsInput = !parser.isSet(noInput);
    if (options.port != 0 && options.port < Loopback::kLeastPort)
        values.refuse(port,
                      QStringLiteral("ports below %1 need privileges").arg(Loopback::kLeastPort));
    if (options.backupEvery == 1)
        values.refuse(backupEvery, QStringLiteral("a backup needs a processor before it"));
    if (options.names.size() > options.count)
        values.refuse(names, QStringLiteral("there are more names than processors"));
    if (!Loopback::isDeviceRange(options.base, options.count))
        values.refuse(base, QStringLiteral("all addresses have to be within 127.0.0.2 to "
                                           "127.255.255.254"));
    return problem.isEmpty() ? std::optional(options) : std::nullopt;
}
