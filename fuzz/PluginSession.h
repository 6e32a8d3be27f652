#pragma once
#include <string>
#include <vector>

#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/Registrations.h"

namespace fuzz {

// The real plug-in started in a reference host over a one-layer document holding a path, a group
// with a path inside, a text frame and a raster: what the message fuzzers talk to.
class PluginSession {
 public:
  PluginSession();
  ~PluginSession();
  PluginSession(const PluginSession&) = delete;
  PluginSession& operator=(const PluginSession&) = delete;

  // Loads and starts the plug-in (again, after a shut-down); false when start-up failed.
  bool launch();
  bool started() const { return plugin && plugin->state() == refhost::Plugin::State::Started; }
  // Brings an unloaded plug-in back, as a host does before it delivers a working message.
  bool ready();

  // kHostNotFound when the plug-in installed no such item (it is not started).
  DWErr choose(const std::string& item);
  const refhost::LiveEffectRecord* effect();
  // The document's art, freshly listed: messages may delete or replace any of it.
  std::vector<refhost::Art*> art() const;
  refhost::Art* rect(double left, double bottom, double right, double top, refhost::Art* parent = nullptr);

  refhost::Host host;
  refhost::Document* doc = nullptr;
  refhost::Plugin* plugin = nullptr;
};

constexpr const char kRasterizeItem[] = "Rasterize 8 menu item";
constexpr const char kSettingsItem[] = "Live Rasterize Effect Setting";

}  // namespace fuzz
