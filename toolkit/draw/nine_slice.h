// How a picture is fitted to an area of any size without being scaled.
#pragma once

#include "toolkit/base/allegro.h"
#include "toolkit/base/geometry.h"

namespace zel {

// A picture of equally sized frames, each cut into edges and a tile between them: the edges are
// kept, the tile is repeated. Borrows the picture; without one nothing is drawn.
class NineSlice {
 public:
  // `tile` negative in a direction: a third of the frame.
  NineSlice(BITMAP* picture, Size tile) : picture_{picture}, tile_{tile} {}

  // The tile and the edges of one frame of the given extent; the tile is never larger than that.
  int TileWidthOf(int frameWidth) const;
  int TileHeightOf(int frameHeight) const;
  int EdgeWidthOf(int frameWidth) const;
  int EdgeHeightOf(int frameHeight) const;

  // Frame, column and row counts are at least 1. `masked` leaves out the mask colour, and draws
  // nothing on a target of another depth.
  struct HSlice {  // a strip of a picture: edge, tile, edge, from left to right
    int sx, sy, edge, height, tile;
  };
  struct VSlice {  // the same from top to bottom
    int sx, sy, edge, width, tile;
  };
  // The first edge at the start, the second at the end of `total` pixels, even where they overlap,
  // and tiles from one to the other. Where the tile is empty the pixel line between the edges is
  // repeated.
  void DrawHSlice(BITMAP* target, const HSlice& slice, int dx, int dy, int total,
                  bool masked) const;
  void DrawVSlice(BITMAP* target, const VSlice& slice, int dx, int dy, int total,
                  bool masked) const;
  // Frame `frame` of `frames` stacked ones over a width, or of frames side by side over a height.
  void DrawHFrame(BITMAP* target, int frame, int x, int y, int total, int frames,
                  bool masked) const;
  void DrawVFrame(BITMAP* target, int frame, int x, int y, int total, int frames,
                  bool masked) const;
  // A frame of a grid over an area: corners kept, edges and middle tiled.
  void DrawArea(BITMAP* target, int column, int row, int x, int y, int w, int h, int columns,
                int rows, bool masked) const;

 private:
  bool CanDraw(BITMAP* target, bool masked) const;

  BITMAP* picture_;
  Size tile_;
};

}  // namespace zel
