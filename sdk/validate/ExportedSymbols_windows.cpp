#include "sdk/validate/ExportedSymbols.h"

#include <QDir>

#include <windows.h>

namespace {

/// Returns what lies so many bytes behind the begin of a loaded library.
template <typename Type>
const Type* at(HMODULE library, DWORD offset)
{
    return reinterpret_cast<const Type*>(reinterpret_cast<const char*>(library) + offset);
}

} // namespace

std::optional<QStringList> exportedSymbols(const QString& library, QString& problem)
{
    const std::wstring path = QDir::toNativeSeparators(library).toStdWString();
    const HMODULE loaded = LoadLibraryW(path.c_str());
    if (!loaded) {
        problem = QStringLiteral("the library cannot be loaded");
        return std::nullopt;
    }
    const auto* const dos = at<IMAGE_DOS_HEADER>(loaded, 0);
    const auto* const header = at<IMAGE_NT_HEADERS>(loaded, static_cast<DWORD>(dos->e_lfanew));
    const IMAGE_DATA_DIRECTORY& entry =
        header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    QStringList names;
    if (entry.Size > 0) {
        const auto* const table = at<IMAGE_EXPORT_DIRECTORY>(loaded, entry.VirtualAddress);
        const auto* const offsets = at<DWORD>(loaded, table->AddressOfNames);
        for (DWORD number = 0; number < table->NumberOfNames; ++number)
            names.append(QString::fromLatin1(at<char>(loaded, offsets[number])));
    }
    // Not freed: the library is for the rest of the process.
    return names;
}
