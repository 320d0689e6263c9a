#pragma once

#include <QString>
#include <QStringList>

/// Access to the host's IP list. Each function calls the host once and fetches the handler for that
/// call, because the host may replace it. Without a handler, functions do nothing and return an
/// empty value, 0, or the value stated below. GUI thread.
namespace HostIPList {

/// Returns whether the host has set a handler.
bool isThere();

/// Returns the entries in the host's order, each as "192.168.0.10(Left wing)".
QStringList entries();

/// Returns entry `row`.
QString entry(int row);

/// Returns the number of entries that the host reports.
int count();

/// Returns the number of processors in the project.
int processorCount();

void refresh();
void add(const QString& ip, const QString& name);
void modify(int row, const QString& ip, const QString& name);
void remove(quint32 networkAddress);
void clear();
void save();

/// Read the addresses of the online processors, or an address file, into the list. Return 0 or an
/// IPListResult.
quint32 readOnline();
quint32 importFile(const QString& path);

/// Returns whether the host rejects `address` for a new processor or for the list. The reason is
/// stored in `code` unless it is null. Without a handler every address is rejected.
bool rejects(quint32 address, int* code, bool processorMode);

/// Shows a passing notice in the host.
void showTip(const QString& text);

} // namespace HostIPList
