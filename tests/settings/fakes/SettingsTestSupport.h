#pragma once
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "fakes/FakeHost.h"
#include "settings/RasterizeSettings.h"
#include "shell/PluginGlobals.h"

// The record is a global C type, so GoogleTest's comparisons find its equality only here.
inline bool operator==(const RasterizeSettings& a, const RasterizeSettings& b) { return dw::operator==(a, b); }

namespace fake {

// A fake host and a global block for one test.
class HostTest : public ::testing::Test {
 protected:
  HostTest() { dw::gGlobals = &globals; }
  ~HostTest() override { dw::gGlobals = nullptr; }

  FakeHost host;
  dw::PluginGlobals globals{};
};

// "type=4 res=72 aa=0 opt=0x300 ..." for assertion messages.
std::string describe(const RasterizeSettings& s);

// Entries of a fake dictionary, as a test sets them up.
void setInteger(Dictionary* d, const std::string& key, int32_t value);
void setBoolean(Dictionary* d, const std::string& key, bool value);
void setReal(Dictionary* d, const std::string& key, double value);
std::optional<int32_t> integerOf(const Dictionary* d, const std::string& key);
std::optional<bool> booleanOf(const Dictionary* d, const std::string& key);
std::optional<double> realOf(const Dictionary* d, const std::string& key);

}  // namespace fake
