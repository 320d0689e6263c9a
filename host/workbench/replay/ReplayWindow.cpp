#include "host/workbench/replay/ReplayWindow.h"

#include "host/workbench/replay/ReplayHandler.h"

#include "Interface/TargetSelectAreaInterface.h"

#include <QDockWidget>
#include <QLabel>
#include <QPixmap>
#include <QScrollArea>

#include <utility>

namespace {

constexpr int kMargin = 16;
constexpr int kTextHeight = 120;
constexpr QSize kSmallest(640, 480);

} // namespace

ReplayWindow::ReplayWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_area(new QScrollArea(this))
    , m_text(new QLabel)
{
    setWindowTitle(tr("Workbench: replay"));
    setCentralWidget(m_area);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setWordWrap(true);
    m_text->setMargin(kMargin);
    m_text->setMinimumHeight(kTextHeight);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* dock = new QDockWidget(tr("Result"), this);
    dock->setObjectName(QStringLiteral("resultDock"));
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setWidget(m_text);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resize(kSmallest);
}

ReplayWindow::~ReplayWindow()
{
    m_keepsPicture = false;
    ReplayWindow::close();
}

void ReplayWindow::showText(const QString& text)
{
    m_text->setText(text);
}

ITargetSelectAreaInterface* ReplayWindow::open(const QSize& size,
                                               std::shared_ptr<ReplayHandler> handler)
{
    close();
    // The panel has its recorded size in a widget without a layout.
    auto* holder = new QWidget;
    holder->setMinimumSize(size);
    m_area->setWidget(holder);
    m_layer = m_library.init(holder);
    m_panel = m_layer ? m_layer->GetWidget() : nullptr;
    if (!m_panel)
        return nullptr;
    m_layer->m_controlHandler = std::move(handler);
    m_panel->resize(size);
    m_panel->show();
    return m_layer;
}

void ReplayWindow::close()
{
    QPixmap last;
    if (m_panel && m_keepsPicture)
        last = m_panel->grab();
    delete m_panel;
    m_layer = nullptr;
    if (last.isNull())
        return;
    auto* picture = new QLabel(m_area->widget());
    picture->setPixmap(last);
    picture->show();
}

ITargetSelectAreaInterface* ReplayWindow::layer() const
{
    return m_panel ? m_layer : nullptr;
}
