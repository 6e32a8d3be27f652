#include "tests/faults/FaultDriver.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "refhost/loader/HostErrors.h"
#include "tests/faults/LeakCheck.h"

namespace faults {

namespace {

using refhost::Host;

// Handles the host's suites keep in process-wide tables, out of the leak checker's sight: each
// creation is balanced against its disposal in the traced calls.
struct HandlePair {
  const char* kind;
  std::vector<std::string> create;
  std::vector<std::string> dispose;
};

const std::vector<HandlePair>& handlePairs() {
  static const std::vector<HandlePair> pairs = {
      {"art set", {"DW Art Set Suite/NewArtSet"}, {"DW Art Set Suite/DisposeArtSet"}},
      {"port", {"Corvel Graphics Manager Suite/NewOffscreenPort"}, {"Corvel Graphics Manager Suite/DisposePort"}},
      {"graphics object",
       {"Corvel Graphics Manager Suite/NewObject", "Corvel Graphics Manager Suite/NewPortColorSpace"},
       {"Corvel Graphics Manager Suite/ReleaseObject"}},
      {"colour space list", {"DW Color Space Suite/NewColorSpaceList"}, {"DW Color Space Suite/DisposeList"}},
      {"colour space",
       {"DW Color Space Suite/NewProcessColorSpace", "DW Color Space Suite/NewProcessComponentColorSpace",
        "DW Color Space Suite/NewSpotColorSpace", "DW Color Space Suite/NewColorSpaceFromList"},
       {"DW Color Space Suite/Release"}},
      {"parameter block", {"DW Action Manager Suite/NewParamBlock"}, {"DW Action Manager Suite/DisposeParamBlock"}},
      {"parameter description",
       {"DW Action Manager Suite/NewParamDescription"},
       {"DW Action Manager Suite/DisposeParamDescription"}},
      {"style parser", {"DW Art Style Parser Suite/NewParser"}, {"DW Art Style Parser Suite/DisposeParser"}},
  };
  return pairs;
}

bool contains(const std::vector<std::string>& list, const std::string& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

// What the plug-in holds of the host's resources after the operation.
struct Holdings {
  size_t blocks = 0;
  size_t strings = 0;
  int64_t suites = 0;
  std::map<std::string, int64_t> handles;  // creations minus disposals, by kind

  static Holdings of(Host& host, const std::vector<std::string>& calls, uint64_t failedIndex) {
    Holdings h;
    h.blocks = host.memory().outstandingBlocks();
    h.strings = host.strings().live();
    for (const refhost::RegisteredSuite* suite : host.suites().all()) h.suites += suite->held;
    for (size_t i = 0; i < calls.size(); ++i) {
      if (i + 1 == failedIndex) continue;  // the failed call made or freed nothing
      for (const HandlePair& pair : handlePairs()) {
        if (contains(pair.create, calls[i])) ++h.handles[pair.kind];
        if (contains(pair.dispose, calls[i])) --h.handles[pair.kind];
      }
    }
    return h;
  }
};

bool isRelease(const std::string& call) {
  const std::string function = call.substr(call.find('/') + 1);
  for (const char* verb : {"Dispose", "Release", "Free", "Remove"})
    if (function.rfind(verb, 0) == 0) return true;
  return false;
}

// A failed release keeps what it should have freed; that one object is the host's to lose.
std::string compare(const Holdings& clean, const Holdings& now, const std::string& failedCall) {
  const int64_t slack = isRelease(failedCall) ? 1 : 0;
  std::string wrong;
  // Holding less than a clean run is no leak: a failure may come before a suite is taken.
  auto check = [&](const std::string& what, int64_t expected, int64_t actual) {
    if (actual > expected + slack)
      wrong += " " + what + " " + std::to_string(actual) + " (clean run " + std::to_string(expected) + ")";
  };
  check("host blocks", int64_t(clean.blocks), int64_t(now.blocks));
  check("host strings", int64_t(clean.strings), int64_t(now.strings));
  check("suites held", clean.suites, now.suites);
  for (const HandlePair& pair : handlePairs()) {
    const auto c = clean.handles.find(pair.kind);
    const auto n = now.handles.find(pair.kind);
    check(std::string(pair.kind) + "s kept", c == clean.handles.end() ? 0 : c->second,
          n == now.handles.end() ? 0 : n->second);
  }
  return wrong;
}

struct Observed {
  DWErr code = 0;
  bool delivered = false;
  std::string failedCall;
  std::string stateProblem;
  std::string holdingProblem;
};

Observed runOnce(const Scenario& scenario, Mode mode, uint64_t k, const Holdings* clean, Holdings* measured,
                 uint64_t* calls) {
  Observed seen;
  std::unique_ptr<ScenarioRun> run = scenario.make();
  Host& host = run->host();
  host.controls().traceCalls(true);
  if (k != 0) host.controls().failCall(k, injectedCode(mode));
  const uint64_t before = host.controls().callCount();
  seen.code = run->act();
  const uint64_t made = host.controls().callCount() - before;
  seen.delivered = host.controls().failureDelivered();
  host.controls().clearFailure();
  std::vector<std::string> trace = host.controls().calls();
  trace.erase(trace.begin(), trace.end() - std::min<std::ptrdiff_t>(std::ptrdiff_t(made), std::ptrdiff_t(trace.size())));
  if (k != 0 && k <= trace.size()) seen.failedCall = trace[k - 1];
  if (calls) *calls = made;
  if (seen.code != 0) seen.stateProblem = run->checkAfterFailure();
  const Holdings now = Holdings::of(host, trace, k);
  if (measured) *measured = now;
  if (clean) seen.holdingProblem = compare(*clean, now, seen.failedCall);
  run->finish();
  return seen;
}

// The positions of the calls to fail: all of them, or in allocation mode those that allocate.
std::vector<uint64_t> candidates(const std::vector<std::string>& calls, Mode mode) {
  std::vector<uint64_t> ks;
  for (size_t i = 0; i < calls.size(); ++i)
    if (mode == Mode::HostError || allocates(calls[i])) ks.push_back(i + 1);
  return ks;
}

}  // namespace

const char* modeName(Mode mode) { return mode == Mode::HostError ? "host error" : "allocation"; }

DWErr injectedCode(Mode mode) {
  return mode == Mode::HostError ? refhost::hostCode("XFLT") : refhost::kHostOutOfMemory;
}

bool allocates(const std::string& call) {
  const std::string function = call.substr(call.find('/') + 1);
  for (const char* verb : {"New", "Allocate", "Create", "Duplicate", "Copy"})
    if (function.rfind(verb, 0) == 0) return true;
  return false;
}

Cell runScenario(const Scenario& scenario, Mode mode, uint64_t stride, uint64_t firstK) {
  Cell cell;
  cell.scenario = scenario.name;
  cell.mode = mode;
  const DWErr injected = injectedCode(mode);

  // The clean run, twice: the plug-in's process-wide lookups happen once, so the second one is
  // the typical run whose calls are counted.
  Holdings clean;
  uint64_t total = 0;
  runOnce(scenario, mode, 0, nullptr, nullptr, nullptr);
  std::vector<std::string> trace;
  {
    std::unique_ptr<ScenarioRun> run = scenario.make();
    run->host().controls().traceCalls(true);
    const uint64_t before = run->host().controls().callCount();
    const DWErr code = run->act();
    total = run->host().controls().callCount() - before;
    trace = run->host().controls().calls();
    trace.erase(trace.begin(), trace.end() - std::ptrdiff_t(total));
    clean = Holdings::of(run->host(), trace, 0);
    run->finish();
    if (code != 0) throw std::runtime_error(scenario.name + ": the clean run failed with " + refhost::formatCode(code));
  }
  cell.calls = total;
  LeakCheck leaks;

  const std::vector<uint64_t> ks = candidates(trace, mode);
  for (size_t index = firstK - 1; index < ks.size(); index += stride) {
    const uint64_t k = ks[index];
    ++cell.reruns;
    const Observed seen = runOnce(scenario, mode, k, &clean, nullptr, nullptr);
    const std::string where = scenario.name + " [" + modeName(mode) + "] call " + std::to_string(k) + " (" +
                              (seen.failedCall.empty() ? trace[k - 1] : seen.failedCall) + ")";
    std::string wrong;
    if (!seen.delivered) {
      ++cell.unreached;
      if (seen.code != 0) wrong += " answered " + refhost::formatCode(seen.code) + " without a failed call;";
    } else if (seen.code == 0) {
      ++cell.ignored;
    } else if (seen.code == injected) {
      ++cell.reported;
    } else if (std::find(scenario.mapped.begin(), scenario.mapped.end(), seen.code) != scenario.mapped.end()) {
      ++cell.mapped;
    } else if (contains(scenario.knownDeviations, seen.failedCall)) {
      cell.deviations.push_back(where + ": answered " + refhost::formatCode(seen.code));
    } else {
      wrong += " answered " + refhost::formatCode(seen.code) + ";";
    }
    if (!seen.stateProblem.empty()) wrong += " " + seen.stateProblem + ";";
    if (!seen.holdingProblem.empty()) wrong += " left" + seen.holdingProblem + ";";
    if (leaks.newLeaks()) wrong += " leaked heap memory (see the leak report above);";
    if (!wrong.empty()) cell.failures.push_back(where + ":" + wrong);
  }
  return cell;
}

}  // namespace faults
