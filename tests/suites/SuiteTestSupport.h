#pragma once
// Suite tests run a real Host with an open document and call the suite tables the host hands
// out by name and version, as a plug-in does.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "host/all_suites.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace suitetest {

using namespace refhost;

inline DWArtHandle h(const Art* art) { return reinterpret_cast<DWArtHandle>(const_cast<Art*>(art)); }
inline DWLayerHandle h(const Layer* layer) { return reinterpret_cast<DWLayerHandle>(const_cast<Layer*>(layer)); }

class SuiteTest : public ::testing::Test {
 protected:
  SuiteTest();

  // The table the basic suite hands out; throws when the host has none, which fails the test.
  template <typename Suite>
  const Suite& suite(const char* name, int32_t version) {
    const void* table = nullptr;
    if (host.basicSuite()->AcquireSuite(name, version, &table) != kDWNoErr || !table)
      throw std::runtime_error(std::string("no suite ") + name);
    return *static_cast<const Suite*>(table);
  }

  const DWArtSuite& art() { return suite<DWArtSuite>(kDWArtSuite, kDWArtSuiteVersion); }

  // A closed rectangle path from (left, bottom) to (right, top), placed by the model.
  Art* rect(double left, double bottom, double right, double top, PaintOrder order = PaintOrder::AboveAll,
            Art* prep = nullptr);
  Art* group(PaintOrder order = PaintOrder::AboveAll, Art* prep = nullptr);

  Host host;
  Document& doc;
  Layer* layer;
};

}  // namespace suitetest
