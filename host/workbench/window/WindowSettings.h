#pragma once

class MainWindow;

/// What the window keeps between runs with a user: language, place and arrangement, and the filter
/// of the log.
namespace WindowSettings {

/// Restores what save() kept, if anything. A window that no screen shows any more is moved to one.
/// Call it after the panel's library is loaded, which has translations of its own.
void restore(MainWindow& window);

void save(const MainWindow& window);

} // namespace WindowSettings
