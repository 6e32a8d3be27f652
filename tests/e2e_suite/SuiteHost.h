#pragma once
// The reference host with the real Rasterize plug-in and the sample client loaded beside it, and
// small documents whose rasters are known exactly.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"

namespace e2e {

inline const std::string kPluginPath = DW_PLUGIN_PATH;
inline const std::string kClientPath = DW_CLIENT_PATH;
inline const std::string kToolPath = DW_TOOL_PATH;

// A filled rectangle path, left/top/right/bottom in points.
refhost::Art* addRectangle(refhost::Document& document, refhost::Layer* layer, double left, double top, double right,
                           double bottom, const refhost::Paint& fill);

// One line of the client's report, split at its first ": ".
struct ReportLine {
  std::string function;
  std::string text;  // after ": "
  // The code the line starts with: 0, or a four-character code such as 'R2Wd'.
  int64_t code() const;
  // The first "0x..." value after `label` (a raster or table address, options), or 0.
  uint64_t hexAfter(const std::string& label) const;
};

class SuiteHost {
 public:
  SuiteHost();
  ~SuiteHost();

  refhost::Host& host() { return *host_; }
  refhost::Plugin& rasterize() { return *rasterize_; }
  refhost::Plugin& client() { return *client_; }

  // Makes the document the open one; the host owns it.
  refhost::Document& open(std::unique_ptr<refhost::Document> document);
  // Chooses the client's menu item; its report lines are kept for report().
  int32_t runClient();
  const std::vector<ReportLine>& report() const { return report_; }
  // The line of a function, or a test failure naming it when there is none.
  ReportLine line(const std::string& function) const;
  // The art a handle in the report names.
  refhost::Art* art(uint64_t handle) const;

 private:
  std::unique_ptr<refhost::Host> host_;
  refhost::Plugin* rasterize_ = nullptr;
  refhost::Plugin* client_ = nullptr;
  std::vector<ReportLine> report_;
};

}  // namespace e2e
