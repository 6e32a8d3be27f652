#include "SuiteHost.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "refhost/loader/HostErrors.h"

namespace e2e {

namespace {

constexpr const char* kReportLog = "DWRasterizeClient.log";
constexpr const char* kDemoItem = "Rasterize Suite Demo";

}  // namespace

refhost::Art* addRectangle(refhost::Document& document, refhost::Layer* layer, double left, double top, double right,
                           double bottom, const refhost::Paint& fill) {
  using namespace refhost;
  Art* art = document.newArt(ArtKind::Path, PaintOrder::InsideOnTop, layer->group());
  PathData& path = *art->path();
  path.segments = {PathSegment::at(left, top), PathSegment::at(right, top), PathSegment::at(right, bottom),
                   PathSegment::at(left, bottom)};
  path.closed = true;
  art->pathStyle().fillPaint = true;
  art->pathStyle().fill = fill;
  return art;
}

int64_t ReportLine::code() const {
  if (text.rfind("0", 0) == 0) return 0;
  if (text.size() >= 6 && text[0] == '\'' && text[5] == '\'') {
    const char code[5] = {text[1], text[2], text[3], text[4], 0};
    return refhost::hostCode(code);
  }
  return -1;
}

uint64_t ReportLine::hexAfter(const std::string& label) const {
  const size_t at = text.find(label);
  if (at == std::string::npos) return 0;
  const size_t hex = text.find("0x", at + label.size());
  return hex == std::string::npos ? 0 : std::strtoull(text.c_str() + hex + 2, nullptr, 16);
}

SuiteHost::SuiteHost() : host_(std::make_unique<refhost::Host>()) {
  rasterize_ = &host_->launchPlugin(kPluginPath);
  client_ = &host_->launchPlugin(kClientPath);
  host_->notifyApplicationStarted();
  host_->logs().keep(kReportLog);
}

SuiteHost::~SuiteHost() { host_->shutdownAll(); }

refhost::Document& SuiteHost::open(std::unique_ptr<refhost::Document> document) {
  refhost::Document& opened = *document;
  host_->setDocument(std::move(document));
  return opened;
}

int32_t SuiteHost::runClient() {
  const refhost::MenuItemRecord* item = nullptr;
  for (const refhost::MenuItemRecord* candidate : host_->registrations().menuItems())
    if (candidate->name == kDemoItem) item = candidate;
  if (!item) {
    ADD_FAILURE() << "the client installed no menu item";
    return -1;
  }
  const size_t before = host_->logs().lines(kReportLog).size();
  const int32_t result = host_->chooseMenuItem(*item);
  report_.clear();
  const std::vector<std::string> lines = host_->logs().lines(kReportLog);
  for (size_t i = before; i < lines.size(); ++i) {
    const size_t colon = lines[i].find(": ");
    report_.push_back(colon == std::string::npos ? ReportLine{lines[i], ""}
                                                 : ReportLine{lines[i].substr(0, colon), lines[i].substr(colon + 2)});
  }
  return result;
}

ReportLine SuiteHost::line(const std::string& function) const {
  for (const ReportLine& line : report_)
    if (line.function == function) return line;
  ADD_FAILURE() << "the client reported nothing for " << function;
  return ReportLine{function, "(none)"};
}

refhost::Art* SuiteHost::art(uint64_t handle) const {
  return host_->document() ? host_->document()->liveArt(reinterpret_cast<const void*>(handle)) : nullptr;
}

}  // namespace e2e
