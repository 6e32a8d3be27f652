#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "commands/LiveEffect.h"
#include "fakes/SettingsTestSupport.h"
#include "shell/ErrorCodes.h"

namespace {

using fake::Dictionary;

class EffectHandlers : public fake::HostTest {
 protected:
  EffectHandlers() { globals.effectDefaults = dw::makeEffectDefaults(); }
  static DWDictionaryRef ref(Dictionary* d) { return fake::handleOf(d); }
  Dictionary* parameters = host.newDictionary("params");
};

TEST_F(EffectHandlers, EditParametersWritesOnlyAfterAConfirmedDialog) {
  struct Case {
    const char* name;
    int32_t dialogAnswer;
    const char* failing;  // host operation made to fail
    DWErr result;
    bool written;
    bool defaultsTaken;
    size_t updates;
  } const cases[] = {
      {"confirmed", 0, "", kDWNoErr, true, true, 1},
      {"cancelled", dw::UserCancelled, "", dw::UserCancelled, false, false, 0},
      {"a refused write", 0, "SetInteger colr", fake::kInjected, false, false, 0},
      {"a refused notification", 0, "UpdateParameters", fake::kInjected, true, true, 0},
  };
  int context = 0;
  for (const Case& c : cases) {
    parameters->entries.clear();
    host.failures.clear();
    host.dialogCalls.clear();
    host.parameterUpdates.clear();
    globals.effectDefaults = dw::makeEffectDefaults();
    if (*c.failing) host.failures[c.failing] = fake::kInjected;
    host.dialogAnswer = c.dialogAnswer;
    host.dialogEdit = [](RasterizeSettings& s) {
      s.resolution = 150;
      s.antialiasing = 4;
    };
    LiveEffectEditParamMessage message{};
    message.parameters = ref(parameters);
    message.context = reinterpret_cast<DWLiveEffectParamContext>(&context);

    EXPECT_EQ(dw::EditParameters(message), c.result) << c.name;
    ASSERT_EQ(host.dialogCalls.size(), 1u) << c.name;
    EXPECT_EQ(host.dialogCalls[0].variant, kDWRasterizeOptionsDialog) << c.name;
    EXPECT_EQ(host.dialogCalls[0].shown, dw::makeEffectDefaults(1)) << c.name << ": "
                                                                     << fake::describe(host.dialogCalls[0].shown);
    EXPECT_EQ(fake::integerOf(parameters, "dpi."), c.written ? std::optional<int32_t>(150) : std::nullopt) << c.name;
    EXPECT_EQ(fake::booleanOf(parameters, "alis"), c.written ? std::optional<bool>(true) : std::nullopt) << c.name;
    EXPECT_FALSE(fake::booleanOf(parameters, "spot")) << c.name;
    EXPECT_EQ(globals.effectDefaults.resolution, c.defaultsTaken ? 150.0 : 72.0) << c.name;
    EXPECT_EQ(host.parameterUpdates.size(), c.updates) << c.name;
    if (c.updates) {
      EXPECT_EQ(host.parameterUpdates[0], message.context) << c.name;
    }
  }
}

TEST_F(EffectHandlers, InterpolationBlendsFromTheSecondSetToTheFirst) {
  Dictionary* first = host.newDictionary("first");
  Dictionary* second = host.newDictionary("second");
  fake::setInteger(first, "colr", 0);
  fake::setInteger(first, "dpi.", 72);
  fake::setBoolean(first, "alis", true);
  fake::setBoolean(first, "mask", true);
  fake::setInteger(second, "colr", 4);
  fake::setInteger(second, "dpi.", 300);
  fake::setBoolean(second, "alis", false);
  fake::setBoolean(second, "mask", false);
  struct Case {
    const char* name;
    double t;
    const char* failing;
    std::optional<int32_t> dpi;  // checked when set
    Dictionary* discreteFrom;
  } const cases[] = {
      {"a quarter of the way: 72 - (72 - 300) x 0.75 rounded", 0.25, "", 243, second},
      {"one half takes the first set's discrete values", 0.5, "", std::nullopt, first},
      {"just below one half takes the second set's", 0.49, "", std::nullopt, second},
      {"a refused write still answers success", 0.25, "SetBoolean mask", 243, second},
  };
  for (const Case& c : cases) {
    Dictionary* out = host.newDictionary("out");
    host.failures.clear();
    if (*c.failing) host.failures[c.failing] = fake::kInjected;
    LiveEffectInterpParamMessage message{};
    message.startParameters = ref(first);
    message.endParameters = ref(second);
    message.outParameters = ref(out);
    message.t = c.t;

    EXPECT_EQ(dw::InterpolateParameters(message), kDWNoErr) << c.name;
    if (c.dpi) {
      EXPECT_EQ(fake::integerOf(out, "dpi."), c.dpi) << c.name;
    }
    EXPECT_EQ(fake::integerOf(out, "colr"), fake::integerOf(c.discreteFrom, "colr")) << c.name;
    EXPECT_EQ(fake::booleanOf(out, "alis"), fake::booleanOf(c.discreteFrom, "alis")) << c.name;
    if (!*c.failing) {
      EXPECT_EQ(fake::booleanOf(out, "mask"), fake::booleanOf(c.discreteFrom, "mask")) << c.name;
    }
  }
}

TEST_F(EffectHandlers, ConversionParametersFollowTheDocumentSettings) {
  struct Case {
    const char* name;
    const char* failing;
    DWErr result;
    std::optional<int32_t> dpi;
  } const cases[] = {
      {"the document's resolution is taken", "", kDWNoErr, 150},
      {"a refused write is returned", "SetInteger dpi.", fake::kInjected, std::nullopt},
  };
  fake::setInteger(host.settingsEntry(true), "dpi.", 150);
  for (const Case& c : cases) {
    parameters->entries.clear();
    host.failures.clear();
    if (*c.failing) host.failures[c.failing] = fake::kInjected;
    fake::setInteger(parameters, "dpi.", 300);
    LiveEffectGetConversionParamsMessage message{};
    message.parameters = ref(parameters);

    EXPECT_EQ(dw::GetConversionParameters(message), c.result) << c.name;
    EXPECT_EQ(fake::integerOf(parameters, "dpi."), c.dpi.value_or(300)) << c.name;
  }
}

TEST_F(EffectHandlers, ColourSpaceConversionAnswersSixOnlyWhenItRewrites) {
  struct Case {
    const char* name;
    bool dictionary;
    int32_t colr;
    int32_t code;
    const char* failing;
    DWErr result;
    int32_t colrAfter;
    int32_t codeAfter;
  } const cases[] = {
      {"RGB to CMYK", true, 0, 1, "", kDWNoErr, 1, 6},
      {"code 3 is not a target", true, 0, 3, "", kDWNoErr, 0, 3},
      {"Bitmap stays Bitmap", true, 3, 5, "", kDWNoErr, 3, 5},
      {"transparent CMYK to gray", true, 5, 0, "", kDWNoErr, 6, 6},
      {"no dictionary", false, 0, 1, "", kDWNoErr, 0, 1},
      {"a refused write keeps the code", true, 0, 1, "SetInteger colr", fake::kInjected, 0, 1},
  };
  for (const Case& c : cases) {
    parameters->entries.clear();
    host.failures.clear();
    if (*c.failing) host.failures[c.failing] = fake::kInjected;
    fake::setInteger(parameters, "colr", c.colr);
    LiveEffectConvertColorMessage message{};
    message.parameters = c.dictionary ? ref(parameters) : nullptr;
    message.conversion = c.code;

    EXPECT_EQ(dw::ConvertColorSpace(message), c.result) << c.name;
    EXPECT_EQ(fake::integerOf(parameters, "colr"), c.colrAfter) << c.name;
    EXPECT_EQ(message.conversion, c.codeAfter) << c.name;
  }
}

}  // namespace
