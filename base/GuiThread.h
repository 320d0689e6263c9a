#pragma once

/// Returns whether the calling thread is the application's; false without an application.
bool isGuiThread();
