#pragma once

#include <QObject>

class QMenu;

/// While one lives, a menu opens as menus do by key: with its first entry that can be chosen
/// active. GUI thread.
class MenuByKey final : public QObject
{
    Q_OBJECT

public:
    /// `menu` may be null, and may be destroyed meanwhile.
    explicit MenuByKey(QMenu* menu);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
