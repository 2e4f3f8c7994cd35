#include "tools/skin/project.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/skin/elements.h"
#include "tools/checker/files.h"
#include "tools/checker/findings.h"
#include "tools/checker/lines.h"
#include "tools/checker/nearest.h"
#include "tools/checker/skin_check.h"
#include "tools/skin/files.h"
#include "tools/support/input_file.h"

namespace zel {
namespace {

constexpr std::size_t kLargestText = 256u << 10;
constexpr const char* kPack = "PACK";
constexpr const char* kNameKey = "name";
constexpr const char* kPackedKey = "packed";

std::string SectionOf(SkinPart part, int scale) {
  const std::string section = KindOf(part).section;
  return scale == 1 ? section : section + '@' + std::to_string(scale) + 'x';
}

bool IsProjectSection(const std::string& name) {
  const std::string upper = Upper(name);
  if (upper == kPack) return true;
  for (const SkinPart part : {kElementPart, kPointerPart})
    for (int scale = 1; scale <= kSkinScales; ++scale)
      if (upper == Upper(SectionOf(part, scale))) return true;
  return false;
}

// A word that is a whole number, of a size that makes sense.
bool IsNumberWord(const std::string& word) {
  constexpr std::size_t kLongest = 7;
  const std::size_t start = word.starts_with('-') ? 1 : 0;
  return word.size() > start && word.size() <= kLongest &&
         std::all_of(word.begin() + static_cast<std::ptrdiff_t>(start), word.end(),
                     [](char c) { return c >= '0' && c <= '9'; });
}

// "button.png 12 14"
ProjectPicture ReadPicture(const SectionFile::Entry& entry, std::size_t mostNumbers) {
  constexpr const char* kBetween = " \t,";
  ProjectPicture picture{Upper(entry.name), entry.value, {}, entry.line};
  std::vector<int> numbers;
  while (numbers.size() < mostNumbers) {
    const std::size_t end = picture.file.find_last_not_of(kBetween) + 1;
    picture.file.resize(end);
    const std::size_t before = picture.file.find_last_of(kBetween);
    if (before == std::string::npos) break;
    const std::string word = picture.file.substr(before + 1);
    if (!IsNumberWord(word)) break;
    numbers.push_back(std::atoi(word.c_str()));
    picture.file.resize(before);
  }
  picture.file.resize(picture.file.find_last_not_of(kBetween) + 1);
  picture.numbers.assign(numbers.rbegin(), numbers.rend());
  return picture;
}

class Reader {
 public:
  Reader(const std::string& directory, Complaints& complaints)
      : directory_{directory}, file_{directory + '/' + kProjectFile}, complaints_{complaints} {}

  Project Read() {
    if (const std::string why = WhyNoFile(file_); !why.empty()) {
      complaints_.Add(file_, 0, why + "; zel-skin new and unpack make one");
      return {};
    }
    const Bytes bytes = ReadBytes(file_.c_str(), kLargestText);
    if (bytes.empty()) {
      complaints_.Add(file_, 1, "is empty, larger than 256 KB or cannot be read");
      return {};
    }
    const std::string text{bytes.begin(), bytes.end()};
    if (text.find('\0') != std::string::npos) {
      complaints_.Add(file_, 1, "has zero bytes and is no text");
      return {};
    }
    content_ = SectionFile::FromUtf8(text);
    project_.description = WithoutProject(text, &project_.lines);
    if (!DescribesSkin(project_.description))
      complaints_.Add(file_, 1, "holds no description of a skin");
    if (project_.description.size() > kLongestConfigFile)
      complaints_.Add(file_, 1, "the description is larger than 128 KB");
    FindMisspelt();
    ReadPack();
    for (const SkinPart part : {kElementPart, kPointerPart}) ReadPart(part);
    return std::move(project_);
  }

