#include "tools/skin/pack.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

#include "toolkit/base/bytes.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/skin/elements.h"
#include "tools/checker/files.h"
#include "tools/checker/findings.h"
#include "tools/checker/skin_check.h"
#include "tools/skin/datafile_writer.h"
#include "tools/skin/files.h"
#include "tools/skin/pictures.h"
#include "tools/skin/project.h"
#include "tools/support/input_file.h"

namespace zel {
namespace {

constexpr int kLargestSide = 32767;  // a datafile has 16 bits for it
// Behind the name of a file that another one takes the place of.
constexpr const char* kReplaced = ".zel-skin-old";

class Packer {
 public:
  Packer(const std::string& directory, Complaints& complaints)
      : directory_{directory},
        file_{directory + '/' + kProjectFile},
        complaints_{complaints},
        project_{ReadProject(directory, complaints)} {
    std::copy(std::begin(default_palette), std::end(default_palette), palette_.colors);
  }

  // What the pictures lack is drawn by the toolkit.
  void WarnOfMissing() {
    const PictureList& list = project_.List(kElementPart, 1);
    const auto count =
        std::count_if(list.pictures.begin(), list.pictures.end(),
                      [](const ProjectPicture& picture) { return picture.name != kPaletteName; });
    const SectionFile content = SectionFile::FromUtf8(project_.description);
    if (list.isThere && count < kElementCount && !content.Find("COLORS").Find("builtin"))
      complaints_.Warn(file_, list.line,
                       std::to_string(kElementCount - count) +
                           " elements are missing and have the built-in look's own colours; with "
                           "builtin = 1 in [COLORS] they have those of the skin");
  }

  // What is to be written, by name; an empty file is to be removed.
  std::vector<std::pair<std::string, Bytes>> Files() {
    FindPalette();
    std::vector<std::pair<std::string, Bytes>> files;
    for (const SkinPart part : {kElementPart, kPointerPart}) {
      if (!project_.List(part, 1).isThere) continue;
      const std::string data = DataFileOf(project_.description, part);
      for (int scale = 1; scale <= kSkinScales; ++scale)
        files.emplace_back(AtScale(data, scale), MakeDatafile(part, scale));
    }
    const std::string& text = project_.description;
    files.emplace_back(project_.name, Bytes{text.begin(), text.end()});
    CheckNames(files);
    return files;
  }

  // A text about files that were copied as one about those that they were copied from.
  std::string AboutProject(std::string text, const std::string& target) const {
    const std::string copies = target + '/', own = directory_ + '/';
    for (const std::string& font : Fonts()) {
      // Of a directory that is missing only that is said.
      const std::string first = font.substr(0, font.find('/'));
      if (text.find(copies + first) == std::string::npos) continue;
      for (std::size_t at = 0; (at = text.find(copies, at)) != std::string::npos; at += own.size())
        text.replace(at, copies.size(), own);
    }
    return text;
  }

  std::vector<std::string> Fonts() const { return FontsOf(project_.description); }
  // The line of the project's text that is that line of the description.
  Place InProject(int line) const {
    const auto index = static_cast<std::size_t>(line) - 1;
    return {file_, index < project_.lines.size() ? project_.lines[index] : 1};
  }
  const std::string& Name() const { return project_.name; }

 private:
  std::string PathOf(const ProjectPicture& picture) const {
    return FileIn(directory_, picture.file);
  }

  // What is wrong at one scale is not said of those that follow from it.
  bool IsFirstScale(const ProjectPicture& picture) {
    return scales_.emplace(picture.line, scale_).first->second == scale_;
  }
  void Complain(const ProjectPicture& picture, const std::string& text) {
    if (IsFirstScale(picture)) complaints_.Add(file_, picture.line, picture.name + ": " + text);
  }
  void Warn(const ProjectPicture& picture, const std::string& text) {
    if (IsFirstScale(picture)) complaints_.Warn(file_, picture.line, picture.name + ": " + text);
  }

