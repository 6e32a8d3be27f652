#include "refhost/document/Preferences.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace refhost {
namespace {

std::string tempPath(const char* name) {
  return ::testing::TempDir() + "/" + name + "-" + std::to_string(::getpid()) + ".json";
}

TEST(Preferences, PersistAcrossInstancesKeepingTypes) {
  const std::string path = tempPath("prefs");
  std::remove(path.c_str());
  {
    Preferences p(path);
    EXPECT_FALSE(p.getInteger("Rasterize/Defaults", "DPI").has_value());
    p.setInteger("Rasterize/Defaults", "DPI", 150);
    p.setBoolean("Rasterize/Defaults", "Spot", true);
    p.setReal("Rasterize/Defaults", "Padding", 1.0);
    p.setString("Rasterize", "name", "x");
    p.save();
  }
  Preferences q(path);
  EXPECT_EQ(q.getInteger("Rasterize/Defaults", "DPI"), 150);
  EXPECT_EQ(q.getBoolean("Rasterize/Defaults", "Spot"), true);
  EXPECT_EQ(q.getReal("Rasterize/Defaults", "Padding"), 1.0) << "a whole real stays a real";
  EXPECT_FALSE(q.getInteger("Rasterize/Defaults", "Padding").has_value());
  EXPECT_EQ(q.getString("Rasterize", "name"), "x");
  std::remove(path.c_str());
}

TEST(Preferences, MalformedFileNamesFileAndLine) {
  const std::string path = tempPath("bad-prefs");
  {
    std::ofstream out(path);
    out << "{\n  \"Rasterize\": {\n    \"DPI\": 72,,\n  }\n}\n";
  }
  try {
    Preferences p(path);
    FAIL() << "malformed preferences were accepted";
  } catch (const std::runtime_error& e) {
    const std::string what = e.what();
    EXPECT_NE(what.find(path + ":3:"), std::string::npos) << what;
    EXPECT_EQ(what.find('\n'), std::string::npos) << "one line: " << what;
  }
  std::remove(path.c_str());
}

}  // namespace
}  // namespace refhost
