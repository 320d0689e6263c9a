#include "sdk/record/TraceWriter.h"

#include "Interface/TargetSelectArea.h"
#include "host/common/WorkThread.h"
#include "sdk/record/ReplacedFile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QSysInfo>
#include <QThread>

#include <algorithm>

namespace {

constexpr const char* kHeaderStart = R"({"trace":"targetselect-record",)";

struct TraceWriterMessages
{
    Q_DECLARE_TR_FUNCTIONS(CTraceWriter)
};

/// The innermost call or event that goes on, on this thread. Not a container: on Windows, MinGW
/// calls the destructors of thread-local objects when their memory may have gone.
thread_local const CTraceScope* t_innermost = nullptr;

bool isGuiThread()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

/// Returns what the calling thread is, and its number. `isNotifying` if an event goes on there.
QString threadName(bool isNotifying)
{
    if (isGuiThread())
        return QStringLiteral("gui");
    static std::atomic<int> last{0};
    thread_local const int number = ++last;
    const bool isWork = dynamic_cast<const CWorkThread*>(QThread::currentThread()) != nullptr;
    const auto* kind = isWork ? "work" : isNotifying ? "notify" : "other";
    return QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(number);
}

bool isRecording(QFile& file)
{
    const QByteArray start(kHeaderStart);
    return file.read(start.size()) == start;
}

QString problemText(const QString& path, const QString& reason)
{
    return TraceWriterMessages::tr("%1 cannot be written: %2")
        .arg(QDir::toNativeSeparators(path), reason);
}

QByteArray header()
{
    return kHeaderStart + QByteArray("\"version\":") + QByteArray::number(kTraceVersion)
           + ",\"library\":\"" TARGETSELECTRECORD_VERSION "\",\"interface\":"
           + QByteArray::number(TARGETSELECTAREA_INTERFACE_VERSION) + R"(,"started":")"
           + QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toLatin1()
           + R"(","platform":")"
           + QStringLiteral("%1 %2, Qt %3")
                 .arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture(),
                      QString::fromLatin1(qVersion()))
                 .remove(QLatin1Char('"'))
                 .remove(QLatin1Char('\\'))
                 .toUtf8()
           + "\"}";
}

} // namespace

bool CTraceWriter::open(const QString& path, QString& problem)
{
    const std::lock_guard guard(m_mutex);
    if (m_isOpen) {
        problem = problemText(path, TraceWriterMessages::tr("a recording is being written to %1")
                                        .arg(QDir::toNativeSeparators(m_file.fileName())));
        return false;
    }
    m_file.setFileName(path);
    // Not as text: lines end alike everywhere.
    QString reason =
        openToReplace(m_file, m_lock, QIODevice::NotOpen, isRecording,
                      TraceWriterMessages::tr("the file that is there is not a recording"));
    const QByteArray first = header() + '\n';
    if (reason.isEmpty() && (m_file.write(first) != first.size() || !m_file.flush()))
        reason = m_file.errorString();
    if (!reason.isEmpty()) {
        problem = problemText(path, reason);
        m_file.close();
        m_lock.release();
        return false;
    }
    m_clock.start();
    m_isOpen = true;
    return true;
}

void CTraceWriter::addInput(const QString& name, const QJsonObject& arguments)
{
    CTraceEntry entry;
    entry.kind = CTraceEntry::Kind::Input;
    entry.name = name;
    entry.arguments = arguments;
    begin(entry);
    write(entry);
    m_input = entry.sequence;
}

/// Sets when and where `entry` begins, and inside which other one.
void CTraceWriter::begin(CTraceEntry& entry)
{
    bool isNotifying = entry.kind == CTraceEntry::Kind::Event;
    for (const CTraceScope* scope = t_innermost; scope; scope = scope->m_outer) {
        isNotifying = isNotifying || scope->m_entry.kind == CTraceEntry::Kind::Event;
        if (&scope->m_writer == this && entry.cause == 0)
            entry.cause = scope->m_entry.sequence;
    }
    entry.thread = threadName(isNotifying);
    if (isGuiThread())
        entry.cause = std::max<qint64>(entry.cause, m_input);
    const std::lock_guard guard(m_mutex);
    entry.sequence = ++m_sequence;
    entry.time = m_clock.isValid() ? m_clock.nsecsElapsed() : 0;
}

void CTraceWriter::write(const CTraceEntry& entry)
{
    if (m_isOpen)
        writeLine(entry.toJson() + '\n');
}

void CTraceWriter::writeLine(const QByteArray& line)
{
    QString problem;
    {
        const std::lock_guard guard(m_mutex);
        if (m_hasFailed || (m_file.write(line) == line.size() && m_file.flush()))
            return;
        m_hasFailed = true;
        problem = problemText(m_file.fileName(), m_file.errorString());
    }
    if (onFailure)
        onFailure(problem);
}

CTraceScope::CTraceScope(CTraceWriter& writer, CTraceEntry::Kind kind, const QString& name,
                         const QJsonObject& arguments, bool isShort)
    : m_writer(writer)
    , m_outer(t_innermost)
{
    m_entry.kind = kind;
    m_entry.name = name;
    m_entry.arguments = arguments;
    m_writer.begin(m_entry);
    t_innermost = this;
    if (!isShort)
        m_writer.write(m_entry);
}

CTraceScope::~CTraceScope()
{
    t_innermost = m_outer;
    m_entry.duration = std::max<qint64>(m_writer.m_clock.nsecsElapsed() - m_entry.time, 0);
    m_writer.write(m_entry);
}

void CTraceScope::setAnswer(const QJsonValue& answer, const QJsonObject& outs)
{
    m_entry.answer = answer;
    m_entry.outs = outs;
}
