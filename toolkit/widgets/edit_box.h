// A line of text that one types.
#pragma once

#include <optional>
#include <string>

#include "toolkit/widgets/button.h"

namespace zel {

// Bits of EditBox::SetFilter: what may be typed, and how the text shows.
enum EditFilter : int {
  kFilterNumeric = 1,      // digits, point and comma
  kFilterUpperCase = 2,    // turned into capitals
  kFilterLowerCase = 4,    // turned into small letters
  kFilterHexadecimal = 8,  // digits and a to f; SetNumber and GetInt use base 16
  kFilterPassword = 16,    // shows asterisks
};

// A sunken field with a text cursor, a selection and a text that scrolls when it is longer than the
// field. Positions are counted in characters from 0; text that is damaged in the current text
// format is mended when it is set.
//
// The program's texts always fit; typing stops at the capacity. Tells its parent MSG_CHAR for
// every key and MSG_UCHAR for what is typed, and before that MSG_ACTIVATE for Enter. Selected() is
// true while there is a selection.
class EditBox : public Label {
 public:
  EditBox();

  void MsgStart() override;
  void Draw(Bitmap& canvas) override;
  void MsgDClick() override;  // selects all
  bool MsgChar(int code) override;
  bool MsgUChar(int character) override;
  bool MsgWantFocus() override;
  void MsgGotMouse() override;
  void MsgLostMouse() override;
  void MsgLostFocus() override;
  void MsgLPress() override;
  void MsgLRelease() override;
  void MsgMouseMove(Point p) override;
  void MsgInitSkin() override;
  void Select() override;    // all
  void Deselect() override;  // and puts the cursor at the start
  // Keeps the capacity if the text fits; null is an empty text.
  void SetText(const char* newText) override;
  void SetNumber(int n) override;
  using Label::SetNumber;
  int GetInt() const override;

  // The virtual operations that an edit box adds; their order is part of the interface.
  // Gives the box a capacity of at least `capacity` characters, 256 when that is below 1. The
  // cursor goes to the end.
  virtual void SetText(const char* newText, int capacity);
  // Draws the text from a character on; an empty canvas only measures. Answers the last character
  // that shows, or the text's length when all of them do.
  virtual int DrawText(int from, Bitmap& canvas);
  // The character before which a press at the pointer, moved right by the hot spot of the text
  // pointer, puts the cursor.
  virtual int CharAt();
  virtual void ScrollToCursor();
  // What is inserted when a character is typed, or -1.
  virtual int Filter(int ch);
  virtual void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                     const char* newText, int capacity);
  // The same as SetText; with a capacity of -1 the box keeps its own if the text fits.
  virtual void SetTextLimited(const char* newText, int capacity);
  virtual void SetFilter(int bits);  // of EditFilter
  virtual void MoveCursor(int p);

  int GetFilter() const { return filter; }
  int GetCursor() const { return cursor; }
  int GetFirst() const { return first; }
  int GetSelStart() const { return selStart; }
  int GetSelEnd() const { return selEnd; }

 protected:
  bool HasFilter(int bits) const { return (filter & bits) == bits; }

  int filter = 0;
  int maxLength = 0;  // characters that typing can fill
  int cursor = 0;
  int first = 0;                 // the first visible character
  int selStart = 0, selEnd = 0;  // the selection; selEnd lies behind it
  int anchor = 0;                // where the mouse began it
  int selLength = 0;             // of the last selection made by the mouse

 private:
  // What shows of the text from a character on.
  struct View {
    std::string pieces[3];     // before, in and behind the selection
    int last = 0;              // see DrawText
    std::optional<int> caret;  // x of the text cursor, when it shows
  };
  using KeyAction = void (EditBox::*)(bool shift);

  View ViewFrom(int from) const;
  void Paint(Bitmap& canvas, const View& view) const;
  int ColorState() const;
  const char* Text() const { return text ? text->c_str() : ""; }
  int Length() const;
  std::size_t OffsetOf(int index) const;
  // The glyph of the character at `text`, which moves on to the next one.
  std::string TakeGlyph(const char** at) const;

  bool HasSelection() const { return Selected() && selStart < selEnd; }
  // An empty range leaves no selection.
  void SelectRange(int from, int to);
  // Moves the cursor; with shift the end of the selection at which it stands goes along.
  void MoveBy(int step, bool shift);
  void MoveLeft(bool shift);
  void MoveRight(bool shift);
  void MoveHome(bool shift);
  void MoveEnd(bool shift);
  void DeleteForward(bool shift);
  void DeleteBackward(bool shift);
  void Accept(bool shift);
  void EndMouseSelection();
  void Erase(int from, int to);
  void EraseSelection();
  void Insert(int character);
};

}  // namespace zel