  // Why a picture for a larger screen is none of the picture that it belongs to; empty where it is.
  std::string WhyNotScaled(const ProjectPicture& picture, Size size) {
    if (scale_ == 1) sizes_.emplace(picture.name, size);
    const auto first = sizes_.find(picture.name);
    if (first == sizes_.end()) return {};
    const Size scaled{first->second.w * scale_, first->second.h * scale_};
    if (size == scaled) return {};
    return Readable(picture.file) + " is " + NameOf(size) + ", and " + std::to_string(scale_) +
           " times " + NameOf(first->second) + " is " + NameOf(scaled);
  }

  // Pictures of 8 bits in this palette stay what they are.
  void FindPalette() {
    for (const ProjectPicture& picture : project_.List(kElementPart, 1).pictures)
      if (picture.name == kPaletteName) LoadPalette(PathOf(picture), &palette_);
  }

  // Nothing that the project is made of may be written over.
  void CheckNames(const std::vector<std::pair<std::string, Bytes>>& files) {
    std::set<std::string> names{kProjectFile};
    for (const auto& lists : project_.lists)
      for (const PictureList& list : lists)
        for (const ProjectPicture& picture : list.pictures) names.insert(picture.file);
    for (const std::string& font : Fonts()) names.insert(font);
    for (const auto& [name, bytes] : files)
      if (!names.insert(std::filesystem::path{name}.lexically_normal()).second)
        complaints_.Add(file_, 0, Readable(name) + " is to be written, and is something else");
  }

  Bytes MakeDatafile(SkinPart part, int scale) {
    const PictureList& list = project_.List(part, scale);
    if (!list.isThere) return {};
    scale_ = scale;
    DatafileWriter data{project_.packedFrom > 0 && scale >= project_.packedFrom};
    for (const ProjectPicture& picture : list.pictures) {
      AddTo(data, part, picture);
      if (data.Size() <= Datafile::kLargestFile) continue;
      Complain(picture, "with this picture the datafile is larger than " +
                            std::to_string(Datafile::kLargestFile >> 20) + " MB");
      return {};
    }
    return data.Finish();
  }

  std::string NoFile(const std::string& path, const std::string& shown) const {
    const std::string nearest = NearestFile(path), own = directory_ + '/';
    const std::string help =
        nearest.starts_with(own) ? "; did you mean " + nearest.substr(own.size()) + '?' : "";
    return "there is no file " + shown + Readable(help);
  }

  void AddTo(DatafileWriter& data, SkinPart part, const ProjectPicture& picture) {
    const std::string path = PathOf(picture), shown = Readable(picture.file);
    if (const std::string why = WhyNoFile(path); !why.empty())
      return Complain(picture, IsThere(path) ? shown + ' ' + why : NoFile(path, shown));
    if (picture.name == kPaletteName) {
      SkinPalette palette;
      if (!LoadPalette(path, &palette))
        return Complain(picture, shown + " is no BMP picture with a palette");
      return data.AddPalette(picture.name, palette.colors);
    }
    const BitmapPtr bitmap = LoadForDatafile(path, palette_);
    if (!bitmap) return Complain(picture, shown + " is no picture that can be read");
    const Size size{bitmap->w, bitmap->h};
    if (std::max(size.w, size.h) > kLargestSide)
      return Complain(picture, shown + " is larger than a datafile can say");
    if (part == kElementPart)
      CheckElement(picture, size);
    else
      CheckPointer(picture, size);
    DatafileWriter::Properties properties;
    for (std::size_t i = 0; i < picture.numbers.size(); ++i)
      properties.emplace_back(KindOf(part).numbers[i].property, std::to_string(picture.numbers[i]));
    data.AddPicture(picture.name, std::move(properties), bitmap.get());
  }

