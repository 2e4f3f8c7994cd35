// A bounded queue that anybody may put into without waiting.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace zel {

// Records go in from any thread, and from signal handlers, and come out in the order in which they
// went in, in one thread.
//
// Each place has a turn: the number of the record that may be put there, or one more once it lies
// there. Whoever puts claims a place by moving `end_` on, writes, and then gives the turn away with
// release, so that whoever takes, having read it with acquire, sees the whole record, and the other
// way round. A record that is still being written holds up those after it, not the other writers.
template <class Record, std::size_t kCapacity>
class RecordQueue {
  static_assert((kCapacity & (kCapacity - 1)) == 0, "numbers wrap around");

 public:
  RecordQueue() {
    for (std::size_t i = 0; i < kCapacity; ++i) places_[i].turn.store(i, std::memory_order_relaxed);
  }

  // False, and nothing happens, when the queue is full.
  bool Put(const Record& record) {
    std::size_t number = end_.load(std::memory_order_relaxed);
    for (;;) {
      Place& place = PlaceOf(number);
      const std::size_t turn = place.turn.load(std::memory_order_acquire);
      if (turn == number) {
        if (!end_.compare_exchange_weak(number, number + 1, std::memory_order_relaxed)) continue;
        place.record = record;
        place.turn.store(number + 1, std::memory_order_release);
        return true;
      }
      const std::size_t last = number;
      number = end_.load(std::memory_order_relaxed);
      if (number == last) return false;  // what lies there has not been taken yet
    }
  }

  // For the thread that takes. False when there is nothing.
  bool Take(Record& record) {
    if (IsEmpty()) return false;
    Place& place = PlaceOf(begin_);
    record = place.record;
    place.turn.store(begin_ + kCapacity, std::memory_order_release);
    ++begin_;
    return true;
  }
  bool IsEmpty() const {
    return places_[begin_ % kCapacity].turn.load(std::memory_order_acquire) != begin_ + 1;
  }
  // Records that are in it, or being put in.
  std::size_t Count() const { return end_.load(std::memory_order_relaxed) - begin_; }

 private:
  struct Place {
    std::atomic<std::size_t> turn;
    Record record;
  };

  Place& PlaceOf(std::size_t number) { return places_[number % kCapacity]; }

  std::array<Place, kCapacity> places_;
  std::atomic<std::size_t> end_ = 0;
  std::size_t begin_ = 0;
};

}  // namespace zel
