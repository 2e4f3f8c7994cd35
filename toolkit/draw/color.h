// Colours of the current graphics mode.
#pragma once

#include <cstdint>

namespace zel {

// The same colour in every graphics mode: its pixel value is that of the current one, and 0 until
// the first mode is set.
class NamedColor {
 public:
  static constexpr int kCount = 17;

  explicit constexpr NamedColor(int index) : index_{index} {}
  operator int() const;
  constexpr int Index() const { return index_; }

 private:
  int index_;
};

// magenta is also the mask colour.
inline constexpr NamedColor white{0}, black{1}, red{2}, green{3}, blue{4}, cyan{5}, magenta{6};
inline constexpr NamedColor yellow{7}, darkgray{8}, gray{9}, lightgray{10}, orange{11}, brown{12};
inline constexpr NamedColor violet{13}, darkred{14}, darkgreen{15}, darkblue{16};

// Makes their pixel values again for the current pixel format.
void RecomputeNamedColors();

// A pixel value as Allegro's makecol makes it, or -1 for no colour. Only meaningful in the pixel
// format that was current when it was made.
class Color {
 public:
  constexpr Color() = default;                  // no colour
  constexpr Color(int pixel) : value{pixel} {}  // the pixel value as given
  Color(NamedColor name) : value{name} {}
  Color(int red, int green, int blue);             // makecol; components 0..255, not clamped
  Color(int red, int green, int blue, int alpha);  // a 32-bit pixel with alpha, 0..255 each
  static Color FromHsv(float hue, float saturation, float value);  // 0..360, 0..1, 0..1
  // Three decimal numbers separated by commas, spaces or semicolons; a missing one is 0. "-1" is no
  // colour. The text is in the current text format.
  static Color FromText(const char* text);

  constexpr operator int() const { return value; }
  constexpr bool IsSet() const { return value >= 0; }
  int r() const;
  int g() const;
  int b() const;
  int a() const;  // of a 32-bit pixel
  void SetR(int red);
  void SetG(int green);
  void SetB(int blue);
  void SetA(int alpha);
  // Tints this colour: the hue of the tint, the products of both saturations and of both values.
  // Alpha 0 changes nothing, 256 tints fully. No colour stays no colour.
  void Colorize(Color tint, int alpha);

 protected:
  std::int32_t value = -1;
};

// The colour a third of the way from `a` to `b`; the step is rounded toward zero by component.
Color MixNear(Color a, Color b);

}  // namespace zel
