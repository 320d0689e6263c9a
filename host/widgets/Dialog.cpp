#include "host/widgets/Dialog.h"
#include <QPushButton>
#include <QVBoxLayout>
CDialog::CDialog(QWidget* parent, const QString& title, const QString&, int) : QDialog(parent), m_titleBar(nullptr), m_body(new QVBoxLayout(this)) { setWindowTitle(title); }
CDialog::~CDialog() = default;
void CDialog::Init() { InitWidgets(); InitLayout(m_body); InitConnections(); }
void CDialog::SetDialogBtnRole(QDialogButtonBox::StandardButtons buttons, QDialogButtonBox::StandardButton)
{
    m_buttonBox = new QDialogButtonBox(buttons, this);
    layout()->addWidget(m_buttonBox);
    connect(m_buttonBox, &QDialogButtonBox::accepted, this, [this] { OnAccept(); });
    connect(m_buttonBox, &QDialogButtonBox::rejected, this, [this] { OnReject(); });
}
void CDialog::EnableDialogBtn(QDialogButtonBox::StandardButton button, bool enabled) { if (m_buttonBox && m_buttonBox->button(button)) m_buttonBox->button(button)->setEnabled(enabled); }
void CDialog::reject() { OnReject(); }
void CDialog::OnAccept() { accept(); }
void CDialog::OnReject() { QDialog::reject(); }
void CDialog::InitWidgets() {}
void CDialog::InitLayout(QBoxLayout*) {}
void CDialog::InitConnections() {}
void CDialog::changeEvent(QEvent* event) { QDialog::changeEvent(event); }
void CDialog::paintEvent(QPaintEvent* event) { QDialog::paintEvent(event); }
void CDialog::resizeEvent(QResizeEvent* event) { QDialog::resizeEvent(event); }
void CDialog::showEvent(QShowEvent* event) { QDialog::showEvent(event); }
