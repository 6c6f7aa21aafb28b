// mrvsim: runs the plug-in in a simulated Mac with a simulated host and device.
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "mrvsim/CommandLine.h"
#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "simulator/scenario/Interrupts.h"
#include "simulator/scenario/Leftovers.h"
#include "simulator/scenario/WatchedProcess.h"

namespace {

int run(const std::vector<std::string>& arguments) {
  try {
    return simulator::parseCommandLine(arguments)();
  } catch (const simulator::Interrupted& interrupted) {
    return simulator::kInterruptedBase + interrupted.signal;
  } catch (const std::bad_alloc&) {
    simulator::complain("there is not enough memory");
  } catch (const std::exception& error) {
    simulator::complain(error.what());
  }
  return simulator::kNotDone;
}

}  // namespace

int main(int argc, char** argv) {
  simulator::takeStandardDescriptors();
  simulator::noteInterrupts();
  simulator::adoptOrphans();
  simulator::theLeftovers().guard();
  const int status = run({argv + 1, argv + argc});
  simulator::theLeftovers().finish();
  return status;
}
