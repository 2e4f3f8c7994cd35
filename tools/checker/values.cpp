#include "tools/checker/values.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "imageformats/load.h"
#include "launcher/language.h"
#include "launcher/menu_config.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/art.h"
#include "tools/checker/files.h"

namespace zel {
namespace {

// What the launcher keeps of a value, in bytes.
std::size_t RoomFor(const MenuKey& key) {
  return (key.kind >= MenuKey::kName ? kNameBytes : kTextBytes) - 1;
}

// The beginning that fits. In a code page each character is a byte.
std::string Kept(const MenuLine& line) {
  const std::string& value = line.entry.value;
  const std::size_t room = RoomFor(*line.key);
  if (value.size() <= room) return value;
  return IsInUnicode(LanguageOf(line.language.c_str()))
             ? CutToBytes(value.c_str(), room)
             : CutToChars(value.c_str(), static_cast<int>(room));
}

// Null for one that cannot be read, which is said.
const BITMAP* SoundPicture(Findings& findings, Pictures& pictures, const Place& place,
                           const std::string& name) {
  if (!CheckFile(findings, place, name)) return nullptr;
  const BITMAP* picture = pictures.Get(name);
  if (!picture) findings.Add(Msg::kBadPicture, place, {name});
  return picture;
}

// Of a whole path that is found on this machine.
void CheckInside(Findings& findings, const Place& place, const std::string& name) {
  namespace fs = std::filesystem;
  if ((name.front() != '/' && !name.starts_with("../")) || !IsFile(name.c_str())) return;
  std::error_code error;
  const fs::path directory = fs::current_path(error);
  const std::string inside =
      fs::absolute(name, error).lexically_normal().lexically_relative(directory);
  if (inside.empty() || inside.starts_with("../"))
    findings.Add(Msg::kNameOutside, place,
                 {name, "lies outside", "copy it there, so that it is on every disc"});
  else
    findings.Add(Msg::kNameOutside, place, {name, "is found only here, in", "write " + inside});
}

}  // namespace

BITMAP* Pictures::Get(const std::string& name) {
  const auto [found, isNew] = pictures_.try_emplace(name);
  if (isNew) found->second.reset(LoadPicture(name.c_str(), nullptr));
  return found->second.get();
}

bool IsNumber(const std::string& text) {
  char* end = nullptr;
  std::strtoll(text.c_str(), &end, 0);
  return !text.empty() && *end == '\0';
}

std::string Decimal(double number) {
  char text[16];
  std::snprintf(text, sizeof text, "%.1f", number);
  return text;
}

int ParsedNumber(const std::string& text) {
  return static_cast<int>(
      std::clamp<long long>(std::strtoll(text.c_str(), nullptr, 0), INT_MIN, INT_MAX));
}

std::string WithoutComment(const std::string& value, bool isNumber) {
  std::size_t comment = std::min(FindAllowComment(value), value.find(" # "));
  if (isNumber) comment = std::min(comment, value.find(" ;"));
  if (comment == std::string::npos || comment == 0) return value;
  return value.substr(0, value.find_last_not_of(" \t", comment - 1) + 1);
}

bool CheckNumber(Findings& findings, const Place& place, const std::string& key,
                 const std::string& value, bool isDecimal) {
  char* end = nullptr;
  const long long number = std::strtoll(value.c_str(), &end, isDecimal ? 10 : 0);
  const std::string taken = std::to_string(ParsedNumber(value));
  if (*end != '\0') {
    findings.Add(Msg::kNoNumber, place, {key, value, isDecimal ? std::to_string(number) : taken});
    return false;
  }
  if (!std::in_range<int>(number)) {
    findings.Add(Msg::kLargeNumber, place, {key, value, taken});
    return false;
  }
  const std::size_t first = value.find_first_not_of("+-");
  const bool isOctal = !isDecimal && first != std::string::npos && value[first] == '0' &&
                       first + 1 < value.size() && (value[first + 1] | 0x20) != 'x';
  if (isOctal) findings.Add(Msg::kOctal, place, {key, value, taken});
  return true;
}

bool IsMenuColor(const std::string& value) {
  const ColorText color = ReadColor(value.c_str());
  return color.length == std::ssize(value) && std::min({color.r, color.g, color.b}) >= 0 &&
         std::max({color.r, color.g, color.b}) <= 255;
}

bool CheckZoom(Findings& findings, const Place& place, const std::string& key,
               const std::string& value, bool mayBeAuto) {
  if (mayBeAuto && ParseZoom(value.c_str()) == kZoomToFit) return true;
  char* end = nullptr;
  const double number = std::strtod(value.c_str(), &end);
  if (*end == '\0' && number >= kLeastZoom && number <= kLargestZoom) return true;
  findings.Add(Msg::kNoZoom, place, {key, value, mayBeAuto ? ", or auto" : ""});
  return false;
}

void CheckPicture(Findings& findings, Pictures& pictures, const Place& place,
                  const std::string& name) {
  const BITMAP* usual = SoundPicture(findings, pictures, place, name);
  if (!usual) return;
  for (const int scale : {2, 3}) {
    const std::string scaled = ArtName(name, scale);
    const BITMAP* picture =
        IsThere(scaled) ? SoundPicture(findings, pictures, place, scaled) : nullptr;
    if (!picture) continue;
    const Size size{picture->w, picture->h}, meant{scale * usual->w, scale * usual->h};
    if (size != meant)
      findings.Add(Msg::kScaledSize, place,
                   {scaled, NameOf(size), std::to_string(scale), name, NameOf(meant)});
  }
}

bool CheckQuotes(Findings& findings, const Place& place, const std::string& value) {
  const bool isQuoted = value.size() > 1 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
  if (isQuoted) findings.Add(Msg::kQuotes, place, {value.substr(1, value.size() - 2)});
  return isQuoted;
}

void CheckValue(Findings& findings, Pictures& pictures, const Place& place, MenuLine& line) {
  const MenuKey& key = *line.key;
  SectionFile::Entry& entry = line.entry;
  const bool isRead = key.kind <= MenuKey::kZoom && key.kind != MenuKey::kText;
  std::string plain = WithoutComment(entry.value, isRead);
  // A number ends before a comment.
  if (plain != entry.value && !isRead) findings.Add(Msg::kComment, place, {plain});
  if (CheckQuotes(findings, place, plain)) plain = plain.substr(1, plain.size() - 2);
  entry.value = plain;
  if (plain.empty()) return;
  entry.value = Kept(line);
  line.isCut = entry.value.size() < plain.size();
  plain = entry.value;
  if (line.isCut) {
    const bool isName = key.kind >= MenuKey::kName;
    findings.Add(isName ? Msg::kNameLong : Msg::kTextLong, place,
                 {entry.name, std::to_string(RoomFor(key))});
    if (isName) return;
  }
  if (key.kind >= MenuKey::kFile) CheckInside(findings, place, plain);
  switch (key.kind) {
    case MenuKey::kNumber:
      CheckNumber(findings, place, entry.name, plain, false);
      return;
    case MenuKey::kColor:
      if (!IsMenuColor(plain)) findings.Add(Msg::kNoColor, place, {entry.name, plain});
      return;
    case MenuKey::kZoom:
      CheckZoom(findings, place, entry.name, plain, false);
      return;
    case MenuKey::kPicture:
      CheckPicture(findings, pictures, place, plain);
      return;
    case MenuKey::kFile:
      CheckFile(findings, place, plain);
      return;
    case MenuKey::kText:
    case MenuKey::kName:
      return;
  }
}

}  // namespace zel
