// Message numbers. 1 to 23 are those of Allegro's own GUI; numbers from kFirstApplicationMessage on
// are the application's.
#pragma once

#include <cstdint>

namespace zel {

inline constexpr int MSG_START = 1;   // the dialog starts running
inline constexpr int MSG_END = 2;     // the dialog stops running
inline constexpr int MSG_DRAW = 3;    // paint now
inline constexpr int MSG_CLICK = 4;   // a mouse button went down
inline constexpr int MSG_DCLICK = 5;  // double click
inline constexpr int MSG_KEY = 6;     // the widget's shortcut key
inline constexpr int MSG_CHAR = 7;    // key for the focus widget; arg: character + scan code * 256
inline constexpr int MSG_UCHAR = 8;   // character for the focus widget; arg: character
inline constexpr int MSG_XCHAR = 9;   // key that nobody used; arg as MSG_CHAR
inline constexpr int MSG_WANTFOCUS = 10;  // may the widget have the keyboard focus?
inline constexpr int MSG_GOTFOCUS = 11;
inline constexpr int MSG_LOSTFOCUS = 12;
inline constexpr int MSG_GOTMOUSE = 13;
inline constexpr int MSG_LOSTMOUSE = 14;
inline constexpr int MSG_IDLE = 15;   // over and over while the loop runs
inline constexpr int MSG_RADIO = 16;  // arg: radio group
inline constexpr int MSG_WHEEL = 17;  // arg: wheel steps
inline constexpr int MSG_LPRESS = 18;
inline constexpr int MSG_LRELEASE = 19;
inline constexpr int MSG_MPRESS = 20;
inline constexpr int MSG_MRELEASE = 21;
inline constexpr int MSG_RPRESS = 22;
inline constexpr int MSG_RRELEASE = 23;
inline constexpr int MSG_TIMER = 24;     // arg: timer id
inline constexpr int MSG_TICK = 25;      // once per logic tick
inline constexpr int MSG_INITSKIN = 26;  // read the skin
inline constexpr int MSG_ACTIVATE = 27;  // from a widget that was pressed or chosen
inline constexpr int MSG_SCROLL =
    29;  // from a widget whose value or selection changed; arg: new one, or the step
inline constexpr int MSG_MOVE = 30;
inline constexpr int MSG_RESIZE = 31;
inline constexpr int MSG_SHAPE = 32;
inline constexpr int MSG_MOUSEMOVE = 33;  // args: x, y
inline constexpr int MSG_CLOSE = 34;
inline constexpr int MSG_WANTMOUSE = 35;
inline constexpr int MSG_WANTTAB = 36;  // may Tab move the focus to the widget?

inline constexpr int kFirstApplicationMessage = 37;

// What SendMessage answers.
inline constexpr int kMessageOk = 0;
inline constexpr int kMessageWanted = 8;  // yes to a question (wants focus, mouse, tab, close)
inline constexpr int kMessageUsed = 16;   // the key was used

// An argument of an event: a number or, between widgets that agree on it, a pointer.
using EventArg = std::intptr_t;

}  // namespace zel
