// Widgets that are sent all messages.
#pragma once

#include "tests/support/widget_fixture.h"

namespace zel {

class ToldFixture : public WidgetFixture {
 protected:
  // What a widget tells its parent of the messages that there are, twice, and its flags where they
  // have changed; then of a pointer that passes and presses. "?" is what it is made of.
  std::string Told(const std::string& name, Widget& widget) {
    for (int msg = 0; msg <= 40; ++msg) root.watched.insert(msg);
    root.onlyOfChildren = false;
    std::string seen = "\n[" + name + "]\n";
    Show(widget, {10, 10, 60, 80});
    root.Events();
    std::uint32_t before = 0;
    for (int times = 0; times < 82; ++times) {
      widget.SendMessage(times % 41, 1);
      const std::uint32_t flags = widget.GetFlags();
      const std::string events = root.Events();
      if (!events.empty() || flags != before)
        seen += events + (flags == before ? "" : " -> " + FlagNames(flags)) + '\n';
      before = flags;
    }
    Mouse(20, 30), Mouse(25, 45, 1), Mouse(25, 50, 1), Mouse(25, 50), Mouse(199, 199);
    seen += root.Events() + '\n';
    root.Remove(&widget);
    return seen;
  }
};

}  // namespace zel
