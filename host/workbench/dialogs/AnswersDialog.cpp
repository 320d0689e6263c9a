#include "host/workbench/dialogs/AnswersDialog.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/project/RecordFields.h"
#include "host/workbench/store/ProjectStore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>

#include <limits>

namespace {

constexpr int kRowsOfAColumn = 16;

} // namespace

/// Creates a field for each answer.
class AnswersDialog::Builder final
{
public:
    explicit Builder(AnswersDialog& dialog)
        : m_dialog(dialog)
    {
    }

    void operator()(const char* name, bool value)
    {
        auto* box = new QCheckBox(&m_dialog);
        box->setChecked(value);
        add(name, box);
    }

    void operator()(const char* name, qint32 value)
    {
        auto* box = new QSpinBox(&m_dialog);
        const auto range = ProjectRanges::ofAnswer(name);
        box->setRange(range.least, range.most);
        box->setValue(value);
        add(name, box);
    }

    void operator()(const char* name, quint32 value)
    {
        add(name, new QLineEdit(QStringLiteral("0x") + QString::number(value, 16), &m_dialog));
    }

    void operator()(const char* name, HostReply value)
    {
        auto* box = new QComboBox(&m_dialog);
        for (const HostReply reply : allHostReplies())
            box->addItem(hostReplyName(reply), static_cast<int>(reply));
        box->setCurrentIndex(box->findData(static_cast<int>(value)));
        box->ensurePolished();
        box->setMinimumWidth(box->sizeHint().width());
        add(name, box);
    }

    void visitAddress(const char* name, const QList<quint32>& value)
    {
        add(name, new QLineEdit(addressesText(value), &m_dialog));
    }

private:
    void add(const char* name, QWidget* field)
    {
        if (m_dialog.form()->rowCount() == kRowsOfAColumn)
            m_dialog.startColumn();
        m_dialog.addField(QLatin1String(name), field);
        m_dialog.m_fields.insert(QLatin1String(name), field);
    }

    AnswersDialog& m_dialog;
};

/// Reads the answers from the fields.
class AnswersDialog::Collector final
{
public:
    explicit Collector(const AnswersDialog& dialog)
        : m_dialog(dialog)
    {
    }

    void operator()(const char* name, bool& value) { value = field<QCheckBox>(name)->isChecked(); }
    void operator()(const char* name, qint32& value) { value = field<QSpinBox>(name)->value(); }

    void operator()(const char* name, HostReply& value)
    {
        value = static_cast<HostReply>(field<QComboBox>(name)->currentData().toInt());
    }

    void operator()(const char* name, quint32& value)
    {
        bool isNumber = false;
        value = field<QLineEdit>(name)->text().toUInt(&isNumber, 0);
        if (!isNumber)
            problem = AnswersDialog::tr("%1 has to be a number such as 0 or 0xe0832001.")
                          .arg(QLatin1String(name));
    }

    void visitAddress(const char* name, QList<quint32>& value)
    {
        const auto addresses = addressesOfText(field<QLineEdit>(name)->text());
        if (addresses)
            value = *addresses;
        else
            problem = AnswersDialog::tr("%1 has to be addresses parted by commas.")
                          .arg(QLatin1String(name));
    }

    QString problem;

private:
    template <typename Field>
    Field* field(const char* name) const
    {
        return qobject_cast<Field*>(m_dialog.m_fields.value(QLatin1String(name)));
    }

    const AnswersDialog& m_dialog;
};

AnswersDialog::AnswersDialog(ProjectStore& store, QWidget* parent)
    : FormDialog(tr("Handler answers"), parent)
    , m_store(store)
{
    HandlerAnswers answers = store.snapshot().answers;
    Builder builder(*this);
    visitAnswerFields(answers, builder);
}

QString AnswersDialog::complete()
{
    HandlerAnswers answers = m_store.snapshot().answers;
    Collector collector(*this);
    visitAnswerFields(answers, collector);
    if (collector.problem.isEmpty())
        m_store.setAnswers(answers);
    return collector.problem;
}