  void CheckElement(const ProjectPicture& picture, Size size) {
    const auto id = std::find(std::begin(kElementNames), std::end(kElementNames), picture.name) -
                    std::begin(kElementNames);
    const Size grid = kElementGrids[id];
    if (size.w % grid.w != 0 || size.h % grid.h != 0)
      return Complain(picture, Readable(picture.file) + " is " + NameOf(size) +
                                   ", which is no whole number of pixels for each of " +
                                   std::to_string(grid.w) + " columns and " +
                                   std::to_string(grid.h) + " rows");
    const Size frame{size.w / grid.w, size.h / grid.h};
    const std::string why = WhyNotScaled(picture, size);
    for (std::size_t i = 0; i < picture.numbers.size(); ++i) {
      const int tile = picture.numbers[i];
      if (tile == -1 || (tile > 0 && tile <= (i == 0 ? frame.w : frame.h))) continue;
      if (!why.empty()) return Complain(picture, why);  // from which that follows
      Complain(picture, "a tile of " + std::to_string(tile) + (i == 0 ? " across" : " down") +
                            " does not fit its frames of " + NameOf(frame));
    }
    if (!why.empty()) Warn(picture, why);
  }

  void CheckPointer(const ProjectPicture& picture, Size size) {
    const std::span<const ObjectNumber> kinds = KindOf(kPointerPart).numbers;
    std::vector<int> numbers = picture.numbers;
    for (std::size_t i = numbers.size(); i < kinds.size(); ++i)
      numbers.push_back(kinds[i].fallback);
    const int frames = numbers[2];
    if (frames < 1 || size.w % frames != 0)
      return Complain(picture, Readable(picture.file) + " is " + NameOf(size) + ", not " +
                                   std::to_string(frames) + " frames side by side");
    const Size frame{size.w / frames, size.h};
    if (numbers[0] < 0 || numbers[0] >= frame.w || numbers[1] < 0 || numbers[1] >= frame.h)
      Complain(picture, "the point that points, " + std::to_string(numbers[0]) + ' ' +
                            std::to_string(numbers[1]) + ", lies outside of a frame of " +
                            NameOf(frame));
    if (numbers[3] < 1)
      Complain(picture, "a frame of " + std::to_string(numbers[3]) + " milliseconds is none");
    if (const std::string why = WhyNotScaled(picture, size); !why.empty()) Warn(picture, why);
  }

  std::string directory_, file_;
  Complaints& complaints_;
  Project project_;
  SkinPalette palette_;
  int scale_ = 1;
  std::map<std::string, Size> sizes_;  // of pictures at the first scale, by name
  std::map<int, int> scales_;          // by line of the text: the first with a complaint
};

// What zel-check says of a skin.
void CheckPacked(const std::string& skin, const Packer& packer, Complaints& complaints) {
  constexpr int kDepth = 32;
  set_color_depth(kDepth);
  SetZoom(1);
  RecomputeNamedColors();
  if (!EngineInit()) return;
  Findings findings;
  CheckSkin(findings, {skin}, skin);
  for (const Finding& finding : findings.Finish()) {
    // Which was said of the project.
    if (finding.id == Msg::kElementMissing || finding.id == Msg::kScaledSize) continue;
    const std::string target = skin.substr(0, skin.size() - packer.Name().size() - 1);
    const std::string text = packer.AboutProject(finding.what + "; " + finding.advice, target);
    const Place place =
        finding.place.file == skin ? packer.InProject(finding.place.line) : finding.place;
    if (MessageOf(finding.id).severity == Severity::kError)
      complaints.Add(place.file, place.line, text);
    else
      complaints.Warn(place.file, place.line, text);
  }
}

// Puts files in the places of others: all of them, or none. Whoever reads one meanwhile finds the
// old one or the new one.
class Exchange {
 public:
  // The new files lie beside those, as kUnfinished says; where none does, the old one goes.
  Exchange(const std::string& directory, const std::vector<std::string>& names,
           Complaints& complaints)
      : complaints_{complaints} {
    for (const std::string& name : names) paths_.push_back(std::filesystem::path{directory} / name);
  }

  void Run() {
    for (const std::string& path : paths_)
      if (complaints_.HasErrors() || !Replace(path)) return;
  }

