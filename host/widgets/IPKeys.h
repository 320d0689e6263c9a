#pragma once

class QKeyEvent;

/// What the keys mean that an address field gets. Those of the keypad act like the others.
namespace IPKeys {

/// Returns whether the key copies, cuts, pastes, selects all, undoes or redoes.
bool isClipboardKey(const QKeyEvent& key);

/// Returns whether the key moves the cursor or deletes.
bool isEditingKey(const QKeyEvent& key);

/// Returns whether the key writes a character.
bool isText(const QKeyEvent& key);

} // namespace IPKeys
