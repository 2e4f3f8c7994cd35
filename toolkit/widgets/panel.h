// Widgets that only draw: frames, plain backgrounds and pictures.
#pragma once

#include "toolkit/core/widget.h"

namespace zel {

// Draws one element of the skin over its whole area. What a derived class does not paint it has to
// tell with SetOpaque.
class Panel : public Widget {
 public:
  void SetBitmap(int element);
  // This colour all over instead of the element; none for the element.
  void SetPlain(Color color);
  bool IsPlain() const { return plain_.IsSet(); }

  void Draw(Bitmap& canvas) override;
  void MsgInitSkin() override;

 protected:
  void InitElement(int element);

 private:
  Color plain_;
};

class PanelRaised : public Panel {
 public:
  void MsgInitSkin() override;
};

class PanelSunken : public Panel {
 public:
  void MsgInitSkin() override;
};

class PanelRidge : public Panel {
 public:
  void MsgInitSkin() override;
};

class PanelGroove : public Panel {
 public:
  void MsgInitSkin() override;
};

class ShadowBox : public Panel {
 public:
  void MsgInitSkin() override;
};

// Fills its whole parent with one colour, that of the skin's "back" unless it is told otherwise.
class ClearScreen : public Widget {
 public:
  ClearScreen() { SetOpaque(true); }

  void MsgStart() override;
  void Draw(Bitmap& canvas) override;
  void MsgInitSkin() override;

  void SetColor(Color newColor) { color = newColor; }
  Color GetColor() const { return color; }

 protected:
  Color color;
};

// Shows a picture of its own or an element of the skin, in the middle of its area. A new image
// sizes itself to what it shows.
class Image : public Widget {
 public:
  Image();

  void Draw(Bitmap& canvas) override;

  // The virtual operations that an image adds; their order is part of the interface.
  virtual void UpdateSize();
  // A picture at the current zoom. A file that cannot be read leaves none; null takes it away.
  virtual void SetBitmap(const char* fileName);
  virtual void SetBitmap(const SkinBitmap& picture);  // copied
  virtual void SetBitmap(int element);
  virtual void SetMasked(bool mask);
  virtual void SetBackColor(Color color);
  virtual void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                     int element, bool isMasked, Color back);
  virtual void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                     const char* fileName, bool isMasked, Color back);
  virtual void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                     const SkinBitmap& picture, bool isMasked, Color back);

 protected:
  // What is shown; null when there is nothing.
  const SkinBitmap* Source() const;

  SkinBitmap bitmap;
  bool masked = false;
  Color backColor;

 private:
  // After a change of what gives it its size. What it covered before shows again.
  void FollowChange();
  // An heir's SetBitmap does not have the last word.
  template <class Picture>
  void SetupWith(const Picture& picture, const Rect& place, int shortcut, std::uint32_t mask,
                 bool isMasked, Color back);
};

}  // namespace zel
