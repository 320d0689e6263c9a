#include "processortree/view/CustomAddProcessor.h"

#include "Interface/ProjectLimits.h"
#include "base/DialogSizes.h"
#include "base/TargetSelectHandler.h"
#include "host/widgets/ComboBox.h"
#include "host/widgets/SpinBox.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>

namespace {

constexpr int kFieldWidth = 184;
constexpr int kOutputCounts[] = {
    CCustomAddProcessor::kFewestOutputs, 4, 6, 8, 10, 12, 16, 20, 26, 32, 40, 80};

bool areOutputsFixed()
{
    return askHost(&Host::GetFixedOutputCount) > 0;
}

/// How many processors the project still takes.
int freePlaces()
{
    return qMax(0, ProjectLimits::kMaxProcessors - askHost(&Host::GetAllProcessorNodes).size());
}

void setName(QLabel* label, QWidget* field, const QString& text)
{
    label->setText(text);
    field->setAccessibleName(text);
}

} // namespace

CCustomAddProcessor::CCustomAddProcessor(int presetOutputs, QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
    , m_presetOutputs(presetOutputs)
{
    Init();
}

std::pair<int, int> CCustomAddProcessor::countAndOutputs() const
{
    return {m_count->value(), m_outputs ? m_outputs->currentData().toInt() : m_presetOutputs};
}

void CCustomAddProcessor::InitWidgets()
{
    const bool fixedOutputs = areOutputsFixed();
    m_countLabel = new QLabel(this);
    m_count = new CSpinBox(this);
    m_count->setFixedWidth(kFieldWidth);
    const int places = freePlaces();
    m_count->setRange(qMin(1, places), places);
    m_count->setValue(qMin(1, places));
    setFocusPolicy(Qt::WheelFocus);
    setFixedHeight(fixedOutputs ? DialogSizes::kAdditionHeightWithoutOutputs
                                : DialogSizes::kAdditionHeight);
    if (!fixedOutputs) {
        m_outputsLabel = new QLabel(this);
        m_outputs = new CComboBox(this);
        m_outputs->setFixedWidth(kFieldWidth);
        for (const int outputs : kOutputCounts)
            m_outputs->addItem(QString::number(outputs), outputs);
        m_outputs->setCurrentIndex(m_outputs->findData(m_presetOutputs));
    }
    SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
    retranslate();
}

void CCustomAddProcessor::InitLayout(QBoxLayout* body)
{
    auto* form = new QFormLayout;
    form->setSpacing(8);
    form->setContentsMargins(0, 0, 4, 0);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFormAlignment(Qt::AlignRight | Qt::AlignTop);
    form->addRow(m_countLabel, m_count);
    if (m_outputs)
        form->addRow(m_outputsLabel, m_outputs);
    body->setContentsMargins(12, 12, 12, 0);
    body->addLayout(form);
}

void CCustomAddProcessor::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    CDialog::changeEvent(event);
}

void CCustomAddProcessor::retranslate()
{
    setWindowTitle(tr("Custom add processor"));
    setName(m_countLabel, m_count, tr("Number of processors"));
    if (m_outputs)
        setName(m_outputsLabel, m_outputs, tr("Number of outputs"));
}
