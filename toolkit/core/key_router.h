// Who gets a key.
#pragma once

namespace zel {

class Dialog;
class Widget;

// Stands in a key code, whose low byte has no room for it, for a character from 256 on.
inline constexpr int kWideCharacter = 94;

// Offers a key, in a dialog, to the child with the focus (MsgChar, then MsgUChar; a dialog
// routes it among its own children before, and gets what they leave), to the child with that
// shortcut (MsgKey), to every child (MsgXChar), and with Enter, line feed or Space to the focus
// again (MsgKey), until somebody uses it. A root or a window takes what is left: Escape closes it,
// Tab and the arrows move the focus.
class KeyRouter {
 public:
  explicit KeyRouter(Dialog& dialog) : dialog_{dialog} {}

  // True when the key was used.
  bool Route(int character, int scancode);

 private:
  bool OfferToFocus(int code, int character, int scancode);
  bool OfferShortcut(int character, int scancode);
  bool OfferToChildren(int code);
  bool TakeForDialog(int character, int scancode);

  Dialog& dialog_;
};

}  // namespace zel
