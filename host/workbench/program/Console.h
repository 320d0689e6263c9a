#pragma once

/// Lets a program that is started from a console of Windows write to it. Programs with windows have
/// no console there, and an output that is redirected stays as it is. Does nothing elsewhere.
void attachToConsole();
