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
/// 128-bit identifier with the layout of the Windows type of the same name.
struct GUID
{
    quint32 Data1;
    quint16 Data2;
    quint16 Data3;
    quint8 Data4[8];
};

inline bool operator==(const GUID& left, const GUID& right)
{
    return std::memcmp(&left, &right, sizeof(GUID)) == 0;
}

inline bool operator!=(const GUID& left, const GUID& right)
{
    return !(left == right);
}
#endif

/// True for the all-zero identifier, which stands for "none".
inline bool IsNullGuid(const GUID& guid)
{
    constexpr GUID none{};
    return std::memcmp(&guid, &none, sizeof(GUID)) == 0;
}

/// One device set. The panel reads nothing but `id`; it shows the text that the handler returns for
/// the record and hands the whole record back. Copied bytewise, so it must stay trivially copyable.
struct SDeviceSetInfo
{
    GUID id;
    quint32 hostAttribute2; ///< The host's own; carried unchanged.
    quint32 hostAttribute3; ///< The host's own; carried unchanged.
};
static_assert(std::is_trivially_copyable_v<SDeviceSetInfo>);

/// The host's project processor record, second value of the "processor changed" event's argument.
/// The panel takes it and leaves it alone.
struct SPrjProcessor
{
    QUuid id;
    QString name;
};

Q_DECLARE_METATYPE(GUID)
Q_DECLARE_METATYPE(SDeviceSetInfo)
