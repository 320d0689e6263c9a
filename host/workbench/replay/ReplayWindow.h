#pragma once

#include "host/workbench/replay/ReplayPlayer.h"
#include "host/workbench/session/PanelLibrary.h"

#include <QMainWindow>
#include <QPointer>

class QLabel;
class QScrollArea;

/// Shows the panel of a replay in its recorded size, and how the replay went.
class ReplayWindow final : public QMainWindow, public ReplayStage
{
    Q_OBJECT

public:
    explicit ReplayWindow(QWidget* parent = nullptr);

    /// Destroys the panel and waits until no thread is inside the handler.
    ~ReplayWindow() override;

    PanelLibrary& library() { return m_library; }

    void showText(const QString& text);

    /// Sets whether a picture of the panel stays when it is destroyed.
    void setKeepsPicture(bool keeps) { m_keepsPicture = keeps; }

    ITargetSelectAreaInterface* open(const QSize& size,
                                     std::shared_ptr<ReplayHandler> handler) override;
    void close() override;
    ITargetSelectAreaInterface* layer() const override;
    QWidget* panel() const override { return m_panel; }

private:
    QScrollArea* m_area; // Qt child
    QLabel* m_text;      // Qt child
    PanelLibrary m_library;
    std::weak_ptr<ReplayHandler> m_handler;
    ITargetSelectAreaInterface* m_layer = nullptr; // the panel's, valid while m_panel is
    QPointer<QWidget> m_panel;
    bool m_keepsPicture = false;
};
