#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QToolButton>

/// A button that is an image and nothing else: no frame, no text, no arrow for a menu. Its icon is
/// shown in mode QIcon::Normal, under the mouse in QIcon::Active, and when the button is disabled
/// in QIcon::Disabled. What has the keyboard is outlined. Space and Return press it; Down opens its
/// menu. GUI thread.
///
/// The accessible name is the caller's to give, as there is no text to take it from.
class HOSTWIDGETS_EXPORT CPureImageBtn : public QToolButton
{
    Q_OBJECT

public:
    explicit CPureImageBtn(QWidget* parent = nullptr);

    /// The image files of the modes.
    void SetImages(const QString& normal, const QString& hover, const QString& disabled);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
