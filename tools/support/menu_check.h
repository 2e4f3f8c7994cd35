// Looking for mistakes in a menu tree.
#pragma once

namespace zel {

// Reads the settings, the skin and every menu file that can be reached from menu.cfg, all in the
// current directory, for the screen size of the settings and the three that menus can be laid out
// for, and says on standard output what the launcher would silently leave out, cut or
// misunderstand. True without findings.
//
// Allegro is installed, with the picture formats. Texts are best in U_ASCII, byte by byte: the
// files of one tree may be written in several encodings. Leaves the settings as it read them.
bool CheckMenuTree();

}  // namespace zel
