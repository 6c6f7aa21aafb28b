// Dumps in which each host call in turn fails, once or from then on.
#include <HostTerms.h>

#include <fstream>
#include <regex>
#include <sstream>

#include "simulator/base/Faults.h"
#include "tests/codegen/GeneratorFixture.h"
#include "tests/support/Build.h"

namespace {

constexpr std::int32_t kError = -1731;
constexpr std::uint64_t kForGood = UINT64_MAX;
/// Descriptor, list, reference and control, acquired first and in this order.
constexpr std::uint64_t kActionSuites = 4;

/// The lines of the text.
std::multiset<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::multiset<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.insert(line);
  return lines;
}

/// Whether a failed call may have caused the line: an error line, or a code in place of a name that
/// the host did not return.
bool isDueToFailure(const std::string& line) {
  static const std::regex allowed(
      " *(ERROR DumpInfoFromDescriptor type: '.*, key: .*, entry: \\d+"
      "|ERROR: DumpInfoFromList type: '.*, entry: \\d+, Total Entry: \\d+"
      "|ERROR: DumpInfoFromReferene on (GetForm|GetDesiredClass|GetEnumerated|GetIdentifier"
      "|GetProperty|GetOffset|GetIndex|GetNameLength|GetName) = -1731"
      "|error = sPSActionControl->StringIDToTypeID\\(\"'\", &runtime[A-Z][a-z]+ID\\);"
      "|SPErr Play'\\(/\\*your parameters go here\\*/void\\))");
  return std::regex_match(line, allowed);
}

class DumpDescriptorFailures : public GeneratorFixture {
 protected:
  DumpDescriptorFailures() {
    const std::string path = (folder() / "picture.psd").string();
    std::ofstream stream(path);
    json_ = R"([
      {"key": "$first", "type": "long", "value": 1},
      {"key": "A   ", "type": "comp", "value": 2},
      {"key": "B   ", "type": "doub", "value": 3.5},
      {"key": "C   ", "type": "UntF", "unit": "$inches", "value": 4},
      {"key": "D   ", "type": "bool", "value": true},
      {"key": "E   ", "type": "enum", "enumType": "$kinds", "value": "$kind"},
      {"key": "F   ", "type": "type", "value": "$thing"},
      {"key": "G   ", "type": "GlbC", "value": "Lyr "},
      {"key": "H   ", "type": "Objc", "class": "$class", "value": [
        {"key": "I   ", "type": "TEXT", "value": "text"}]},
      {"key": "J   ", "type": "GlbO", "class": "Brsh", "value": []},
      {"key": "K   ", "type": "VlLs", "value": [
        {"type": "long", "value": 1}, {"type": "comp", "value": 2}, {"type": "doub", "value": 3},
        {"type": "UntF", "unit": "#Pxl", "value": 4}, {"type": "bool", "value": true},
        {"type": "enum", "enumType": "Ordn", "value": "Trgt"}, {"type": "type", "value": "Lyr "},
        {"type": "GlbC", "value": "Lyr "}, {"type": "Objc", "class": "Brsh", "value": []},
        {"type": "GlbO", "class": "Brsh", "value": []}, {"type": "VlLs", "value": []},
        {"type": "obj ", "value": [{"form": "Clss", "class": "Lyr "}]},
        {"type": "alis", "value": ")" +
            path + R"("}, {"type": "TEXT", "value": "text"},
        {"type": "bkmk", "value": ")" +
            path + R"("}, {"type": "tdta", "value": "AAEC"}]},
      {"key": "L   ", "type": "obj ", "value": [
        {"form": "Enmr", "class": "Lyr ", "enumType": "Ordn", "value": "Trgt"},
        {"form": "Idnt", "class": "Lyr ", "value": 1}, {"form": "indx", "class": "Lyr ", "value": 2},
        {"form": "rele", "class": "Lyr ", "value": 3}, {"form": "prop", "class": "Prpr", "key": "$p"},
        {"form": "name", "class": "Lyr ", "value": "name"}]},
      {"key": "M   ", "type": "alis", "value": ")" +
            path + R"("},
      {"key": "N   ", "type": "bkmk", "value": ")" +
            path + R"("},
      {"key": "O   ", "type": "TEXT", "value": "text"},
      {"key": "P   ", "type": "tdta", "value": "AAEC"}])";
  }

  /// A dump in which `times` calls from the n-th on fail, without the numbers of the handles.
  /// Acquires the suites again.
  std::string dumpedWithFailure(PIActionDescriptor desc, std::uint64_t n, std::uint64_t times) {
    PIUSuitesRelease();
    simulator::theFaults().clear();
    simulator::theFaults().add({"*", kError, n, times});
    const std::string text = numbered(dumped(event_, desc));
    fired_ = simulator::theFaults().fired();
    simulator::theFaults().clear();
    EXPECT_EQ(simulator::theHost().objectsOwned(), 0u) << "leaked after call " << n << " failed";
    EXPECT_EQ(freeZone, nullptr);
    return std::regex_replace(text, std::regex("<\\d+>"), "<>");
  }

  /// Expects every line that is not in the whole text to be due to the failure.
  static void expectOnlyFailures(const std::string& text, const std::multiset<std::string>& whole,
                                 std::uint64_t n) {
    for (const std::string& line : linesOf(text)) {
      EXPECT_TRUE(whole.contains(line) || isDueToFailure(line)) << "call " << n << ": " << line;
    }
  }

  /// Expects the end of the function, or no text at all if the n-th call acquires a suite without
  /// which nothing can be written.
  static void expectFrame(const std::string& text, std::uint64_t n) {
    if (n < kActionSuites) {
      EXPECT_EQ(text, "") << "call " << n;
    } else {
      EXPECT_TRUE(text.ends_with("     return error;\n}\n\n")) << "call " << n;
    }
  }

  std::string json_;
  std::uint32_t event_ = simulator::theHost().typeIds().idOf("sampleEvent");
  std::uint64_t fired_ = 0;
};

TEST_F(DumpDescriptorFailures, OfOneCallLeaveTheNamedErrorLinesAndTheRestOfTheText) {
  const auto desc = descriptor(json_);
  const auto whole = linesOf(dumpedWithFailure(desc, UINT64_MAX, 1));
  constexpr std::uint64_t kStep = testing_support::kSanitized ? 3 : 1;
  std::uint64_t n = 0;
  std::size_t withErrorLine = 0;
  do {
    const std::string text = dumpedWithFailure(desc, n, 1);
    expectOnlyFailures(text, whole, n);
    expectFrame(text, n);
    if (text.find("ERROR") != std::string::npos) ++withErrorLine;
    n += kStep;
  } while (fired_ > 0);
  EXPECT_GT(n, 150u) << "calls were made";
  EXPECT_GT(withErrorLine, 60u / kStep);
}

TEST_F(DumpDescriptorFailures, ThatPersistLeaveTheFrameOfTheFunction) {
  const auto desc = descriptor(json_);
  const auto whole = linesOf(dumpedWithFailure(desc, UINT64_MAX, 1));
  constexpr std::uint64_t kStep = testing_support::kSanitized ? 7 : 1;
  std::uint64_t n = 0;
  do {
    const std::string text = dumpedWithFailure(desc, n, kForGood);
    expectOnlyFailures(text, whole, n);
    expectFrame(text, n);
    n += kStep;
  } while (fired_ > 0);
}

}  // namespace
