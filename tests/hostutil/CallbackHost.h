// The simulated host's records, and a check for leaks and misuse at the end of each test.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "simulator/base/Faults.h"
#include "simulator/base/Log.h"
#include "simulator/host/Host.h"
#include "simulator/host/callbacks/CallbackRecords.h"

namespace hostutil_test {

class CallbackTest : public testing::Test {
 protected:
  /// Nothing may be leaked, freed twice or used after it was freed.
  void TearDown() override {
    simulator::theFaults().clear();
    callbacks.reportLeaks();
    host.reportLeaks();
    EXPECT_EQ(simulator::theLog().misuses() - misusesBefore_, expectedMisuses);
  }

  /// Makes the next 1000 calls of `procedure` fail with `error`.
  static void fail(const std::string& procedure, int error) {
    simulator::theFaults().add({procedure, error, 0, 1000});
  }

  simulator::Host& host = simulator::theHost();
  simulator::Callbacks& callbacks = simulator::theCallbacks();
  const BufferProcs buffers = simulator::bufferProcs();
  const ResourceProcs resources = simulator::resourceProcs();
  const HandleProcs handles = simulator::handleProcs();
  int expectedMisuses = 0;

 private:
  const int misusesBefore_ = simulator::theLog().misuses();
};

}  // namespace hostutil_test
