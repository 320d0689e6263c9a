#pragma once

#include "host/workbench/addresses/IpList.h"

#include <QByteArray>

/// A line of an address file that contains an entry.
struct ImportedIpLine
{
    int number = 0; ///< Counts from 1.
    IpEntry entry;
};

/// A line that was left out.
struct RefusedIpLine
{
    int number = 0;
    IpRefusal reason = IpRefusal::None;
    QString text; ///< The first characters of the line.
};

/// The contents of an address file.
struct ImportedIpList
{
    static constexpr int kMaxRefusedKept = 20;

    QList<ImportedIpLine> lines;  ///< At most ProjectLimits::kMaxIpEntries, no address twice.
    QList<RefusedIpLine> refused; ///< The first kMaxRefusedKept.
    int refusedCount = 0;

    /// Counts the line, and keeps it while there are fewer than kMaxRefusedKept.
    void refuse(const RefusedIpLine& line);
};

constexpr qint64 kMaxIpFileSize = 1024LL * 1024;

/// Reads an address file: one "address,name" per line. Lines end with CR LF, LF or CR. The name is
/// the text after the first comma, unchanged; without a comma it is empty. Blank lines are skipped.
///
/// The text is UTF-8, with or without byte order mark. A file without the mark that is not valid
/// UTF-8 is decoded with the encoding of the locale, or with GB 18030 if that is UTF-8.
ImportedIpList parseIpFile(const QByteArray& bytes);
