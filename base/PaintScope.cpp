#include "base/PaintScope.h"

#include <utility>

namespace {

struct Painting
{
    int scopes = 0;
    std::function<void()> onEnded;
};

Painting& painting()
{
    static Painting painting;
    return painting;
}

} // namespace

CPaintScope::CPaintScope()
{
    ++painting().scopes;
}

CPaintScope::~CPaintScope()
{
    if (--painting().scopes == 0 && painting().onEnded)
        painting().onEnded();
}

bool CPaintScope::isPainting()
{
    return painting().scopes > 0;
}

void CPaintScope::setOnEnded(std::function<void()> tell)
{
    painting().onEnded = std::move(tell);
}
