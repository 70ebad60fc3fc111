#include "host/run_report.h"

#include <gtest/gtest.h>

#include <sstream>

namespace mill {
namespace {

TEST(RunReport, TheMoveTableHasOneRowPerMove) {
  const std::vector<move_record_t> records{{0, 7, move_kind::rapid, 12.5, {false, 0}},
                                           {1, 3, move_kind::arc_segment, 0.25, {true, 4.75}}};
  std::ostringstream csv;
  write_moves_csv(csv, records, {"main.ngc", "sub, \"b\".ngc"});
  EXPECT_EQ(csv.str(),
            "file,line,kind,length_mm,contact_area_mm2,touched\n"
            "main.ngc,7,rapid,12.5,0,0\n"
            "\"sub, \"\"b\"\".ngc\",3,arc,0.25,4.75,1\n");
}

TEST(RunReport, TheSummaryCountsMovesAndRates) {
  loop_result_t loop;
  loop.records.resize(30);
  for (std::size_t i = 0; i < 30; i += 3) loop.records[i].outcome.touched = true;
  loop.interrupted = true;
  loop.seconds = 1.5;
  const run_summary_t s = summarize(loop, 100, 1234.5, 0.125);
  EXPECT_EQ(s.moves_cut, 30u);
  EXPECT_EQ(s.moves_touching, 10u);
  const std::string text = summary_text(s);
  EXPECT_NE(text.find("moves: 30 of 100 (stopped by Ctrl-C)\n"), std::string::npos);
  EXPECT_NE(text.find("removed volume: 1234.5 mm^3\n"), std::string::npos);
  EXPECT_NE(text.find("moves per second: 20\n"), std::string::npos);
}

}  // namespace
}  // namespace mill