 private:
  // Sections that are neither the project's nor a skin's, but nearly the former.
  void FindMisspelt() {
    std::vector<std::string> names{kPack};
    for (const SkinPart part : {kElementPart, kPointerPart})
      for (int scale = 1; scale <= kSkinScales; ++scale) names.push_back(SectionOf(part, scale));
    for (const SectionFile::Section& section : content_.Sections()) {
      if (IsProjectSection(section.Name()) || IsSkinSection(section.Name())) continue;
      if (const std::string nearest = Nearest(section.Name(), names); !nearest.empty())
        complaints_.Add(file_, section.Heads().front(),
                        "there is no section [" + Readable(section.Name()) + "]; did you mean [" +
                            nearest + "]?");
    }
  }

  void ReadPack() {
    const SectionFile::Section& pack = content_.Find(kPack);
    for (const SectionFile::Entry& entry : pack.Entries())
      if (entry.name != kNameKey && entry.name != kPackedKey)
        complaints_.Add(
            file_, entry.line,
            "[PACK] has no key " + Readable(entry.name) + "; there are name and packed");
    const std::string own = DirectoryName(directory_);
    project_.name = pack.GetText(kNameKey, ((own.empty() ? "my" : own) + ".skin").c_str());
    const SectionFile::Entry* name = pack.Find(kNameKey);
    if (name && (project_.name.find('/') != std::string::npos || project_.name == kProjectFile ||
                 project_.name.starts_with('.')))
      complaints_.Add(
          file_, name->line,
          "name: " + Readable(project_.name) + ": no name for the description, such as my.skin");
    if (const SectionFile::Entry* packed = pack.Find(kPackedKey)) {
      const bool isScale =
          packed->value.size() == 1 && packed->value[0] >= '0' && packed->value[0] <= '3';
      project_.packedFrom = isScale ? packed->value[0] - '0' : 0;
      if (!isScale)
        complaints_.Add(file_, packed->line,
                        "packed: " + Readable(packed->value) +
                            ": write 1, 2 or 3 for pictures from that size "
                            "on, or 0 for none");
    }
  }

  void ReadPart(SkinPart part) {
    for (int scale = 1; scale <= kSkinScales; ++scale) ReadList(part, scale);
    const PictureList& first = project_.List(part, 1);
    for (int scale = 2; scale <= kSkinScales; ++scale) {
      PictureList& list = project_.List(part, scale);
      if (list.isThere && !first.isThere)
        complaints_.Add(file_, list.line,
                        "[" + SectionOf(part, scale) + "] needs [" + SectionOf(part, 1) +
                            "], at the usual size");
      else if (!list.isThere && first.isThere)
        Derive(part, scale);
    }
    if (first.isThere) CheckDataFile(part, first.line);
  }

  void CheckDataFile(SkinPart part, int line) {
    const char* key = KindOf(part).fileKey;
    const SectionFile::Section& skin = content_.Find("Skin");
    const std::string data = DataFileOf(project_.description, part);
    if (data.empty())
      complaints_.Add(
          file_, line,
          std::string{key} + " of [Skin] names no datafile for [" + SectionOf(part, 1) + "]");
    else if (!StaysBelow(data) || data == kProjectFile || data == project_.name)
      complaints_.Add(file_, skin.Find(key)->line,
                      std::string{key} + ": " + Readable(data) +
                          ": no name for a datafile beside the description, such as my.dat");
  }

  void ReadList(SkinPart part, int scale) {
    const PartKind& kind = KindOf(part);
    const SectionFile::Section& section = content_.Find(SectionOf(part, scale).c_str());
    PictureList& list = project_.List(part, scale);
    if (section.Heads().empty()) return;
    list.isThere = true;
    list.line = section.Heads().front();
    std::map<std::string, int> lines;
    for (const SectionFile::Entry& entry : section.Entries()) {
      ProjectPicture picture = ReadPicture(entry, kind.numbers.size());
      const std::string shown = Readable(picture.name);
      const auto [before, isNew] = lines.emplace(picture.name, entry.line);
      if (!IsKnown(part, picture.name))
        complaints_.Add(
            file_, entry.line,
            "there is no " + Noun(part) + ' ' + shown + Hint(Nearest(picture.name, Names(part))));
      else if (!isNew)
        complaints_.Add(file_, entry.line,
                        shown + " stands in line " + std::to_string(before->second) + " already");
      else if (const std::string words = WordsBehindFile(picture, entry.value); !words.empty())
        complaints_.Add(file_, entry.line,
                        shown + ": " + Readable(words) + " behind the file; write " +
                            std::to_string(kind.numbers.size()) + " whole numbers at most");
      else if (picture.file.empty())
        complaints_.Add(file_, entry.line,
                        shown + ": names no picture; write a file behind \"=\", and its numbers");
      else
        list.pictures.push_back(std::move(picture));
    }
  }

