#pragma once

#include <QString>
#include <QStringList>

/// The host's IP list, as the dialogs ask for it and change it. Each function is one question to
/// the host, which is fetched for it and may be another one next time; without a host it has no
/// effect and the answer that leaves everything as it is. GUI thread.
namespace HostIPList {

/// The list holds at most this many entries, and the project as many processors.
constexpr int kMaxEntries = 255;

/// Whether there is a host to ask.
bool isThere();

/// "192.168.0.10(Left wing)", in the host's order.
QStringList entries();

/// Entry `row`.
QString entry(int row);

/// Number of entries, as the host counts them.
int count();

/// How many processors the project has.
int processorCount();

void refresh();
void add(const QString& ip, const QString& name);
void modify(int row, const QString& ip, const QString& name);
void remove(quint32 networkAddress);
void clear();
void save();

/// The host's codes for reading the online processors and an address file; see IPListResult.
quint32 readOnline();
quint32 importFile(const QString& path);

/// Whether the host rejects `address`, for a new processor or for the list; `code`, which may be
/// null, then says why. Without a host every address is rejected.
bool rejects(quint32 address, int* code, bool processorMode);

/// The host shows a passing notice.
void showTip(const QString& text);

} // namespace HostIPList
