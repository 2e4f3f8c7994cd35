// Values of keys.
#pragma once

#include <map>
#include <string>

#include "toolkit/base/allegro.h"
#include "tools/checker/findings.h"
#include "tools/checker/menu_file.h"

namespace zel {

// Pictures by file name, each loaded once, in 32 bits.
class Pictures {
 public:
  // Null for one that cannot be read.
  BITMAP* Get(const std::string& name);

 private:
  std::map<std::string, BitmapPtr> pictures_;
};

// True for digits as C writes a number, and nothing else.
bool IsNumber(const std::string& text);
// The number that the launcher takes a text for.
int ParsedNumber(const std::string& text);
// A number for messages, with one decimal.
std::string Decimal(double number);

// True for a colour as menu files have it, of components that there are.
bool IsMenuColor(const std::string& value);

// Say what is wrong with a value that is to be a number, decimal or as C writes it, or a zoom.
// False for something. `key` is the name for messages.
bool CheckNumber(Findings& findings, const Place& place, const std::string& key,
                 const std::string& value, bool isDecimal);
bool CheckZoom(Findings& findings, const Place& place, const std::string& key,
               const std::string& value, bool mayBeAuto);
// True for quotes around a value, which is said.
bool CheckQuotes(Findings& findings, const Place& place, const std::string& value);

// Says what is wrong with a picture, and with those for larger screens beside it.
void CheckPicture(Findings& findings, Pictures& pictures, const Place& place,
                  const std::string& name);

// All that can be said of one value in a menu file by itself, files and pictures included. What was
// not meant to be part of it is taken from it, and what the launcher cuts off.
void CheckValue(Findings& findings, Pictures& pictures, const Place& place, MenuLine& line);

}  // namespace zel
