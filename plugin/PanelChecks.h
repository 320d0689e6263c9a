#pragma once

#include <QObject>

class QWidget;

/// What a host gets wrong with the panel's widget and its life cycle; see ContractCheck. GUI
/// thread, while the contract checks are on.
class CPanelChecks final : public QObject
{
    Q_OBJECT

public:
    /// Watches `panel`, which owns this object.
    explicit CPanelChecks(QWidget& panel);

    /// The host has called Initialize().
    void noteInitialized();

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Tells of a parent that TargetSelectArea_Init got for `panel`.
    static void checkParent(const QWidget& panel, const QWidget* parent);

private:
    QWidget& m_panel;
    QWidget* m_parent = nullptr; // the last one, for comparison only
    bool m_wasShown = false;
};
