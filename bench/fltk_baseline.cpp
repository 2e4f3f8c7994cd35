// A menu as small as FLTK can draw it: a picture, a list, a text that follows the selection. What
// the launcher is compared with where FLTK is installed.
#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Hold_Browser.H>
#include <FL/Fl_JPEG_Image.H>

int main(int argc, char** argv) {
  if (argc != 2) return 1;
  Fl_JPEG_Image picture{argv[1]};
  Fl_Double_Window window{0, 0, 800, 600};
  Fl_Box background{0, 0, 800, 600};
  background.image(picture);
  Fl_Hold_Browser list{40, 60, 330, 330};
  for (int i = 0; i < 10; ++i) list.add("Look at the disks of this computer");
  list.value(1);
  Fl_Box hint{FL_DOWN_BOX, 40, 420, 720, 150, "What the entry does."};
  list.callback(
      [](Fl_Widget* sender, void* text) {
        const bool odd = static_cast<Fl_Hold_Browser*>(sender)->value() % 2 != 0;
        static_cast<Fl_Box*>(text)->label(odd ? "What the entry does."
                                              : "And what another one does.");
      },
      &hint);
  list.when(FL_WHEN_CHANGED);
  window.end();
  window.border(0);
  window.show();
  list.take_focus();
  return Fl::run();
}
