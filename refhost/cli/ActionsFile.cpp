#include "refhost/cli/ActionsFile.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

using Json = nlohmann::json;

constexpr const char kFormat[] = "rasterize-actions";
constexpr int kVersion = 1;

// Printable codes as their four characters ("colr"), others as "0x" and eight hex digits.
std::string codeText(uint32_t code) {
  const std::string text = fourCharText(code);
  for (char c : text)
    if (c < 0x20 || c > 0x7E) {
      char hex[11];
      std::snprintf(hex, sizeof hex, "0x%08X", unsigned(code));
      return hex;
    }
  return text;
}

const char* typeName(ActionValue::Type type) {
  switch (type) {
    case ActionValue::Type::Enumerated: return "enumerated";
    case ActionValue::Type::Integer: return "integer";
    case ActionValue::Type::Boolean: return "boolean";
    case ActionValue::Type::UnitReal: return "unitReal";
  }
  return "integer";
}

Json valueJson(const ActionValue& value) {
  Json out = {{"type", typeName(value.type)}};
  switch (value.type) {
    case ActionValue::Type::Enumerated:
      out["name"] = value.name;
      out["value"] = value.integer;
      break;
    case ActionValue::Type::Integer: out["value"] = value.integer; break;
    case ActionValue::Type::Boolean: out["value"] = value.integer != 0; break;
    case ActionValue::Type::UnitReal:
      out["unit"] = codeText(value.unit);
      out["value"] = value.real;
      break;
  }
  return out;
}

class Reader {
 public:
  explicit Reader(std::string path) : path_(std::move(path)) {}

  [[noreturn]] void fail(const std::string& where, const std::string& what) const {
    throw ToolError(path_ + ": " + where + ": " + what);
  }

  const Json& field(const Json& object, const char* name, const std::string& where) const {
    if (!object.is_object() || !object.contains(name)) fail(where, std::string("\"") + name + "\" is missing");
    return object.at(name);
  }

  int32_t int32(const Json& value, const std::string& where) const {
    if (!value.is_number_integer() || value.get<int64_t>() < INT32_MIN || value.get<int64_t>() > INT32_MAX)
      fail(where, "expected a 32-bit integer");
    return int32_t(value.get<int64_t>());
  }

  uint32_t code(const Json& value, const std::string& where) const {
    const std::string text = value.is_string() ? value.get<std::string>() : std::string();
    if (text.size() == 4) return (uint32_t(uint8_t(text[0])) << 24) | (uint32_t(uint8_t(text[1])) << 16) |
                                 (uint32_t(uint8_t(text[2])) << 8) | uint32_t(uint8_t(text[3]));
    if (text.size() == 10 && text.compare(0, 2, "0x") == 0) {
      size_t used = 0;
      try {
        const unsigned long parsed = std::stoul(text.substr(2), &used, 16);
        if (used == 8) return uint32_t(parsed);
      } catch (const std::exception&) {
      }
    }
    fail(where, "expected a four-character code or 0x and eight hex digits");
  }

  ActionValue value(const Json& json, const std::string& where) const {
    const Json& type = field(json, "type", where);
    const Json& raw = field(json, "value", where);
    ActionValue out;
    const std::string name = type.is_string() ? type.get<std::string>() : std::string();
    if (name == "enumerated") {
      out.type = ActionValue::Type::Enumerated;
      const Json& label = field(json, "name", where);
      if (!label.is_string()) fail(where + ".name", "expected a string");
      out.name = label.get<std::string>();
      out.integer = int32(raw, where + ".value");
    } else if (name == "integer") {
      out.type = ActionValue::Type::Integer;
      out.integer = int32(raw, where + ".value");
    } else if (name == "boolean") {
      out.type = ActionValue::Type::Boolean;
      if (!raw.is_boolean()) fail(where + ".value", "expected true or false");
      out.integer = raw.get<bool>() ? 1 : 0;
    } else if (name == "unitReal") {
      out.type = ActionValue::Type::UnitReal;
      out.unit = code(field(json, "unit", where), where + ".unit");
      if (!raw.is_number() || !std::isfinite(raw.get<double>())) fail(where + ".value", "expected a number");
      out.real = raw.get<double>();
    } else {
      fail(where + ".type", "expected \"enumerated\", \"integer\", \"boolean\" or \"unitReal\"");
    }
    return out;
  }

