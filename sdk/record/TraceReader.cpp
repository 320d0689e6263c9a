#include "sdk/record/TraceReader.h"

#include "sdk/record/TraceValues.h"
#include "sdk/record/TraceWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>

namespace {

struct TraceReaderMessages
{
    Q_DECLARE_TR_FUNCTIONS(CTraceReader)
};

/// Returns the column of byte `offset`, in characters from 1.
int columnOf(const QByteArray& line, int offset)
{
    return QString::fromUtf8(line.left(std::max(offset, 0))).size() + 1;
}

/// Returns the name of the field that does not fit the operation or event; empty for none.
QByteArray misfit(const CTraceEntry& entry)
{
    if (entry.kind == CTraceEntry::Kind::Event) {
        Events::Event event;
        return TraceValues::readEvent(entry.arguments, event) ? "" : "args";
    }
    if (entry.kind != CTraceEntry::Kind::Call)
        return {};
    const Operations::Operation* operation = Operations::find(entry.name.toUtf8().constData());
    if (!operation)
        return "name";
    CHandlerRelay::Answer answer;
    const bool isOver = entry.duration >= 0;
    return isOver && !TraceValues::readAnswer(*operation, entry.answer, entry.outs, answer)
               ? "answer"
               : "";
}

} // namespace

bool CTraceReader::read(const QString& path)
{
    m_path = QDir::toNativeSeparators(path);
    m_problem.clear();
    m_note.clear();
    m_entries.clear();
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        m_problem = TraceReaderMessages::tr("%1 is not a regular file").arg(m_path);
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        m_problem =
            TraceReaderMessages::tr("%1 cannot be read: %2").arg(m_path, file.errorString());
        return false;
    }
    for (int number = 1; !file.atEnd(); ++number) {
        QByteArray line = file.readLine();
        if (!line.endsWith('\n') && number > 1) {
            m_note = TraceReaderMessages::tr("%1, line %2: the recording ends inside this line")
                         .arg(m_path, QString::number(number));
            break;
        }
        if (line.endsWith('\n'))
            line.chop(1);
        if (!(number == 1 ? readHeader(line) : readEntry(line, number)))
            return false;
    }
    if (m_header.isEmpty())
        return fail(1, 1, TraceReaderMessages::tr("this is not a recording"));
    // A line at the beginning gives way to the one at the end.
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const CTraceEntry& left, const CTraceEntry& right) {
                         return left.sequence != right.sequence ? left.sequence < right.sequence
                                                                : left.line > right.line;
                     });
    m_entries.erase(std::unique(m_entries.begin(), m_entries.end(),
                                [](const CTraceEntry& left, const CTraceEntry& right) {
                                    return left.sequence == right.sequence;
                                }),
                    m_entries.end());
    return true;
}

bool CTraceReader::readHeader(const QByteArray& line)
{
    if (!readObject(line, 1, m_header))
        return false;
    if (m_header.value(QLatin1String("trace")) != QLatin1String("targetselect-record"))
        return fail(1, 1, TraceReaderMessages::tr("this is not a recording"));
    const QJsonValue version = m_header.value(QLatin1String("version"));
    if (version.toInt() == kTraceVersion)
        return true;
    return fail(
        1, columnOf(line, line.indexOf("\"version\"")),
        TraceReaderMessages::tr(
            "the recording has version %1 of the format, and this program reads version %2")
            .arg(QString::fromUtf8(TraceValues::compact(version)), QString::number(kTraceVersion)));
}

bool CTraceReader::readEntry(const QByteArray& line, int number)
{
    QJsonObject object;
    if (!readObject(line, number, object))
        return false;
    CTraceEntry entry;
    QByteArray field = entry.fromJson(object);
    if (field.isEmpty())
        field = misfit(entry);
    if (!field.isEmpty()) {
        return fail(
            number, columnOf(line, line.indexOf('"' + field + '"')),
            TraceReaderMessages::tr("\"%1\" is missing or wrong").arg(QString::fromLatin1(field)));
    }
    entry.line = number;
    m_entries.push_back(entry);
    return true;
}

bool CTraceReader::readObject(const QByteArray& line, int number, QJsonObject& object)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError)
        return fail(number, columnOf(line, error.offset), error.errorString());
    object = document.object();
    return !object.isEmpty() || fail(number, 1, TraceReaderMessages::tr("this is not an object"));
}

bool CTraceReader::fail(int line, int column, const QString& reason)
{
    m_problem = TraceReaderMessages::tr("%1, line %2, column %3: %4")
                    .arg(m_path, QString::number(line), QString::number(column), reason);
    return false;
}
