// The whole screen of a terminal, by way of curses.
#pragma once

#include <memory>
#include <string>

namespace zel {

enum class Look { kPlain, kStrong, kTitle, kCurrent, kHint, kKeys };

class Screen {
 public:
  // Null where the terminal cannot do that, or says that it is larger than any can be.
  static std::unique_ptr<Screen> Start();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  ~Screen();  // puts the terminal back

  static int Rows();
  static int Columns();
  // The terminal has another size.
  static void TakeSize();
  // All of it is sent to the terminal with the next Show, which may show anything.
  static void Renew();
  static void Beep();

  static void Clear();
  // What is outside is cut.
  void Put(int row, int column, const std::wstring& text, Look look = Look::kPlain) const;
  // Shows what has been put since, with the cursor there.
  static void Show(int row, int column);

  // What has been typed, without waiting: a byte or a Key.
  static int Key();

 private:
  explicit Screen(void* handle);

  void* handle_;  // of curses, which names its type as Allegro names something else
  std::string leaving_;
  bool hasColors_ = false;
};

}  // namespace zel
