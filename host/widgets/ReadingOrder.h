#pragma once

class QLayout;

/// Stacks the widgets of a layout, and of the layouts in it, in the order of the layout. Assistive
/// technology reads siblings in their stacking order, which is that of their creation before. The
/// widgets must not overlap. GUI thread.
void putInReadingOrder(const QLayout& layout);
