#include "host/workbench/dialogs/RaiseEventDialog.h"

#include "host/workbench/events/EventNumber.h"
#include "host/workbench/store/ProjectDiff.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include <optional>
#include <utility>

namespace {

constexpr int kLastEvent = 255;

using EventNumber::ArgumentType;

/// Returns the identities of a text, separated by commas or spaces, unless one is invalid.
std::optional<QList<QUuid>> identities(const QString& text)
{
    QList<QUuid> ids;
    QString spaced = text;
    spaced.replace(QLatin1Char(','), QLatin1Char(' '));
    const QStringList parts = spaced.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        const QUuid id = QUuid::fromString(part);
        if (id.isNull() && part != QUuid().toString(QUuid::WithoutBraces))
            return std::nullopt;
        ids.append(id);
    }
    return ids;
}

QString idText(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces);
}

} // namespace

RaiseEventDialog::RaiseEventDialog(Project project, const QList<QUuid>& selected, QWidget* parent)
    : FormDialog(tr("Raise event"), parent)
    , m_project(std::move(project))
    , m_selected(selected)
    , m_number(new QSpinBox(this))
    , m_name(new QLabel(this))
    , m_type(new QComboBox(this))
    , m_value(new QLineEdit(this))
{
    m_number->setRange(0, kLastEvent);
    m_number->setValue(EventNumber::ProcessorChanged);
    m_type->addItems({tr("none"), tr("whole number"), tr("identity"), tr("list of identities"),
                      tr("device sets of the project"), tr("identity and record")});
    addField(tr("&Number"), m_number);
    addField(tr("Name"), m_name);
    addField(tr("Argument &type"), m_type);
    addField(tr("&Argument"), m_value);
    buttons()->button(QDialogButtonBox::Ok)->setText(tr("&Raise"));
    connect(m_number, qOverload<int>(&QSpinBox::valueChanged), this,
            &RaiseEventDialog::followNumber);
    connect(m_type, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &RaiseEventDialog::followType);
    followNumber();
    followType();
    m_number->setFocus();
    m_number->selectAll();
}

QString RaiseEventDialog::complete()
{
    const auto number = static_cast<quint32>(m_number->value());
    const auto type = static_cast<ArgumentType>(m_type->currentIndex());
    const auto ids = identities(m_value->text());
    const bool needsIds = type == ArgumentType::Id || type == ArgumentType::Ids
                          || type == ArgumentType::ChangedProcessor;
    if (needsIds && (!ids || (type != ArgumentType::Ids && ids->size() != 1)))
        return tr("The argument has to be an identity such as %1; a list takes several, parted by "
                  "commas.")
            .arg(QLatin1String("5b2d1f0c-0000-4000-8000-000000000001"));

    HostEvent::Argument argument;
    if (type == ArgumentType::Number) {
        bool isNumber = false;
        argument = m_value->text().toInt(&isNumber);
        if (!isNumber)
            return tr("The argument has to be a whole number.");
    } else if (type == ArgumentType::Id) {
        argument = ids->first();
    } else if (type == ArgumentType::Ids) {
        argument = *ids;
    } else if (type == ArgumentType::DeviceSets) {
        argument = deviceSetsEvent(m_project).argument();
    } else if (type == ArgumentType::ChangedProcessor) {
        const ProcessorNode* node = qAsConst(m_project).processor(ids->first());
        argument = HostEvent::ChangedProcessor(
            ids->first(), SPrjProcessor{ids->first(), node ? node->name : QString()});
    }
    emit chosen(HostEvent(number, argument));
    return {};
}

void RaiseEventDialog::followNumber()
{
    const auto number = static_cast<quint32>(m_number->value());
    m_name->setText(EventNumber::name(number));
    m_type->setCurrentIndex(static_cast<int>(EventNumber::argumentType(number)));
}

/// Proposes an argument of the chosen type.
void RaiseEventDialog::followType()
{
    QStringList texts;
    for (const QUuid& id : qAsConst(m_selected))
        texts.append(idText(id));
    const auto type = static_cast<ArgumentType>(m_type->currentIndex());
    m_value->setEnabled(type != ArgumentType::None && type != ArgumentType::DeviceSets);
    if (type == ArgumentType::Number)
        m_value->setText(QStringLiteral("0"));
    else if (type == ArgumentType::Ids)
        m_value->setText(texts.join(QStringLiteral(", ")));
    else if (type == ArgumentType::Id || type == ArgumentType::ChangedProcessor)
        m_value->setText(texts.value(0));
    else
        m_value->clear();
    m_value->setCursorPosition(0);
}
