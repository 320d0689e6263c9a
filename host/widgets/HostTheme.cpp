#include "host/widgets/HostTheme.h"
const HostColors& hostColors()
{
    static const HostColors colors;
    return colors;
}
void ApplyHostTheme(QApplication&)
{
}
