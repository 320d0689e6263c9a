#include "host/workbench/handler/CallTrace.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/Project.h"
#include "host/workbench/trace/ShortIds.h"

#include <QStringList>

namespace {

constexpr int kCharactersShown = 60;

template <typename Item>
QString counted(const QList<Item>& items, const QString& what)
{
    return QStringLiteral("%1 %2").arg(items.size()).arg(what);
}

/// Sets `text` if `value` is of the type `Type`.
template <typename Type>
bool read(const QVariant& value, QString& text)
{
    if (value.userType() != qMetaTypeId<Type>())
        return false;
    text = shortText(value.value<Type>());
    return true;
}

} // namespace

QString shortText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString shortText(int value)
{
    return QString::number(value);
}

QString shortText(quint32 code)
{
    return code == 0 ? QStringLiteral("0")
                     : QStringLiteral("0x") + QString::number(code, 16).toUpper();
}

QString shortText(const QString& text)
{
    const QString shown =
        text.size() > kCharactersShown ? text.left(kCharactersShown) + QChar(0x2026) : text;
    return QLatin1Char('"') + shown + QLatin1Char('"');
}

QString shortText(const QStringList& texts)
{
    return counted(texts, QStringLiteral("texts"));
}

QString shortText(const QUuid& id)
{
    return shortId(id);
}

QString shortText(const QList<QUuid>& ids)
{
    return shortIds(ids);
}

QString shortText(const QList<quint32>& addresses)
{
    QStringList texts;
    for (const quint32 address : addresses)
        texts.append(dottedAddress(address));
    return QLatin1Char('[') + texts.join(QStringLiteral(", ")) + QLatin1Char(']');
}

QString shortText(const ProcessorNode& processor)
{
    return processor.id.isNull() ? QStringLiteral("no processor") : shortText(processor.name);
}

QString shortText(const ProcessorGroupNode& group)
{
    return group.id.isNull() && group.name.isEmpty() ? QStringLiteral("no group")
                                                     : shortText(group.name);
}

QString shortText(const QList<ProcessorNode>& processors)
{
    return counted(processors, QStringLiteral("processors"));
}

QString shortText(const QList<ProcessorGroupNode>& groups)
{
    return counted(groups, QStringLiteral("groups"));
}

QString shortTextOf(const QVariant& value)
{
    QString text = QLatin1String(value.typeName());
    read<bool>(value, text) || read<int>(value, text) || read<quint32>(value, text)
        || read<QString>(value, text) || read<QStringList>(value, text) || read<QUuid>(value, text)
        || read<QList<QUuid>>(value, text) || read<QList<quint32>>(value, text)
        || read<ProcessorNode>(value, text) || read<ProcessorGroupNode>(value, text)
        || read<QList<ProcessorNode>>(value, text) || read<QList<ProcessorGroupNode>>(value, text);
    return text;
}

void CallTrace::calledWith(const char* name, const QVariantList& args) const
{
    QStringList texts;
    for (const QVariant& arg : args)
        texts.append(shortTextOf(arg));
    m_model.add(TraceEntry::Kind::Call, callText(name, texts));
}

QString CallTrace::callText(const char* name, const QStringList& args)
{
    return QLatin1String(name) + QLatin1Char('(') + args.join(QStringLiteral(", "))
           + QLatin1Char(')');
}
