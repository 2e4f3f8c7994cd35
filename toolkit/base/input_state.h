// What is known of the input between its being noticed and its being told; see input.h.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <optional>

#include "toolkit/base/allegro.h"
#include "toolkit/base/input.h"
#include "toolkit/base/record_queue.h"

namespace zel {

// Who was called back before, and is called first still.
struct InputCallbacks {
  int (*character)(int, int*) = nullptr;
  void (*key)(int) = nullptr;
  void (*mouse)(int) = nullptr;
};

struct InputState {
  static constexpr std::size_t kMostWaiting = 1024;  // records

  // Made when the first records are wanted, and left as it is at the end of the program: who is
  // called back may be late.
  RecordQueue<InputRecord, kMostWaiting>* queue = nullptr;

  // Only the loop has to do with these.
  std::array<unsigned, KEY_MAX> releases{};
  std::array<bool, KEY_MAX> isDown{};    // after the records taken so far
  std::optional<InputRecord> putBack;    // comes before the queue
  std::size_t forgotten = 0;             // records to come whose keys are not told
  const InputRecord* handled = nullptr;  // null while nothing is
  std::atomic<unsigned> returns = 0;     // of the keyboard
  InputCallbacks previous;
  bool isStarted = false;
};

}  // namespace zel
