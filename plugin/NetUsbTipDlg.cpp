#include "plugin/NetUsbTipDlg.h"

#include "base/DialogSizes.h"
#include "host/common/SoftwareName.h"
#include "plugin/WrappedLabel.h"

#include <QBoxLayout>
#include <QEvent>
#include <QStringList>

#include <algorithm>

namespace {

constexpr int kWidth = DialogSizes::kLanUsbWarningWidth;
constexpr int kMargin = 16;
constexpr int kMarginAbove = 12;
constexpr int kMarginBelow = 12;
constexpr int kTextWidth = kWidth - 2 * kMargin;
constexpr int kLineSpacing = 4;
constexpr int kSpacing = 10;
constexpr int kNameWidth = 180;
constexpr std::size_t kMostProcessors = 5;

// What a host can reasonably say fits; nonsense still leaves the button on the screen.
constexpr int kMostHeaderLines = 10;
constexpr int kMostProcessorLines = 2;

} // namespace

CNetUsbTipDlg::CNetUsbTipDlg(const std::vector<LanUsbProcessorInfo>& processors, QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
    , m_processors(processors.begin(), processors.end())
{
    Init();
    setWindowTitle(custom_software_name());
    setFixedWidth(kWidth);
    SetDialogBtnRole(QDialogButtonBox::Ok, QDialogButtonBox::Ok);
}

void CNetUsbTipDlg::InitWidgets()
{
    const std::size_t count = std::min(m_processors.size(), kMostProcessors);
    for (std::size_t n = 0; n < count; ++n) {
        const LanUsbProcessorInfo& processor = m_processors[n];
        auto* line = new CWrappedLabel(kTextWidth, kMostProcessorLines, this);
        line->ensurePolished(); // the style sheet may bring another font
        const QString name = line->fontMetrics().elidedText(
            QString::fromStdString(processor.processorName), Qt::ElideRight, kNameWidth);
        line->setText(QStringLiteral("%1 (IP:%2)").arg(name, QString::fromStdString(processor.ip)));
        m_labels.emplace(static_cast<int>(n) + 1, line);
    }
    m_header = new CWrappedLabel(kTextWidth, kMostHeaderLines, this);
    m_labels.emplace(0, m_header);
    retranslate();
}

void CNetUsbTipDlg::InitLayout(QBoxLayout* body)
{
    body->setContentsMargins(kMargin, kMarginAbove, kMargin, kMarginBelow);
    body->setSpacing(kLineSpacing);
    for (const auto& [number, label] : m_labels) {
        body->addWidget(label);
        if (number == 0)
            body->addSpacing(kSpacing);
    }
    body->addSpacing(kSpacing);
}

void CNetUsbTipDlg::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        adjustSize();
    }
    CDialog::changeEvent(event);
}

void CNetUsbTipDlg::retranslate()
{
    QStringList devices;
    for (std::size_t n = 0; n < std::min(m_processors.size(), kMostProcessors); ++n)
        devices.append(QString::fromStdString(m_processors[n].deviceName));
    m_header->setSentence(
        tr("%1 does not support LAN-USB connections. The following processors are using this "
           "connection type. Please check:"),
        devices);

    // Screen readers read a dialog's description when it opens.
    QStringList texts;
    for (const auto& [number, label] : m_labels)
        texts.append(label->text());
    setAccessibleDescription(texts.join(QLatin1Char('\n')));
}
