#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/CommandErrors.h"
#include "fakes/SettingsTestSupport.h"
#include "shell/ErrorCodes.h"

namespace {

class CommandErrors : public fake::HostTest {};

TEST_F(CommandErrors, EachCodeShowsItsMessage) {
  struct Case {
    const char* name;
    DWErr code;
    std::vector<std::string> alerts;
  } const cases[] = {
      {"success", kDWNoErr, {}},
      {"cancel", dw::UserCancelled, {}},
      {"invalid selection", dw::InvalidSelectionError, {"You have attempted to rasterize an invalid selection."}},
      {"memory", dw::OutOfMemoryError, {"There was insufficient memory to rasterize the selected artwork."}},
      {"mask memory", dw::MaskMemoryError, {"There was insufficient memory for Pathfinder to create the mask."}},
      {"locked layer", dw::LockedLayerError, {"The current layer is locked."}},
      {"too wide",
       dw::TooWideError,
       {"The combination of artwork size and resolution exceeds the maximum that can be rasterized."}},
      {"a code of the plug-in without a message", dw::BadParameterError,
       {"An error occurred and your command could not be processed."}},
      {"a host code", fake::kInjected, {"An error occurred and your command could not be processed."}},
      {"a negative code", -1, {"An error occurred and your command could not be processed."}},
  };
  for (const Case& c : cases) {
    host.errorAlerts.clear();
    dw::showCommandError(c.code);
    EXPECT_EQ(host.errorAlerts, c.alerts) << c.name;
    EXPECT_EQ(dw::commandErrorMessage(c.code) == nullptr, c.alerts.empty()) << c.name;
  }
  EXPECT_EQ(host.liveStrings, 0);
}

TEST_F(CommandErrors, AnEmptyTranslationShowsNothing) {
  host.translations["$$$/Rasterize/Str/ErrorUntouchable"] = "";
  host.translations["$$$/Rasterize/Str/ErrorTooWide"] = "Zu breit.";
  dw::showCommandError(dw::LockedLayerError);
  dw::showCommandError(dw::TooWideError);
  EXPECT_EQ(host.errorAlerts, std::vector<std::string>{"Zu breit."});
}

}  // namespace
