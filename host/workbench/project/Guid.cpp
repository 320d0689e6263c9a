#include "host/workbench/project/Guid.h"

#include <algorithm>
#include <iterator>

GUID toGuid(const QUuid& id)
{
    GUID guid{};
    guid.Data1 = id.data1;
    guid.Data2 = id.data2;
    guid.Data3 = id.data3;
    std::copy(std::begin(id.data4), std::end(id.data4), std::begin(guid.Data4));
    return guid;
}

QUuid fromGuid(const GUID& guid)
{
    const auto& d = guid.Data4;
    return {guid.Data1, guid.Data2, guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]};
}
