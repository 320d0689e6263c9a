#pragma once

class QWidget;

enum class DetectionScope { AllDevices, ProcessorsOnly };

/// Asks the host to detect devices, and returns when it has. `button` is disabled meanwhile; a
/// disabled one starts nothing. A host in restricted mode detects all devices either way. GUI
/// thread; `button` may be gone afterwards.
void detectDevices(QWidget* button, DetectionScope scope);
