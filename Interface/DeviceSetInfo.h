#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QUuid>
#include <QtGlobal>

#include <cstring>
#include <type_traits>

#ifdef Q_OS_WIN
#include <guiddef.h>
#else
/// A 128-bit identifier with the layout of the Windows type of the same name.
struct GUID
{
    /// A part of the identifier.
    /// @{
    quint32 Data1;
    quint16 Data2;
    quint16 Data3;
    quint8 Data4[8];
    /// @}
};

/// Returns whether all bytes are the same.
inline bool operator==(const GUID& left, const GUID& right)
{
    return std::memcmp(&left, &right, sizeof(GUID)) == 0;
}

/// Returns whether some bytes differ.
inline bool operator!=(const GUID& left, const GUID& right)
{
    return !(left == right);
}
#endif

/// Returns whether all bytes are zero, which stands for "none".
inline bool IsNullGuid(const GUID& guid)
{
    constexpr GUID none{};
    return std::memcmp(&guid, &none, sizeof(GUID)) == 0;
}

/// A device set. The panel reads only `id`. It shows the handler's text for the record and passes
/// the whole record back. Trivially copyable, because it is copied bytewise.
struct SDeviceSetInfo
{
    GUID id;                ///< Identity of the set.
    quint32 hostAttribute2; ///< Host data, passed on unchanged.
    quint32 hostAttribute3; ///< Host data, passed on unchanged.
};
static_assert(std::is_trivially_copyable_v<SDeviceSetInfo>);

/// A processor of the host's project, second value of the argument of the "processor changed"
/// event. The panel does not use it.
struct SPrjProcessor
{
    QUuid id;     ///< Identity of the processor.
    QString name; ///< Its display name.
};

Q_DECLARE_METATYPE(GUID)
Q_DECLARE_METATYPE(SDeviceSetInfo)
