// The names and codes of the host's terms, as the source text has them, against the published
// table.
#include <gmock/gmock.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "codegen/Terminology.h"
#include "platform/FourCharCode.h"
#include "tests/support/Process.h"

namespace {

struct Term {
  std::string name;  ///< without the k in front
  std::uint32_t code;
};

std::vector<Term> hostTerms() {
  const std::string text = testing_support::readFile(MRV_ROOT "/platform/host/HostTerms.h");
  const std::regex definition(
      "inline constexpr Descriptor\\w+ k([A-Z])(\\w+) = fourCharCode\\(\"(.{4})\"\\);");
  std::vector<Term> terms;
  for (std::sregex_iterator match(text.begin(), text.end(), definition), end; match != end;
       ++match) {
    const auto initial = static_cast<char>((*match)[1].str().front() - 'A' + 'a');
    terms.push_back({initial + (*match)[2].str(), PIUCharToID((*match)[3].str().c_str())});
  }
  return terms;
}

bool isPublished(const Term& term) {
  return std::any_of(std::begin(PSConstA), std::end(PSConstA), [&](const PSConst& row) {
    return row.id == term.code && row.name == term.name;
  });
}

TEST(HostTerms, AreAllReadByThisTest) {
  const std::string text = testing_support::readFile(MRV_ROOT "/platform/host/HostTerms.h");
  const std::regex code("fourCharCode");
  const auto codes = std::distance(std::sregex_iterator(text.begin(), text.end(), code), {});
  EXPECT_EQ(hostTerms().size(), static_cast<std::size_t>(codes));
  EXPECT_GT(codes, 50);
}

TEST(HostTerms, HaveThePublishedNamesOfTheirCodesBesidesKeyTool) {
  std::vector<std::string> own;
  for (const Term& term : hostTerms()) {
    if (!isPublished(term)) own.push_back(term.name);
  }
  EXPECT_THAT(own, testing::ElementsAre("keyTool"));
}

TEST(HostTerms, CallByKeyToolACodeThatNoKeyHas) {
  for (const PSConst& row : PSConstA) {
    if (row.id == fourCharCode("Tool")) {
      EXPECT_STREQ(row.name, "classTool");
    }
    EXPECT_STRNE(row.name, "keyTool");
  }
}

}  // namespace
