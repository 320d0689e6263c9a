#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QPointer>
#include <QToolButton>

class FocusRing;

/// A button that shows only an image, without a frame, a text or an arrow for its menu. The icon is
/// painted in the mode QIcon::Normal, QIcon::Active under the mouse, and QIcon::Disabled while the
/// button is disabled. The focus is shown by an outline 2 pixels around the button. Space and
/// Return press the button; Down opens its menu. By key, the menu opens with its first entry
/// active. GUI thread.
///
/// The caller sets the accessible name, because the button has no text.
class HOSTWIDGETS_EXPORT CPureImageBtn : public QToolButton
{
    Q_OBJECT

public:
    explicit CPureImageBtn(QWidget* parent = nullptr);

    /// Sets the image files of the modes.
    void SetImages(const QString& normal, const QString& hover, const QString& disabled);

    QSize sizeHint() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QPointer<FocusRing> m_ring; // owned by the parent
};
