#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>
#include <sstream>

#include "refhost/cli/Tool.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

std::string hex(uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", value);
  return text;
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

void printProperties(std::ostream& out, const Plugin& plugin) {
  const PluginProperties& properties = plugin.properties();
  out << "property list: kind " << fourCharText(properties.kind) << ", interface version "
      << properties.interfaceVersion << ", entry point " << properties.entryPoint << ", name "
      << quoted(properties.name) << "\n";
  for (const auto& suite : properties.exports)
    out << "  announces suite " << quoted(suite.name) << " version " << suite.version << "\n";
}

void printMenus(std::ostream& out, Host& host, const Plugin& plugin) {
  out << "menu groups:\n";
  for (const MenuGroupRecord* group : host.registrations().menuGroups())
    if (group->owner == &plugin)
      out << "  " << quoted(group->name) << " by " << quoted(group->nearGroup) << ", options " << hex(group->options)
          << "\n";
  out << "menu items:\n";
  for (const MenuItemRecord* item : host.registrations().menuItems()) {
    if (item->plugin != &plugin) continue;
    out << "  " << quoted(item->group) << " / " << quoted(item->name) << ": "
        << quoted(menuDisplayText(host.strings().localize(item->text))) << ", options " << hex(item->options);
    if (item->autoEnable) {
      out << ", enabled by action " << item->enableAction << " masks";
      for (uint32_t mask : item->enableMasks) out << " " << hex(mask);
    }
    out << "\n";
  }
}

void printEffects(std::ostream& out, Host& host, const Plugin& plugin) {
  out << "live effects:\n";
  for (const LiveEffectRecord* effect : host.registrations().liveEffects()) {
    if (effect->plugin != &plugin) continue;
    out << "  " << quoted(effect->name) << ": title " << quoted(effect->title) << ", version " << effect->majorVersion
        << "." << effect->minorVersion << ", options " << hex(effect->inputOptions) << " "
        << hex(effect->styleOptions) << "\n";
    for (const MenuItemRecord* item : effect->menuItems)
      out << "    menu item " << quoted(item->name) << " in " << quoted(item->group) << ": "
          << quoted(menuDisplayText(host.strings().localize(item->text))) << ", options " << hex(item->options)
          << "\n";
    for (const StyleConverterRecord& style : effect->styleNames)
      out << "    style converter " << quoted(style.name) << ", kinds " << hex(style.kinds) << ", options "
          << hex(style.options) << "\n";
  }
}

void printSuites(std::ostream& out, Host& host, const Plugin& plugin) {
  out << "exported suites:\n";
  for (const RegisteredSuite* suite : host.suites().all())
    if (suite->owner == &plugin)
      out << "  " << quoted(suite->name) << " version " << suite->version << ", internal version "
          << suite->internalVersion << "\n";
}

void printActions(std::ostream& out, Host& host, const Plugin& plugin) {
  out << "action events:\n";
  for (const ActionEventRecord* event : host.actions().events()) {
    if (event->plugin != &plugin) continue;
    out << "  " << quoted(event->name) << ": " << quoted(host.strings().localize(event->title)) << ", event value "
        << event->eventValue << ", " << event->parameters.size() << " parameters\n";
    for (const ActionParameterRecord& parameter : event->parameters)
      out << "    " << fourCharText(parameter.key) << " " << fourCharText(parameter.type) << " "
          << quoted(host.strings().localize(parameter.label)) << "\n";
  }
}

void printNotifiers(std::ostream& out, Host& host, const Plugin& plugin) {
  out << "notifiers:\n";
  for (const NotifierRecord* notifier : host.registrations().notifiers())
    if (notifier->plugin == &plugin) out << "  " << quoted(notifier->name) << " for " << quoted(notifier->type) << "\n";
}

void pluginInfo(Tool& tool) {
  auto session = tool.startSession();
  Host& host = session->host();
  Plugin& plugin = session->plugin();
  std::ostringstream out;
  out << "plug-in: " << quoted(plugin.name()) << " (" << plugin.path() << ")\n";
  printProperties(out, plugin);
  out << "options: " << hex(plugin.options()) << "\n";
  printMenus(out, host, plugin);
  printEffects(out, host, plugin);
  printSuites(out, host, plugin);
  printActions(out, host, plugin);
  printNotifiers(out, host, plugin);
  // Everything is printed only once the plug-in has also shut down cleanly.
  session->end();
  std::cout << out.str();
}

}  // namespace

void addPluginInfoVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand(
      "plugin-info", "Load the plug-in, start it up and list what it registered (menus, effect, suite, actions)");
  verb->callback([&tool] { pluginInfo(tool); });
}

}  // namespace cli
}  // namespace refhost
