#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// While one lives, the application speaks Chinese. The panel's texts are there once there was a
/// panel.
class Chinese final
{
public:
    Chinese()
    {
        m_panelLoaded = m_panel.load(
            QStringLiteral(":/TargetSelectArea/translations/TargetSelectArea_zh_CN.qm"));
        m_widgetsLoaded =
            m_widgets.load(QStringLiteral(":/HostWidgets/translations/HostWidgets_zh_CN.qm"));
        QCoreApplication::installTranslator(&m_panel);
        QCoreApplication::installTranslator(&m_widgets);
    }

    bool isLoaded() const { return m_panelLoaded && m_widgetsLoaded; }

private:
    QTranslator m_panel;
    QTranslator m_widgets;
    bool m_panelLoaded = false;
    bool m_widgetsLoaded = false;
};