  // With errors everything is as it was.
  void Finish() {
    std::error_code ignored;
    const bool isUndone = complaints_.HasErrors();
    if (isUndone)
      for (const std::string& path : placed_) std::filesystem::remove(path, ignored);
    for (const std::string& path : kept_) {
      if (isUndone) std::filesystem::rename(path + kReplaced, path, ignored);
      // Nothing was moved where both are the same file still.
      std::filesystem::remove(path + kReplaced, ignored);
    }
    if (isUndone)
      for (const std::string& path : paths_) std::filesystem::remove(path + kUnfinished, ignored);
  }

 private:
  bool Replace(const std::string& path) {
    std::error_code error;
    const bool isOld = IsThere(path), isNew = IsThere(path + kUnfinished);
    if (isOld && !Keep(path, error)) return Complain(path, error);
    if (isNew)
      std::filesystem::rename(path + kUnfinished, path, error);
    else if (isOld)
      std::filesystem::remove(path, error);
    if (error) return Complain(path, error);
    if (isNew && !isOld) placed_.push_back(path);
    return true;
  }

  // The old file under another name, too.
  bool Keep(const std::string& path, std::error_code& error) {
    if (std::filesystem::is_directory(path, error)) {
      error = std::make_error_code(std::errc::is_a_directory);
      return false;
    }
    std::filesystem::create_hard_link(path, path + kReplaced, error);
    // Not every file system has such links.
    if (error)
      std::filesystem::copy(path, path + kReplaced, std::filesystem::copy_options::copy_symlinks,
                            error);
    kept_.push_back(path);
    return !error;
  }

  bool Complain(const std::string& path, const std::error_code& error) {
    complaints_.Add(path, 0, error.message());
    return false;
  }

  Complaints& complaints_;
  std::vector<std::string> paths_, kept_, placed_;
};

// The directories on the way to a file that are missing, those below last.
void AddMissing(const std::filesystem::path& file, std::set<std::string>& directories) {
  std::error_code ignored;
  for (std::filesystem::path above = file.parent_path();
       !above.empty() && !std::filesystem::exists(above, ignored); above = above.parent_path())
    directories.insert(above);
}

// What the tool left beside a file when it was killed, which is nothing new.
void RemoveLeft(const std::string& file) {
  std::error_code ignored;
  for (const char* ending : {kUnfinished, kReplaced})
    std::filesystem::remove(file + ending, ignored);
}

}  // namespace

void PackSkin(const std::string& directory, const std::string& target, Complaints& complaints) {
  Packer packer{directory, complaints};
  if (packer.Name().empty()) return;
  const auto files = packer.Files();
  if (complaints.HasErrors()) return;
  packer.WarnOfMissing();
  // A full disk does not take the skin that is there, and neither does what only shows in the whole
  // skin.
  const std::filesystem::path place = target;
  std::vector<std::string> names;
  std::set<std::string> missing;
  const auto prepare = [&](const std::string& name) {
    AddMissing(place / name, missing);
    RemoveLeft(place / name);
  };
  // Whoever kills the tool between two files leaves the old description beside the new ones.
  for (const std::string& font : packer.Fonts()) {
    prepare(font);
    if (CopyUnfinished(font, directory, target, complaints)) names.push_back(font);
  }
  for (const auto& [name, bytes] : files) {
    names.push_back(name);
    prepare(name);
    if ((!bytes.empty() || name == packer.Name()) && !complaints.HasErrors())
      WriteNew(place / (name + kUnfinished),
               {reinterpret_cast<const char*>(bytes.data()), bytes.size()}, complaints);
  }
  Exchange exchange{target, names, complaints};
  exchange.Run();
  if (!complaints.HasErrors()) CheckPacked(target + '/' + packer.Name(), packer, complaints);
  exchange.Finish();
  if (!complaints.HasErrors()) return;
  std::error_code ignored;
  for (auto made = missing.rbegin(); made != missing.rend(); ++made)
    std::filesystem::remove(*made, ignored);
}

}  // namespace zel
