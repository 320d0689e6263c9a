#include "host/workbench/window/ChangedFileBar.h"

#include "host/widgets/HostTheme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

ChangedFileBar::ChangedFileBar(QWidget* parent)
    : QFrame(parent)
    , m_text(new QLabel(this))
    , m_reload(new QPushButton(this))
    , m_compare(new QPushButton(this))
    , m_keep(new QPushButton(this))
{
    setObjectName(QStringLiteral("changedFileBar"));
    setStyleSheet(QStringLiteral("#changedFileBar { background: %1; border-left: 4px solid %2; }")
                      .arg(hostColors().popup.name(), hostColors().accent.name()));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 8, 8);
    layout->setSpacing(8);
    layout->addWidget(m_text, 1);
    for (QPushButton* button : {m_reload, m_compare, m_keep}) {
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    hide();
}

void ChangedFileBar::tell(FileWatch::State state, const QString& fileName)
{
    m_isAgain = !isHidden() && m_state != FileWatch::State::Same;
    m_state = state;
    m_fileName = fileName;
    retranslate();
    setVisible(state != FileWatch::State::Same);
}

QString ChangedFileBar::text() const
{
    return m_text->text();
}

void ChangedFileBar::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QFrame::changeEvent(event);
}

void ChangedFileBar::retranslate()
{
    const bool isMissing = m_state == FileWatch::State::Missing;
    QString text = tr("%1 was changed by another program.");
    if (isMissing)
        text = tr("%1 was removed by another program.");
    else if (m_isAgain)
        text = tr("%1 was changed again by another program.");
    m_text->setText(text.arg(m_fileName));
    m_reload->setText(tr("Reload"));
    m_reload->setToolTip(tr("Open the file as it is now; changes made here are lost"));
    m_compare->setText(tr("Compare..."));
    m_compare->setToolTip(tr("Show in what the project and the file differ"));
    m_keep->setText(tr("Keep"));
    m_keep->setToolTip(tr("Keep the project as it is here, for the next Save"));
    m_reload->setVisible(!isMissing);
    m_compare->setVisible(!isMissing);
}
