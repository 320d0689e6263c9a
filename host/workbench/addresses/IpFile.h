#pragma once

#include "host/workbench/addresses/IpList.h"

#include <QByteArray>

/// A line of an address file that holds an entry.
struct ImportedIpLine
{
    int number = 0; ///< From 1.
    IpEntry entry;
};

/// A line that does not.
struct RefusedIpLine
{
    int number = 0;
    IpRefusal reason = IpRefusal::None;
    QString text; ///< Its beginning.
};

/// What an address file holds.
struct ImportedIpList
{
    static constexpr int kMaxRefusedKept = 20;

    QList<ImportedIpLine> lines;  ///< At most IpList::kMaxEntries, no address twice.
    QList<RefusedIpLine> refused; ///< The first kMaxRefusedKept.
    int refusedCount = 0;

    /// Counts the line, and keeps it if there is room.
    void refuse(const RefusedIpLine& line);
};

constexpr qint64 kMaxIpFileSize = 1024LL * 1024;

/// Reads an address file: one "address,name" a line, ended by CR LF, LF or CR. The name is what
/// follows the first comma, unchanged; without a comma there is none. Blank lines are passed over.
///
/// The text is UTF-8, with or without byte order mark. Without one, a file that is not valid UTF-8
/// is taken to be in the encoding of the locale, or, where that is UTF-8, in GB 18030.
ImportedIpList parseIpFile(const QByteArray& bytes);
