#pragma once

/// The ways of adding processors that menus offer.
enum class AddKind { One, Two, Custom };

/// The ways of adding processors that a menu offers at the moment. GUI thread; asks the host.
struct OfferedAdditions
{
    bool one = false; ///< Visible; so are the next two.
    bool two = false;
    bool custom = false;
    bool enabled = false; ///< All three.

    bool isVisible(AddKind kind) const;
    bool isAnyVisible() const { return one || two || custom; }
};

OfferedAdditions offeredAdditions();
