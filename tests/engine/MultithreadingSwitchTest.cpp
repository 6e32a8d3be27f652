// The environment switch is read once per process, so each case runs in a fresh child process: the
// "threadsafe" death-test style starts this test binary again for the statement.
#include <gtest/gtest.h>

#include <cstdlib>

#include "engine/Multithreading.h"
#include "shell/ErrorCodes.h"
#include "tests/engine/EngineFixture.h"

namespace dw {
namespace {

constexpr char kSwitch[] = "DW_RASTERIZE_WITHOUT_MULTITHREADING";

#if defined(_WIN32)
// The Windows C runtime keeps no empty variables (putting "" removes one), so there "set" is "1".
constexpr char kSetEmpty[] = "1";
void setSwitch(const char* value) { _putenv_s(kSwitch, value); }
void clearSwitch() { _putenv_s(kSwitch, ""); }
#else
constexpr char kSetEmpty[] = "";
void setSwitch(const char* value) { setenv(kSwitch, value, 1); }
void clearSwitch() { unsetenv(kSwitch); }
#endif

class MultithreadingSwitch : public ::testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(MultithreadingSwitch, SetEvenEmptyTurnsItOffForTheProcess) {
  EXPECT_EXIT(
      {
        setSwitch(kSetEmpty);
        const bool first = multithreadingEnabled();
        clearSwitch();
        std::exit(!first && !multithreadingEnabled() && readMultithreadingSwitch() ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(MultithreadingSwitch, UnsetKeepsItOnEvenIfSetLater) {
  EXPECT_EXIT(
      {
        clearSwitch();
        const bool first = multithreadingEnabled();
        setSwitch("1");
        std::exit(first && multithreadingEnabled() && !readMultithreadingSwitch() ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

// A whole rasterization in the child: with the switch set there is one slot whatever the processors.
class SwitchedOffRasterization : public test_support::EngineTest {
 protected:
  void SetUp() override {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EngineTest::SetUp();
  }
};

TEST_F(SwitchedOffRasterization, OneSlotInline) {
  EXPECT_EXIT(
      {
        setSwitch(kSetEmpty);
        engine_testing::setProcessorCount(8);
        settings = test_support::makeSettings(kRasterTypeRgbTransparent, 72.0, 4);
        DWArtHandle art = h().addPaintedArt({1.5, 7, 6, 1}, {0xFF, 9, 8, 7});
        const DWErr error = rasterize(h().addArtSet({art}), {0, 8, 8, 0});
        const bool oneSlot = h().ports.size() == 1 &&
                             h().logLines.at(1) == "           7\tBegin Tile processing\t(TileCount: 1, Threads: 1)";
        const std::vector<uint8_t> edge = pixelBytes(1, 3);
        std::exit(error == kDWNoErr && oneSlot && edge == std::vector<uint8_t>{127, 9, 8, 7} ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace dw