  std::vector<ActionStep> run(const Json& root) const {
    if (!root.is_object()) fail("the file", "expected a JSON object");
    const Json& format = field(root, "format", "the file");
    if (!format.is_string() || format.get<std::string>() != kFormat) fail("format", std::string("expected \"") + kFormat + "\"");
    if (int32(field(root, "version", "the file"), "version") != kVersion)
      fail("version", "unsupported version (expected " + std::to_string(kVersion) + ")");
    const Json& actions = field(root, "actions", "the file");
    if (!actions.is_array()) fail("actions", "expected an array");
    std::vector<ActionStep> steps;
    for (size_t i = 0; i < actions.size(); ++i) {
      const std::string where = "actions[" + std::to_string(i) + "]";
      const Json& entry = actions[i];
      ActionStep step;
      const Json& event = field(entry, "event", where);
      if (!event.is_string() || event.get<std::string>().empty()) fail(where + ".event", "expected an event name");
      step.action.eventName = event.get<std::string>();
      if (entry.contains("dialogState")) step.action.dialogState = int32(entry["dialogState"], where + ".dialogState");
      if (entry.contains("showDialog")) {
        if (!entry["showDialog"].is_boolean()) fail(where + ".showDialog", "expected true or false");
        step.showDialog = entry["showDialog"].get<bool>();
      }
      if (entry.contains("parameters")) {
        const Json& parameters = entry["parameters"];
        if (!parameters.is_object()) fail(where + ".parameters", "expected an object keyed by four-character codes");
        for (auto it = parameters.begin(); it != parameters.end(); ++it) {
          const std::string at = where + ".parameters." + it.key();
          step.action.parameters.values[code(Json(it.key()), at)] = value(it.value(), at);
        }
      }
      steps.push_back(std::move(step));
    }
    return steps;
  }

 private:
  std::string path_;
};

}  // namespace

std::string actionsJson(const std::vector<RecordedAction>& recorded) {
  Json actions = Json::array();
  for (const RecordedAction& action : recorded) {
    Json parameters = Json::object();
    for (const auto& entry : action.parameters.values) parameters[codeText(entry.first)] = valueJson(entry.second);
    actions.push_back(
        {{"event", action.eventName}, {"dialogState", action.dialogState}, {"showDialog", false}, {"parameters", parameters}});
  }
  const Json root = {{"format", kFormat}, {"version", kVersion}, {"actions", actions}};
  return root.dump(2) + "\n";
}

std::vector<ActionStep> readActionsFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw ToolError(path + ": cannot be opened");
  std::stringstream text;
  text << in.rdbuf();
  const Json root = Json::parse(text.str(), nullptr, false);
  if (root.is_discarded()) throw ToolError(path + ": not valid JSON");
  return Reader(path).run(root);
}

void ActionRecording::addTo(CLI::App& verb) {
  verb.add_option("--record-actions", path,
                  "Record the host's actions while the verb runs and write them to FILE (for the play verb)")
      ->type_name("FILE");
}

void ActionRecording::start(Host& host) const {
  if (!path.empty()) host.actions().recording = true;
}

void ActionRecording::stage(Host& host, StagedFiles& files) const {
  if (path.empty()) return;
  std::ofstream out(files.stage(path), std::ios::binary);
  out << actionsJson(host.actions().recorded());
  if (!out.flush()) throw ToolError(path + ": cannot be written");
}

}  // namespace cli
}  // namespace refhost