  // What stands behind the name of a file that is there, where it is not what can be read.
  std::string WordsBehindFile(const ProjectPicture& picture, const std::string& value) const {
    constexpr const char* kBetween = " \t,";
    if (IsThere(FileIn(directory_, picture.file))) return {};
    for (std::size_t at = 0; (at = value.find_first_of(kBetween, at + 1)) != std::string::npos;)
      if (IsFile(FileIn(directory_, value.substr(0, at)).c_str()))
        return value.substr(std::min(value.find_first_not_of(kBetween, at), value.size()));
    return {};
  }

  void Derive(SkinPart part, int scale) {
    const PictureList& first = project_.List(part, 1);
    PictureList& list = project_.List(part, scale);
    list.pictures =
        Derived(first, part, scale, [this](const ProjectPicture&, const std::string& file) {
          return IsFile(FileIn(directory_, file).c_str());
        });
    list.line = first.line;
    list.isThere =
        std::any_of(list.pictures.begin(), list.pictures.end(),
                    [](const ProjectPicture& some) { return some.name != kPaletteName; });
    if (!list.isThere) return;
    for (const ProjectPicture& wanted : first.pictures)
      if (IsFile(FileIn(directory_, wanted.file).c_str()) &&
          std::none_of(list.pictures.begin(), list.pictures.end(),
                       [&](const ProjectPicture& some) { return some.name == wanted.name; }))
        complaints_.Warn(file_, wanted.line,
                         Readable(wanted.name) + ": there is no " +
                             Readable(AtScale(wanted.file, scale)) +
                             ", and it has the built-in look at that size");
  }

  static std::string Noun(SkinPart part) {
    return part == kElementPart ? "element" : "pointer shape";
  }
  static std::string Hint(const std::string& nearest) {
    return nearest.empty() ? nearest : "; did you mean " + nearest + "?";
  }
  static std::vector<std::string> Names(SkinPart part) {
    const PartKind& kind = KindOf(part);
    std::vector<std::string> names{kind.names, kind.names + kind.nameCount};
    if (part == kElementPart) names.emplace_back(kPaletteName);
    return names;
  }
  static bool IsKnown(SkinPart part, const std::string& name) {
    const std::vector<std::string> names = Names(part);
    return std::find(names.begin(), names.end(), name) != names.end();
  }

