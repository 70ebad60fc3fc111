#include "host/sample_program.h"

#include <cmath>
#include <cstdio>
#include <numbers>

namespace mill {

namespace {

constexpr double safe_z = 35;
constexpr double tool_r = sample_tool_diameter / 2;

class gcode_t {
 public:
  void line(const std::string& text) { text_ += text + '\n'; }

  void move(const char* g, double x, double y, double z) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "%s X%.3f Y%.3f Z%.3f", g, x, y, z);
    line(buf);
  }

  void arc(const char* g, double x, double y, double i, double j) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "%s X%.3f Y%.3f I%.3f J%.3f", g, x, y, i, j);
    line(buf);
  }

  // Straight up to the safe height, across, and down at feed to (x, y, z).
  // Rising first keeps the rapid out of the block: a diagonal rapid from
  // cutting depth would run through the uncut stock.
  void reposition(double x, double y, double z) {
    char up[32];
    std::snprintf(up, sizeof up, "G0 Z%.3f", safe_z);
    line(up);
    move("G0", x, y, safe_z);
    move("G1", x, y, z);
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

// A 2 mm step round the block's top edge: the tool centre runs a rectangle
// inset by 2 mm less than its radius, with quarter arcs of 8 mm at the
// corners, counter-clockwise (climb milling on the outside).
void contour(gcode_t& g) {
  g.line("(contour: 2 mm step round the top edge)");
  const double lo = 2 - tool_r, hi = 100 - lo, rad = 8, z = 28;
  g.reposition(lo + rad, lo, z);
  g.move("G1", hi - rad, lo, z);
  g.arc("G3", hi, lo + rad, 0, rad);
  g.move("G1", hi, hi - rad, z);
  g.arc("G3", hi - rad, hi, -rad, 0);
  g.move("G1", lo + rad, hi, z);
  g.arc("G3", lo, hi - rad, 0, -rad);
  g.move("G1", lo, lo + rad, z);
  g.arc("G3", lo + rad, lo, rad, 0);
}

// A 40 x 30 mm pocket 6 mm deep, in two levels of 3 mm, cleared by zigzag
// passes 4 mm apart.
void pocket(gcode_t& g) {
  g.line("(pocket: 40 x 30 x 6 mm in two levels)");
  const double x0 = 30 + tool_r, x1 = 70 - tool_r, y0 = 55 + tool_r, y1 = 85 - tool_r;
  for (const double z : {27.0, 24.0}) {
    g.reposition(x0, y0, z);
    bool forward = true;
    for (double y = y0; y <= y1 + 1e-9; y += 4) {
      g.move("G1", forward ? x0 : x1, y, z);
      g.move("G1", forward ? x1 : x0, y, z);
      forward = !forward;
    }
    g.move("G1", x0, y1, z);
    g.move("G1", x0, y0, z);
  }
}

// Raster lines along x, 2 mm apart, each point 0.5 mm from the last, the
// tool tip on the wavy surface.
void finish(gcode_t& g) {
  g.line("(3D finish: raster over a wavy surface)");
  for (double y = 10; y <= 46 + 1e-9; y += 2) {
    g.reposition(10, y, sample_surface_z(10, y));
    for (int i = 1; i <= 160; ++i) {
      const double x = 10 + 0.5 * i;
      g.move("G1", x, y, sample_surface_z(x, y));
    }
  }
}

}  // namespace

double sample_surface_z(double x, double y) {
  constexpr double k = std::numbers::pi / 20;
  return 24 + 3 * std::cos(k * (x - 50)) * std::cos(k * (y - 28));
}

std::string sample_program_text() {
  gcode_t g;
  g.line("%");
  g.line("(quvra-mill sample: contour, pocket and 3D finish on a 100 x 100 x 30 block)");
  g.line("G21 G90 G17");
  g.line("F1200 S12000 M3");
  contour(g);
  pocket(g);
  finish(g);
  g.line("G0 Z35");
  g.line("M5");
  g.line("M30");
  g.line("%");
  return g.text();
}

}  // namespace mill
