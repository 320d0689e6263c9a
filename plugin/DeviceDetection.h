#pragma once

class QWidget;

enum class DetectionScope { AllDevices, ProcessorsOnly };

/// Has the host detect devices, which it does before it returns. `button` is disabled meanwhile; a
/// disabled one starts nothing. A host in restricted mode detects all devices either way. GUI
/// thread; `button` may be gone afterwards.
void detectDevices(QWidget* button, DetectionScope scope);
