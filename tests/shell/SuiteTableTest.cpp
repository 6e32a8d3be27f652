// The required and optional suite tables and the all-or-nothing acquisition.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "tests/shell/FakeHost.h"

namespace {

using dw::SuiteTable;

// The suites the plug-in needs, in the order it asks for them.
const std::vector<std::pair<std::string, int32_t>> kRequired = {
    {"DW FO Conversion Suite", 3},   {"DW Pathfinder Suite", 6},    {"Corvel Graphics Manager Suite", 2000},
    {"DW Art Suite", 17},            {"DW Artboard Suite", 3},      {"DW Art Set Suite", 9},
    {"DW Art Style Suite", 7},       {"DW Art Style Parser Suite", 8}, {"DW Block Suite", 4},
    {"DW Blend Style Suite", 5},     {"DW Color Space Suite", 7},   {"DW Custom Color Suite", 8},
    {"DW Dictionary Suite", 8},      {"DW Document Suite", 16},     {"DW Draw Art Suite", 11},
    {"DW Group Suite", 5},           {"DW Layer Suite", 13},        {"DW Layer List", 4},
    {"DW Live Effect Suite", 6},     {"DW Menu Suite", 11},         {"DW Mesh Suite", 6},
    {"DW Mesh Segment Suite", 3},    {"DW Mesh Vertex Suite", 4},   {"DW Notifier Suite", 4},
    {"DW Path Suite", 11},           {"DW Path Style Suite", 13},   {"DW Pattern Suite", 10},
    {"DW Placed Suite", 8},          {"DW Plugin Suite", 5},        {"DW Plugin Group Suite", 6},
    {"DW Preference Suite", 6},      {"DW Raster Suite", 10},       {"DW Real Math Suite", 3},
    {"DW Runtime Suite", 12},        {"DW Style Converter Suite", 1}, {"DW Text Frame Suite", 4},
    {"DW Undo Suite", 7},            {"DW Unicode String Suite", 8}, {"DW User Suite", 12},
    {"DW Dev Utils Suite", 1},       {"DW Symbol Suite", 7},        {"DW Debug Suite", 1},
    {"QK Blocks Suite", 2},          {"QK Suites Suite", 2},
};

std::vector<const void*> pointers(SuiteTable table) {
  std::vector<const void*> out;
  for (size_t i = 0; i < table.count; ++i) out.push_back(*table.rows[i].pointer);
  return out;
}

TEST(SuiteTables, RequiredRowsNameEverySuiteAndVersionInOrder) {
  const SuiteTable table = dw::requiredSuiteTable();
  ASSERT_EQ(table.count, kRequired.size());
  for (size_t i = 0; i < table.count; ++i) {
    EXPECT_EQ(table.rows[i].name, kRequired[i].first) << "row " << i + 1;
    EXPECT_EQ(table.rows[i].version, kRequired[i].second) << "row " << i + 1;
  }
  const SuiteTable optional = dw::optionalSuiteTable();
  ASSERT_EQ(optional.count, 2u);
  EXPECT_STREQ(optional.rows[0].name, "DW Perspective Transform Suite");
  EXPECT_EQ(optional.rows[0].version, 3);
  EXPECT_STREQ(optional.rows[1].name, "DW Orrimet Suite");
  EXPECT_EQ(optional.rows[1].version, 1);
}

TEST(SuiteTables, EveryRowHasItsOwnPointer) {
  std::vector<const void**> seen;
  for (SuiteTable table : {dw::requiredSuiteTable(), dw::optionalSuiteTable()})
    for (size_t i = 0; i < table.count; ++i) {
      EXPECT_EQ(std::count(seen.begin(), seen.end(), table.rows[i].pointer), 0) << table.rows[i].name;
      seen.push_back(table.rows[i].pointer);
    }
}

TEST(SuiteTables, AllRequiredSuitesAreAcquiredOnceInOrder) {
  FakeHost host;
  ASSERT_EQ(dw::AcquireRequiredSuites(), dw::NoError);
  ASSERT_EQ(host.events.size(), kRequired.size());
  for (size_t i = 0; i < kRequired.size(); ++i) EXPECT_EQ(host.events[i], "acquire " + kRequired[i].first);
  for (const void* pointer : pointers(dw::requiredSuiteTable())) EXPECT_NE(pointer, nullptr);
}

// For each position: the suites before it are released again, nothing after it is asked for,
// the optional table is left alone, and the answer is 'S!Fd'.
TEST(SuiteTables, AMissingRequiredSuiteReleasesThoseAcquiredBefore) {
  const DWPerspectiveTransformSuite heldOptional = {};
  for (size_t missing = 0; missing < kRequired.size(); ++missing) {
    FakeHost host;
    dw::gSuites.perspectiveTransform = &heldOptional;
    host.missing.insert(kRequired[missing].first);
    const std::string name = "missing row " + std::to_string(missing + 1) + " " + kRequired[missing].first;

    EXPECT_EQ(dw::AcquireRequiredSuites(), dw::SuiteMissingError) << name;
    for (const void* pointer : pointers(dw::requiredSuiteTable())) EXPECT_EQ(pointer, nullptr) << name;
    for (size_t i = 0; i < kRequired.size(); ++i) {
      EXPECT_EQ(host.held[kRequired[i].first], 0) << name << ": " << kRequired[i].first;
      EXPECT_EQ(host.acquisitionsOf(kRequired[i].first), i <= missing ? 1 : 0) << name << ": " << kRequired[i].first;
    }
    // Releases go in table order, after the failed acquisition.
    std::vector<std::string> expected;
    for (size_t i = 0; i <= missing; ++i) expected.push_back("acquire " + kRequired[i].first);
    for (size_t i = 0; i < missing; ++i) expected.push_back("release " + kRequired[i].first);
    EXPECT_EQ(host.events, expected) << name;
    EXPECT_EQ(dw::gSuites.perspectiveTransform, &heldOptional) << name;
  }
}

TEST(SuiteTables, HeldRowsAreNotAcquiredAgain) {
  FakeHost host;
  const DWArtSuite art = {};
  dw::gSuites.art = &art;
  ASSERT_EQ(dw::AcquireRequiredSuites(), dw::NoError);
  EXPECT_EQ(host.acquisitionsOf("DW Art Suite"), 0);
  EXPECT_EQ(dw::gSuites.art, &art);
  EXPECT_EQ(host.events.size(), kRequired.size() - 1);
}

TEST(SuiteTables, ApplicationStartedWithBothOptionalSuitesHeldAcquiresNothing) {
  FakeHost host;
  const DWPerspectiveTransformSuite perspective = {};
  const DWUsageDataSuite usage = {};
  dw::gSuites.perspectiveTransform = &perspective;
  dw::gSuites.usageData = &usage;
  EXPECT_EQ(dw::AcquireOptionalSuites(), dw::NoError);
  EXPECT_TRUE(host.events.empty());
  EXPECT_EQ(dw::gSuites.perspectiveTransform, &perspective);
  EXPECT_EQ(dw::gSuites.usageData, &usage);
}

TEST(SuiteTables, OptionalSuitesMissingLeaveTheRequiredOnesAlone) {
  FakeHost host;
  ASSERT_EQ(dw::AcquireRequiredSuites(), dw::NoError);
  host.missing.insert("DW Orrimet Suite");
  host.events.clear();
  EXPECT_EQ(dw::AcquireOptionalSuites(), dw::SuiteMissingError);
  EXPECT_EQ(host.events, (std::vector<std::string>{"acquire DW Perspective Transform Suite", "acquire DW Orrimet Suite",
                                                   "release DW Perspective Transform Suite"}));
  for (const void* pointer : pointers(dw::requiredSuiteTable())) EXPECT_NE(pointer, nullptr);
  EXPECT_EQ(dw::gSuites.perspectiveTransform, nullptr);
}

TEST(SuiteTables, ReleaseGivesBackEveryHeldRowOnce) {
  FakeHost host;
  ASSERT_EQ(dw::AcquireRequiredSuites(), dw::NoError);
  dw::ReleaseRequiredSuites();
  dw::ReleaseRequiredSuites();
  for (const auto& suite : kRequired) EXPECT_EQ(host.held[suite.first], 0) << suite.first;
  for (const void* pointer : pointers(dw::requiredSuiteTable())) EXPECT_EQ(pointer, nullptr);
}

TEST(SuiteTables, NoBasicSuiteMeansNoSuite) {
  FakeHost host;
  dw::gSuites.basic = nullptr;
  EXPECT_EQ(dw::acquireSuite("DW Art Suite", 17), nullptr);
  EXPECT_EQ(dw::AcquireRequiredSuites(), dw::SuiteMissingError);
}

}  // namespace
