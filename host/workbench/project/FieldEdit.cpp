#include "host/workbench/project/FieldEdit.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/project/RecordFields.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <cmath>
#include <limits>

namespace {

struct FieldEditMessages
{
    Q_DECLARE_TR_FUNCTIONS(FieldEdit)
};

/// Visitor that sets the one field of its name to what a text means.
class FieldSetter final
{
public:
    FieldSetter(const QString& field, const QString& text)
        : m_field(field)
        , m_text(text)
    {
    }

    void operator()(const char* name, QUuid& value)
    {
        if (!isWanted(name))
            return;
        const QUuid id(m_text.trimmed());
        if (id.isNull() && !m_text.trimmed().isEmpty() && m_text.trimmed() != nullText())
            problem =
                FieldEditMessages::tr("An identity is expected, such as %1; nothing means none.")
                    .arg(nullText());
        else
            value = id;
    }
    void operator()(const char* /*name*/, GUID& /*value*/) {}
    void operator()(const char* name, QString& value)
    {
        if (!isWanted(name))
            return;
        if (m_text.size() > ProjectRanges::kMaxNameLength)
            problem = FieldEditMessages::tr("The text has more than %1 characters.")
                          .arg(ProjectRanges::kMaxNameLength);
        else
            value = m_text;
    }
    void operator()(const char* name, bool& value)
    {
        if (!isWanted(name))
            return;
        const bool isTrue = m_text == QStringLiteral("true");
        if (!isTrue && m_text != QStringLiteral("false"))
            problem = FieldEditMessages::tr("Either true or false is expected.");
        else
            value = isTrue;
    }
    void operator()(const char* name, float& value)
    {
        if (!isWanted(name))
            return;
        bool isNumber = false;
        const float number = m_text.trimmed().toFloat(&isNumber);
        if (!isNumber || !std::isfinite(number))
            problem = FieldEditMessages::tr("A number is expected, such as 59.94.");
        else
            value = number;
    }
    void operator()(const char* name, std::array<quint32, 4>& value)
    {
        if (!isWanted(name))
            return;
        const QStringList parts = m_text.split(QLatin1Char(','));
        std::array<quint32, 4> numbers{};
        bool isNumber = parts.size() == static_cast<int>(numbers.size());
        for (int at = 0; isNumber && at < parts.size(); ++at)
            numbers.at(static_cast<std::size_t>(at)) = parts.at(at).trimmed().toUInt(&isNumber);
        if (isNumber)
            value = numbers;
        else
            problem =
                FieldEditMessages::tr("Four whole numbers from 0 to %1 are expected, with commas "
                                      "between them.")
                    .arg(std::numeric_limits<quint32>::max());
    }
    template <typename Number>
    void operator()(const char* name, Number& value)
    {
        using Range = std::numeric_limits<Number>;
        if (!isWanted(name))
            return;
        bool isNumber = false;
        const qint64 number = m_text.trimmed().toLongLong(&isNumber);
        if (isNumber && number >= qint64{Range::min()} && number <= qint64{Range::max()})
            value = static_cast<Number>(number);
        else
            problem = FieldEditMessages::tr("A whole number from %1 to %2 is expected.")
                          .arg(Range::min())
                          .arg(Range::max());
    }
    void visitAddress(const char* name, quint32& value)
    {
        if (isWanted(name) && !parseDottedAddress(m_text.trimmed(), value))
            problem = FieldEditMessages::tr(
                "An address is expected, such as 192.168.0.1; 127.0.0.1 means "
                "none.");
    }

    QString problem;

private:
    static QString nullText() { return QUuid().toString(QUuid::WithoutBraces); }
    bool isWanted(const char* name) const { return m_field == QLatin1String(name); }

    const QString& m_field;
    const QString& m_text;
};

QString nameProblem(const HandlerAnswers& answers, const QString& name)
{
    if (name.trimmed().isEmpty())
        return FieldEditMessages::tr("The name is empty.");
    const int bytes = nameBytes(answers, name);
    if (bytes > answers.nameMaxBytes)
        return FieldEditMessages::tr("The name has %1 bytes of at most %2.")
            .arg(bytes)
            .arg(answers.nameMaxBytes);
    return {};
}

bool isIdentity(const QString& field)
{
    return field == QStringLiteral("id");
}

bool isName(const QString& field)
{
    return field == QStringLiteral("name");
}

/// Sets the field of `node`, which is a copy.
QString changed(const Project& project, ProcessorNode& node, const QString& field,
                const QString& text)
{
    FieldSetter setter(field, text);
    visitProcessorFields(node, setter);
    if (setter.problem.isEmpty() && isName(field))
        return nameProblem(project.answers, text);
    if (setter.problem.isEmpty() && !node.groupId.isNull() && !project.hasGroup(node.groupId))
        return FieldEditMessages::tr("There is no group of this identity.");
    return setter.problem;
}

QString changed(const Project& project, ProcessorGroupNode& group, const QString& field,
                const QString& text)
{
    FieldSetter setter(field, text);
    visitGroupFields(group, setter);
    if (setter.problem.isEmpty() && isName(field))
        return nameProblem(project.answers, text);
    return setter.problem;
}

} // namespace

int nameBytes(const HandlerAnswers& answers, const QString& name)
{
    const QTextCodec* codec = answers.nameUtf8 ? nullptr : QTextCodec::codecForName("GBK");
    return (codec ? codec->fromUnicode(name) : name.toUtf8()).size();
}

QString setField(Project& project, const QUuid& id, const QString& field, const QString& text)
{
    if (isIdentity(field))
        return FieldEditMessages::tr("The identity of a record does not change.");
    if (ProcessorNode* node = project.processor(id)) {
        ProcessorNode copy = *node;
        QString problem = changed(project, copy, field, text);
        if (problem.isEmpty())
            *node = copy;
        return problem;
    }
    for (ProcessorGroupNode& group : project.groups) {
        if (group.id != id)
            continue;
        ProcessorGroupNode copy = group;
        QString problem = changed(project, copy, field, text);
        if (problem.isEmpty())
            group = copy;
        return problem;
    }
    return FieldEditMessages::tr("The record does not exist any more.");
}

QString fieldRefusal(const Project& project, const QUuid& id, const QString& field,
                     const QString& text)
{
    if (const ProcessorNode* node = project.processor(id)) {
        ProcessorNode copy = *node;
        return changed(project, copy, field, text);
    }
    ProcessorGroupNode copy = project.group(id);
    return changed(project, copy, field, text);
}

QString setField(DeviceSet& set, const QString& field, const QString& text)
{
    if (isIdentity(field))
        return FieldEditMessages::tr("The identity of a record does not change.");
    DeviceSet copy = set;
    FieldSetter setter(field, text);
    visitDeviceSetFields(copy, setter);
    if (setter.problem.isEmpty())
        set = copy;
    return setter.problem;
}

QString setIpEntry(IpList& list, int row, const QString& address, const QString& name)
{
    quint32 value = 0;
    if (!parseDottedAddress(address.trimmed(), value))
        return FieldEditMessages::tr("An address is expected, such as 192.168.0.1.");
    switch (list.replace(row, {value, name})) {
    case IpRefusal::None:
        return {};
    case IpRefusal::Duplicate:
        return FieldEditMessages::tr("The list has this address already.");
    case IpRefusal::NameTooLong:
        return FieldEditMessages::tr("The name has more than %1 characters.")
            .arg(IpList::kMaxNameLength);
    default:
        return FieldEditMessages::tr("The entry does not exist any more.");
    }
}
