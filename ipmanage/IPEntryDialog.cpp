#include "ipmanage/IPEntryDialog.h"

#include "base/DialogSizes.h"
#include "base/IPText.h"
#include "base/LogCategories.h"
#include "base/UserMessages.h"
#include "host/widgets/IPLineEdit.h"
#include "ipmanage/DefaultAddresses.h"
#include "ipmanage/HostIPList.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFontMetrics>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr int kFieldWidth = 172;
constexpr int kRowHeight = 24;
constexpr int kMaxNameLength = 32;

// In per cent of a font's width. Narrower text is hard to read.
constexpr int kLeastStretch = 60;

/// Narrows the font of `label` until its text fits. Wide fonts exceed the fixed width otherwise.
void condense(QLabel* label)
{
    label->setFont(QFont());
    QFont font = label->font();
    const auto isTooWide = [label] {
        return label->fontMetrics().horizontalAdvance(label->text()) > label->maximumWidth();
    };
    for (int stretch = QFont::Unstretched; isTooWide() && stretch > kLeastStretch; --stretch) {
        font.setStretch(stretch);
        label->setFont(font);
    }
}

} // namespace

IPEntryDialog::IPEntryDialog(bool ipManagementMode, int leftMargin, QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
    , m_ipManagementMode(ipManagementMode)
    , m_leftMargin(leftMargin)
{
}

void IPEntryDialog::OnAccept()
{
    const QString message = refusal();
    if (!message.isEmpty()) {
        qCInfo(lcAddresses, "%s refuses the entry: %s", metaObject()->className(),
               qPrintable(message));
        tellUser(this, message);
    } else if (save()) {
        done(Accepted);
    }
}

void IPEntryDialog::OnReject()
{
    done(Rejected);
}

void IPEntryDialog::InitWidgets()
{
    SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
    EnableDialogBtn(QDialogButtonBox::Ok, true);
    createFields();
    setFixedSize(m_rows.size() > 1 ? DialogSizes::kTwoRowAddressEntry : DialogSizes::kAddressEntry);
    retranslate();
}

void IPEntryDialog::InitLayout(QBoxLayout* body)
{
    auto* form = new QFormLayout;
    form->setContentsMargins(m_leftMargin, 0, 16, 14);
    form->setSpacing(8);
    form->setLabelAlignment(Qt::AlignRight);
    body->setContentsMargins(0, 12, 0, 0);
    body->addLayout(form);
    for (const Row& row : qAsConst(m_rows)) {
        row.label->setFixedSize(row.labelWidth, kRowHeight);
        condense(row.label);
        form->addRow(row.label, row.field);
    }
}

void IPEntryDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    CDialog::changeEvent(event);
}

void IPEntryDialog::addField(QWidget* field, int labelWidth)
{
    auto* label = new QLabel(this);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(field);
    field->setParent(this);
    field->setFixedSize(kFieldWidth, kRowHeight);
    m_rows.append({label, field, labelWidth});
}

CIPLineEdit* IPEntryDialog::addAddressField(int labelWidth)
{
    auto* field = new CIPLineEdit(this);
    addField(field, labelWidth);
    return field;
}

QLineEdit* IPEntryDialog::addNameField(int labelWidth)
{
    auto* field = new QLineEdit(this);
    field->setMaxLength(kMaxNameLength);
    addField(field, labelWidth);
    return field;
}

void IPEntryDialog::propose(const QVector<CIPLineEdit*>& fields) const
{
    Q_ASSERT(fields.size() == 1 || fields.size() == 2);
    const QStringList proposed = defaultAddresses(fields.size(), m_ipManagementMode);
    for (int i = 0; i < proposed.size(); ++i)
        fields.at(i)->setText(proposed.at(i));
}

QString IPEntryDialog::hostRefusal(const CIPLineEdit* address, IPField field,
                                   std::optional<quint32> ignored) const
{
    int code = 0;
    if (!HostIPList::rejects(addressOfText(address->text()), &code, !m_ipManagementMode)
        || static_cast<quint32>(code) == ignored)
        return {};
    return ipCheckMessage(static_cast<quint32>(code), field);
}

void IPEntryDialog::retranslate()
{
    setWindowTitle(title());
    const QStringList texts = labels();
    for (int i = 0; i < m_rows.size(); ++i) {
        const Row& row = m_rows.at(i);
        row.label->setText(texts.value(i));
        condense(row.label);
        row.field->setAccessibleName(texts.value(i));
    }
}
