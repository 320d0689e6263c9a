#pragma once

#include "Interface/ProcessorNode.h"
#include "host/workbench/events/HostEvent.h"
#include "host/workbench/trace/TraceModel.h"

#include <QVariant>
#include <QVariantList>

/// Return short texts of arguments and return values for the log.
QString shortText(bool value);
QString shortText(int value);
QString shortText(quint32 code);
QString shortText(const QString& text);
QString shortText(const QStringList& texts);
QString shortText(const QUuid& id);
QString shortText(const QList<QUuid>& ids);
QString shortText(const QList<quint32>& addresses);
QString shortText(const ProcessorNode& processor);
QString shortText(const ProcessorGroupNode& group);
QString shortText(const QList<ProcessorNode>& processors);
QString shortText(const QList<ProcessorGroupNode>& groups);

/// Returns the text of a value of one of these types, and the name of its type for any other.
QString shortTextOf(const QVariant& value);

/// Adds the calls of the panel to the log: called() for a request, before it is carried out, such
/// as "RenameGroup({5b2d…0001}, "Left")"; answered() for a question, such as "GetIPCount(0) = 4".
class CallTrace final
{
public:
    explicit CallTrace(TraceModel& model)
        : m_model(model)
    {
    }

    template <typename... Args>
    void called(const char* name, const Args&... args) const
    {
        m_model.add(TraceEntry::Kind::Call, callText(name, {shortText(args)...}));
    }

    /// Does the same for a call that the host's handler does not get.
    void calledWith(const char* name, const QVariantList& args) const;

    /// Returns `answer`.
    template <typename Answer, typename... Args>
    Answer answered(const char* name, const Answer& answer, const Args&... args) const
    {
        m_model.add(TraceEntry::Kind::Call, callText(name, {shortText(args)...})
                                                + QStringLiteral(" = ") + shortText(answer));
        return answer;
    }

private:
    static QString callText(const char* name, const QStringList& args);

    TraceModel& m_model;
};
