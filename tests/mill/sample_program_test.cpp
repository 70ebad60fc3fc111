#include "host/sample_program.h"

#include <gtest/gtest.h>

#include <cmath>

#include "interp/ngc_interpreter.h"

namespace mill {
namespace {

TEST(SampleProgram, TheInterpreterPlaysItIntoAFewThousandMoves) {
  interp_options_t io;
  io.chord_tolerance = 0.05;
  const program_t p = run_ngc(sample_program_text(), "sample.ngc", io);
  EXPECT_GT(p.moves.size(), 2000u);
  EXPECT_LT(p.moves.size(), 6000u);
  int arcs = 0, rapids = 0;
  for (const move_t& m : p.moves) {
    arcs += m.kind == move_kind::arc_segment;
    rapids += m.kind == move_kind::rapid;
  }
  EXPECT_GT(arcs, 4);
  EXPECT_GT(rapids, 4);
}

TEST(SampleProgram, FeedMovesStayWithinTheBlockAndItsStep) {
  const program_t p = run_ngc(sample_program_text(), "sample.ngc", {});
  const auto& b = sample_stock_box;
  const double r = sample_tool_diameter / 2;
  for (const move_t& m : p.moves) {
    if (m.kind == move_kind::rapid) continue;
    // The contour runs the tool half outside the block to cut a step.
    for (int i = 0; i < 2; ++i) {
      EXPECT_GE(m.end[i], b[i] - r) << "line " << m.line;
      EXPECT_LE(m.end[i], b[i + 3] + r) << "line " << m.line;
    }
    EXPECT_GT(m.end[2], b[2] + 15) << "line " << m.line;
  }
}

// A rapid never cuts: it either rises straight up out of what was cut or
// runs with the tip above the block.
TEST(SampleProgram, RapidsRiseStraightOrStayAboveTheBlock) {
  const program_t p = run_ngc(sample_program_text(), "sample.ngc", {});
  const double top = sample_stock_box[5];
  for (const move_t& m : p.moves) {
    if (m.kind != move_kind::rapid) continue;
    const bool straight_up = m.start[0] == m.end[0] && m.start[1] == m.end[1] && m.end[2] >= m.start[2];
    EXPECT_TRUE(straight_up || (m.start[2] > top && m.end[2] > top)) << "line " << m.line;
  }
}

TEST(SampleProgram, TheFinishingPassFollowsTheSurface) {
  const program_t p = run_ngc(sample_program_text(), "sample.ngc", {});
  int on_surface = 0;
  for (const move_t& m : p.moves)
    if (m.end[1] <= 46 && m.end[2] < 28 && std::abs(m.end[2] - sample_surface_z(m.end[0], m.end[1])) < 1e-3)
      ++on_surface;
  EXPECT_GT(on_surface, 19 * 160);
}

}  // namespace
}  // namespace mill