  std::string directory_, file_;
  Complaints& complaints_;
  SectionFile content_;
  Project project_;
};

std::string ListText(SkinPart part, int scale, const PictureList& list) {
  std::string text = "\n[" + SectionOf(part, scale) + "]\n";
  for (const ProjectPicture& picture : list.pictures) {
    text += picture.name + " = " + picture.file;
    for (const int number : picture.numbers) text += ' ' + std::to_string(number);
    text += '\n';
  }
  return text;
}

bool IsSame(const ProjectPicture& a, const ProjectPicture& b) {
  return a.name == b.name && a.file == b.file && a.numbers == b.numbers;
}

}  // namespace

std::string FileIn(const std::string& directory, const std::string& file) {
  return file.starts_with('/') ? file : directory + '/' + file;
}

std::string DirectoryName(const std::string& directory) {
  std::error_code ignored;
  const std::filesystem::path path = std::filesystem::absolute(directory, ignored) / ".";
  return path.lexically_normal().parent_path().filename();
}

std::string AtScale(const std::string& path, int scale) {
  if (scale == 1) return path;
  const std::size_t name = path.rfind('/') + 1;  // 0 without a directory
  const std::size_t dot = path.rfind('.');
  const std::size_t end = dot == std::string::npos || dot < name ? path.size() : dot;
  return path.substr(0, end) + '@' + std::to_string(scale) + 'x' + path.substr(end);
}

const PartKind& KindOf(SkinPart part) {
  static constexpr PartKind kKinds[kSkinPartCount] = {
      {"ELEMENTS", kElementsKey, "elements", kElementNames, kElementCount, kTileNumbers},
      {"POINTERS", kPointersKey, "pointers", kCursorNames, kCursorCount, kPointerNumbers},
  };
  return kKinds[part];
}

std::string WithoutProject(const std::string& text, std::vector<int>* lines) {
  std::vector<int> numbers;
  std::map<int, bool> heads;  // by line: whether what begins there goes
  const SectionFile content = SectionFile::FromUtf8(text);
  for (const SectionFile::Section& section : content.Sections())
    for (const int line : section.Heads()) heads[line] = IsProjectSection(section.Name());
  std::string kept;
  bool goes = false;
  int number = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    NextLine(text, position);
    if (const auto head = heads.find(++number); head != heads.end()) {
      // With the blank line that sets it off.
      if (head->second && !goes && (kept.ends_with("\n\n") || kept == "\n")) {
        kept.pop_back();
        numbers.pop_back();
      }
      goes = head->second;
    }
    if (goes) continue;
    kept.append(text, start, position - start);
    numbers.push_back(number);
  }
  if (lines) *lines = std::move(numbers);
  return kept;
}

Project ReadProject(const std::string& directory, Complaints& complaints) {
  return Reader{directory, complaints}.Read();
}

std::string ProjectText(const Project& project) {
  std::string text = project.description;
  if (!text.empty() && !text.ends_with('\n')) text += '\n';
  text += std::string{"\n["} + kPack + "]\n" + kNameKey + " = " + project.name + '\n';
  if (project.packedFrom > 0)
    text += std::string{kPackedKey} + " = " + std::to_string(project.packedFrom) + '\n';
  for (const SkinPart part : {kElementPart, kPointerPart}) {
    const PictureList& first = project.List(part, 1);
    if (!first.isThere) continue;
    text += ListText(part, 1, first);
    for (int scale = 2; scale <= kSkinScales; ++scale) {
      const PictureList& list = project.List(part, scale);
      if (!list.isThere) continue;
      const auto isDrawn = [&list](const ProjectPicture&, const std::string& file) {
        return std::any_of(list.pictures.begin(), list.pictures.end(),
                           [&](const ProjectPicture& some) { return some.file == file; });
      };
      const std::vector<ProjectPicture> derived = Derived(first, part, scale, isDrawn);
      const bool hasPictures =
          std::any_of(derived.begin(), derived.end(),
                      [](const ProjectPicture& some) { return some.name != kPaletteName; });
      if (!hasPictures || !std::equal(derived.begin(), derived.end(), list.pictures.begin(),
                                      list.pictures.end(), IsSame))
        text += ListText(part, scale, list);
    }
  }
  return text;
}

bool StaysBelow(const std::string& file) {
  const std::filesystem::path path{file};
  return !file.empty() && path.is_relative() && path.has_filename() &&
         std::none_of(path.begin(), path.end(),
                      [](const std::filesystem::path& part) { return part == ".."; });
}

std::string DataFileOf(const std::string& description, SkinPart part) {
  return SectionFile::FromUtf8(description).Find("Skin").GetText(KindOf(part).fileKey);
}

std::vector<std::string> FontsOf(const std::string& description) {
  std::set<std::string> fonts;
  const SectionFile content = SectionFile::FromUtf8(description);
  for (int i = 0; i < 8; ++i) {
    const SectionFile::Section& font = content.Find(("FONT" + std::to_string(i)).c_str());
    fonts.insert(font.GetText("file"));
    for (const std::string& fallback : ListParts(font.GetText("fallback"))) fonts.insert(fallback);
  }
  std::vector<std::string> below;
  std::copy_if(fonts.begin(), fonts.end(), std::back_inserter(below), StaysBelow);
  return below;
}

}  // namespace zel
