// The toolkit's result value.
#pragma once

namespace zel {

enum ErrorCode : int {
  kNoError = 0,
  kAllegroError = 1,
  kKeyboardError = 2,
  kMouseError = 3,
  kTimerError = 4,
  kGraphicsError = 5,
  kSoundError = 6,  // not a failure: the program runs on without sound
  kMemoryError = 7,
  kVideoMemoryError = 8,
  kTripleBufferError = 9,
  kSkinFileError = 10,
  kSkinDataError = 11,
  kFileNotFoundError = 12,
  kLoadError = 13,
  kFontError = 14,
  kIndexError = 15,
  kUnknownError = 16,
};

// One code and what it means. Two errors are equal when their codes are.
class Error {
 public:
  constexpr Error(int errorCode = kNoError) : code{errorCode} {}
  constexpr Error(const Error&) = default;
  constexpr Error& operator=(const Error&) = default;

  constexpr virtual ~Error() = default;
  // The English message, ended by a line feed; that of code 16 for a code outside 0..16.
  virtual const char* GetDescription() const;
  // True unless the code is 0 or 6 (sound).
  virtual bool IsError() const;
  virtual bool operator==(const Error& other) const;
  virtual bool operator!=(const Error& other) const;

  // Switches to text mode, shows the description, leaves Allegro and ends the process with
  // status 1.
  [[noreturn]] void Report() const;

  int code;
};

}  // namespace zel
