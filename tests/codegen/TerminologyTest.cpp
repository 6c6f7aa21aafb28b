#include <PIGeneral.h>
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "codegen/Terminology.h"
#include "platform/FourCharCode.h"
#include "suites/Suites.h"
#include "tests/support/Build.h"

namespace {

using testing::ElementsAre;

/// A host with string IDs for a few run-time identifiers, which counts its calls.
struct FakeHost {
  std::map<std::uint32_t, std::string> stringIDs;
  int asked = 0;
  PSActionControlProcs procs{};
};

FakeHost host;

OSErr typeIDToStringID(DescriptorTypeID id, char* out, uint32 size) {
  ++host.asked;
  const auto found = host.stringIDs.find(id);
  std::strncpy(out, found == host.stringIDs.end() ? "rubbish" : found->second.c_str(), size);
  return found == host.stringIDs.end() ? errMissingParameter : 0;
}

class Terminology : public testing::Test {
 protected:
  Terminology() {
    host.procs.TypeIDToStringID = typeIDToStringID;
    sPSActionControl.suite = &host.procs;
  }
  ~Terminology() override {
    sPSActionControl.suite = nullptr;
    host = {};
  }

  static std::string name(std::uint32_t id, const char* kind) {
    char out[kNameSize];
    std::memset(out, 'x', sizeof out);
    LongToStr(static_cast<std::int32_t>(id), kind, out);
    return out;
  }
};

std::string quoted(std::uint32_t id) {
  const char code[] = {'\'',
                       static_cast<char>(id >> 24),
                       static_cast<char>(id >> 16),
                       static_cast<char>(id >> 8),
                       static_cast<char>(id),
                       '\'',
                       '\0'};
  return code;
}

/// The name that a scan of all rows from first to last finds.
std::string scanned(std::uint32_t id, const char* kind) {
  const auto row = std::find_if(std::begin(PSConstA), std::end(PSConstA), [&](const PSConst& r) {
    return r.id == id && std::strstr(r.name, kind) != nullptr;
  });
  return row == std::end(PSConstA) ? quoted(id) : row->name;
}

std::vector<std::string> lastRows(std::size_t count) {
  std::vector<std::string> names;
  for (std::size_t row = kPSConstCount - count; row < kPSConstCount; ++row) {
    names.push_back(quoted(PSConstA[row].id) + PSConstA[row].name);
  }
  return names;
}

std::map<std::string, int> countsByPrefix() {
  std::map<std::string, int> counts;
  for (const PSConst& row : PSConstA) {
    for (const char* prefix :
         {"plugInDialog", "type", "key", "enum", "event", "class", "form", "unit"}) {
      if (std::string_view(row.name).starts_with(prefix)) ++counts[prefix];
    }
  }
  return counts;
}

TEST(PSConstA, HasTheKnownNumberOfRowsOfEachPrefix) {
  EXPECT_EQ(countsByPrefix(), (std::map<std::string, int>{{"plugInDialog", 3},
                                                          {"type", 173},
                                                          {"key", 788},
                                                          {"enum", 637},
                                                          {"event", 221},
                                                          {"class", 193},
                                                          {"form", 9},
                                                          {"unit", 8}}));
  EXPECT_EQ(std::size(PSConstA), 3u + 173 + 788 + 637 + 221 + 193 + 9 + 8);
}

/// FNV-1a over the rows, each as "00000001 name" and a newline.
std::uint64_t checksum() {
  std::uint64_t sum = 0xCBF29CE484222325;
  for (const PSConst& row : PSConstA) {
    for (const char c : fmt::format("{:08x} {}\n", row.id, row.name)) {
      sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    }
  }
  return sum;
}

TEST(PSConstA, HasExactlyThePublishedRowsInTheirOrder) {
  EXPECT_EQ(checksum(), 0x1A9308736A54C01AU)
      << "computed from the published list, not from the table";
}

TEST(PSConstA, BeginsWithTheDialogModes) {
  EXPECT_EQ(PSConstA[0].id, 0u);
  EXPECT_STREQ(PSConstA[0].name, "plugInDialogDontDisplay");
  EXPECT_EQ(PSConstA[1].id, 1u);
  EXPECT_STREQ(PSConstA[1].name, "plugInDialogDisplay");
  EXPECT_EQ(PSConstA[2].id, 2u);
  EXPECT_STREQ(PSConstA[2].name, "plugInDialogSilent");
}

TEST(PSConstA, EndsWithTheUnits) {
  EXPECT_THAT(lastRows(4), ElementsAre("'#Prc'unitPercent", "'#Pxl'unitPixels",
                                       "'#Mlm'unitMillimeters", "'#Pnt'unitPoints"));
}

TEST_F(Terminology, SelectsAmongTheRowsOfOneIdentifierByKind) {
  const std::uint32_t id = fourCharCode("Lyr ");
  EXPECT_EQ(name(id, "class"), "classLayer");
  EXPECT_EQ(name(id, "event"), "'Lyr '");
  EXPECT_EQ(name(fourCharCode("setd"), "event"), "eventSet");
  EXPECT_EQ(name(fourCharCode("#Pxl"), "unit"), "unitPixels");
}

TEST_F(Terminology, MatchesAScanForEveryIdentifierOfTheTableAndEveryKind) {
  for (const PSConst& row : PSConstA) {
    for (const char* kind :
         {"event", "key", "class", "enum", "type", "unit", "form", "plugInDialog", "xxxx", "", "y",
          "D", "Display", "Color", "color", "keyA"}) {
      ASSERT_EQ(name(row.id, kind), scanned(row.id, kind)) << row.name << " as " << kind;
    }
  }
}

TEST_F(Terminology, MatchesAScanForManyOtherIdentifiers) {
  constexpr int kOthers = testing_support::kSanitized ? 200'000 : 1'000'000;
  std::set<std::uint32_t> known;
  for (const PSConst& row : PSConstA) known.insert(row.id);
  std::mt19937 engine(20);
  const auto random = [&] { return static_cast<std::uint32_t>(engine()); };
  int others = 0;
  while (others < kOthers) {
    // Half of them are near misses: they differ from a row's identifier in one byte.
    const std::uint32_t row = PSConstA[random() % kPSConstCount].id;
    const std::uint32_t id = others % 2 ? random() : row ^ (random() % 255 + 1) << random() % 4 * 8;
    if (known.contains(id)) continue;
    ++others;
    ASSERT_EQ(name(id, "key"), quoted(id)) << "no row has it, so a scan finds none";
  }
}

TEST_F(Terminology, CopiesTheHostsStringForARunTimeIdentifier) {
  host.stringIDs = {{7, "paintbrushTool"}, {0x2020201F, "last"}, {0x80000000, "negative"}};
  EXPECT_EQ(name(7, "key"), "paintbrushTool");
  EXPECT_EQ(name(0x2020201F, "event"), "last");
  EXPECT_EQ(name(0x80000000, "class"), "negative") << "the number counts as signed";
}

TEST_F(Terminology, PrefersTheHostsStringToARow) {
  host.stringIDs = {{1, "own"}, {2, ""}};
  EXPECT_EQ(name(1, "plugIn"), "own");
  EXPECT_EQ(name(2, "plugIn"), "") << "an empty string ID is one, too";
  EXPECT_EQ(name(0, "plugIn"), "plugInDialogDontDisplay");
}

TEST_F(Terminology, DoesNotAskTheHostForFourCharacterCodes) {
  host.stringIDs = {{0x20202020, "spaces"}, {fourCharCode("setd"), "set"}};
  EXPECT_EQ(name(0x20202020, "key"), "'    '");
  EXPECT_EQ(name(fourCharCode("setd"), "event"), "eventSet");
  EXPECT_EQ(host.asked, 0);
}

TEST_F(Terminology, QuotesTheCodeIfNeitherHostNorTableHasAName) {
  EXPECT_EQ(name(fourCharCode("zzzz"), "key"), "'zzzz'");
  EXPECT_EQ(name(0x10616263, "key"),
            "'\x10"
            "abc'");
  EXPECT_EQ(name(fourCharCode("setd"), "xxxx"), "'setd'");
}

TEST_F(Terminology, EndsACodeAtItsFirstZeroByte) {
  EXPECT_EQ(name(0, "event"), "'") << "the one row of 0 is no event";
  EXPECT_EQ(name(0x41004243, "event"), "'A");
  EXPECT_EQ(name(0x41424300, "event"), "'ABC");
}

TEST_F(Terminology, ReportsTheKindOfAName) {
  host.stringIDs = {{7, "'tool'"}, {0xFF616263, "keyName"}};
  const auto kindOf = [](std::uint32_t id, const char* kind) {
    char buffer[kNameSize];
    return nameOfID(id, kind, buffer).kind;
  };
  EXPECT_EQ(kindOf(7, "key"), NameKind::kStringID) << "although it looks like a code";
  EXPECT_EQ(kindOf(0xFF616263, "key"), NameKind::kStringID) << "although it looks like a constant";
  EXPECT_EQ(kindOf(8, "key"), NameKind::kCode);
  EXPECT_EQ(kindOf(0, "plugIn"), NameKind::kConstant);
  EXPECT_EQ(kindOf(fourCharCode("setd"), "event"), NameKind::kConstant);
  EXPECT_EQ(kindOf(fourCharCode("setd"), "unit"), NameKind::kCode);
}

TEST_F(Terminology, CutsTheHostsStringAtTheEndOfTheBuffer) {
  host.stringIDs = {{9, std::string(3000, 'n')}};
  EXPECT_EQ(name(9, "key"), std::string(1023, 'n'));
}

TEST(LongToStr, ThrowsTheParameterErrorWithoutAHostAndLeavesTheNameEmpty) {
  char out[kNameSize] = "old";
  EXPECT_THROW(
      try { LongToStr(5, "key", out); } catch (std::uint32_t error) {
        EXPECT_EQ(error, 0x5061726Du);
        throw;
      },
      std::uint32_t);
  EXPECT_STREQ(out, "");
}

TEST(PIUCharToID, PutsTheFirstCharacterIntoTheMostSignificantByte) {
  EXPECT_EQ(PIUCharToID("Prpr"), 0x50727072u);
  EXPECT_EQ(PIUCharToID("setd and more"), fourCharCode("setd"));
}

TEST(PIUCharToID, ExtendsTheSignOfACharacterOverTheHigherBytes) {
  EXPECT_EQ(PIUCharToID("\xFF\x61\x62\x63"), 0xFF616263u) << "the sign bits are shifted out";
  EXPECT_EQ(PIUCharToID("\x61\x62\x63\xFF"), 0xFFFFFFFFu);
  EXPECT_EQ(PIUCharToID("\x61\xFF\x62\x63"), 0xFFFF6263u);
}

}  // namespace
