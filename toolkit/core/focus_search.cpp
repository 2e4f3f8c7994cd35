#include "toolkit/core/focus_search.h"

#include <algorithm>
#include <cstdlib>

#include "toolkit/core/dialog.h"

namespace zel {
namespace {

// What a candidate costs that lies in the wrong direction.
constexpr int kWrongDirection = 65536;

void Collect(const Dialog& dialog, const Widget* leftOut, std::vector<Widget*>& candidates) {
  for (Widget* child : dialog.Children()) {
    if (!IfUsable(child) || child->IsWindow()) continue;
    if (const Dialog* inner = AsDialog(child))
      Collect(*inner, leftOut, candidates);
    else if (child != leftOut)
      candidates.push_back(child);
  }
}

}  // namespace

int FocusDistance(FocusMove move, const Widget& current, const Widget& candidate) {
  const int dx = candidate.x() - current.x();
  const int dy = candidate.y() - current.y();
  const auto directed = [](int along, int across) {
    return along + 2 * std::abs(across) + (along > 0 ? 0 : kWrongDirection);
  };
  const auto ordered = [](int distance) { return distance + (distance < 0 ? kWrongDirection : 0); };
  const int order =
      static_cast<int>(candidate.CreationOrder()) - static_cast<int>(current.CreationOrder());
  switch (move) {
    case FocusMove::kNext:
      return ordered(order);
    case FocusMove::kPrevious:
      return ordered(-order);
    case FocusMove::kRight:
      return directed(dx, dy);
    case FocusMove::kLeft:
      return directed(-dx, dy);
    case FocusMove::kDown:
      return directed(dy, dx);
    case FocusMove::kUp:
      break;
  }
  return directed(-dy, dx);
}

std::vector<Widget*> FocusCandidates(const Dialog& dialog, FocusMove move, const Widget* current) {
  const bool byTab = move == FocusMove::kNext || move == FocusMove::kPrevious;
  std::vector<Widget*> candidates;
  Collect(dialog, byTab ? current : nullptr, candidates);
  if (current)
    std::stable_sort(candidates.begin(), candidates.end(), [move, current](Widget* a, Widget* b) {
      return FocusDistance(move, *current, *a) < FocusDistance(move, *current, *b);
    });
  return candidates;
}

}  // namespace zel
