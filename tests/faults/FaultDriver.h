#pragma once
// Runs one operation of the real plug-in again and again, with the k-th host call of the
// operation failing, and judges every rerun against what a failure must leave behind.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/types.h"
#include "refhost/loader/Host.h"

namespace faults {

// One fresh host with the plug-in started and the document arranged, ready for the operation.
class ScenarioRun {
 public:
  virtual ~ScenarioRun() = default;
  virtual refhost::Host& host() = 0;
  // The operation under test; its host calls are the ones counted and failed.
  virtual DWErr act() = 0;
  // After an operation that reported an error: what is wrong with the state it left, or "".
  virtual std::string checkAfterFailure() { return {}; }
  // Called before the host goes away (shut-down of the plug-in, release of held suites).
  virtual void finish() {}
};

struct Scenario {
  std::string name;
  // What a failed operation promises, for the report.
  std::string promise;
  std::function<std::unique_ptr<ScenarioRun>()> make;
  // Codes the operation may answer instead of the injected one (a documented mapping).
  std::vector<DWErr> mapped;
  // Calls ("Suite/Function") whose failure the operation is known to answer with another code;
  // such reruns are counted apart and listed, not hidden.
  std::vector<std::string> knownDeviations;
};

enum class Mode {
  HostError,   // the call answers a host error code of its own
  Allocation,  // only calls that allocate are failed, with the host's out-of-memory code
};
const char* modeName(Mode mode);
DWErr injectedCode(Mode mode);
// Whether a host call ("Suite/Function") hands out something new.
bool allocates(const std::string& call);

struct Cell {
  std::string scenario;
  Mode mode = Mode::HostError;
  uint64_t calls = 0;     // host calls of a clean run
  uint64_t reruns = 0;    // failed calls tried
  uint64_t reported = 0;  // the injected code came back
  uint64_t mapped = 0;    // a documented mapping of it came back
  uint64_t ignored = 0;   // success: the failure is one the plug-in may ignore
  uint64_t unreached = 0; // the k-th call was never made (call order differs between runs)
  std::vector<std::string> deviations;  // reruns answering another code at a known call
  std::vector<std::string> failures;  // one line per rerun that broke a promise
};

// Every `stride`-th k from 1 (1: all of them). `firstK` lets a sample start elsewhere.
Cell runScenario(const Scenario& scenario, Mode mode, uint64_t stride = 1, uint64_t firstK = 1);

}  // namespace faults
