#include "host/widgets/MessageBox.h"
#include <QBoxLayout>
#include <QLabel>
CMessageBox::CMessageBox(QWidget* parent, Kind kind, const QString& text, const QString& caption,
                         int width)
    : CDialog(parent, caption, QString(), CloseTitleButton)
    , m_kind(kind)
    , m_text(text)
{
    Init();
    setFixedWidth(width);
}
int CMessageBox::ask(QWidget* parent, Kind kind, const QString& text, const QString& caption,
                     QDialogButtonBox::StandardButtons buttons,
                     QDialogButtonBox::StandardButton defaultButton, int width)
{
    CMessageBox box(parent, kind, text, caption, width);
    box.SetDialogBtnRole(buttons, defaultButton);
    box.exec();
    return box.m_answer;
}
int CMessageBox::information(QWidget* parent, const QString& text, const QString& caption,
                             QDialogButtonBox::StandardButtons buttons,
                             QDialogButtonBox::StandardButton defaultButton, int width)
{
    ask(parent, Kind::Information, text, caption, buttons, defaultButton, width);
    return Ok;
}
int CMessageBox::question(QWidget* parent, const QString& text, const QString& caption,
                          QDialogButtonBox::StandardButtons buttons,
                          QDialogButtonBox::StandardButton defaultButton, int width)
{
    return ask(parent, Kind::Question, text, caption, buttons, defaultButton, width);
}
void CMessageBox::OnAccept()
{
    m_answer = Yes;
    done(1);
}
void CMessageBox::OnReject()
{
    done(0);
}
void CMessageBox::InitWidgets()
{
    m_label = new QLabel(m_text, this);
    m_label->setWordWrap(true);
}
void CMessageBox::InitLayout(QBoxLayout* body)
{
    body->addWidget(m_label);
}
