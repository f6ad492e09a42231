#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "cli/CliRun.h"

namespace orv::cli {
namespace {

using test::RunCli;
using Outcome = test::CliRun;

TEST(DistanceCommand, PrintsBothLegsWithTwoDecimals) {
  Outcome r = RunCli({"distance", "51.4775", "-0.461389", "40.639722", "-73.778889"});
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.out,
            "great-circle: 2989.05 nm, course 287.93\n"
            "rhumb-line: 3107.00 nm, course 257.92\n");
  EXPECT_EQ(r.err, "");

  // Across the date line the rhumb line goes east, the shorter way round.
  r = RunCli({"--appdir", "/nowhere", "distance", "-33.946111", "151.177222", "33.9425", "-118.408056"});
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.out,
            "great-circle: 6508.09 nm, course 61.00\n"
            "rhumb-line: 6525.08 nm, course 51.37\n");

  // A point to itself: the zero-length raise shows in the result.
  r = RunCli({"distance", "50", "+8.5", "50", "8.5"});
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.out,
            "great-circle: 15.37 nm, course 89.84\n"
            "rhumb-line: 0.00 nm, course 0.00\n");
}

TEST(DistanceCommand, RefusesBadArgumentsWithUsage) {
  const Args bad[] = {
      {"distance"},
      {"distance", "1", "2", "3"},
      {"distance", "1", "2", "3", "4", "5"},
      {"distance", "abc", "2", "3", "4"},
      {"distance", "1", "2x", "3", "4"},
      {"distance", "1", "2", "", "4"},
      {"distance", "1", "2", "3", "nan"},
      {"distance", "1", "2", "3", "inf"},
      {"distance", "90.5", "2", "3", "4"},
      {"distance", "1", "2", "-91", "4"},
  };
  for (const Args& args : bad) {
    Outcome r = RunCli(args);
    SCOPED_TRACE(args.size() > 1 ? args[1] : "none");
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("usage: orvanta-cli distance LAT1 LON1 LAT2 LON2\n"), std::string::npos) << r.err;
  }
  // The poles themselves are fine.
  EXPECT_EQ(RunCli({"distance", "90", "0", "-90", "0"}).code, 0);
}

}  // namespace
}  // namespace orv::cli
