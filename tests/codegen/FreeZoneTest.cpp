#include <gmock/gmock.h>

#include <type_traits>

#include "codegen/DumpDescriptor.h"
#include "codegen/FreeZone.h"
#include "tests/codegen/MemoryStream.h"

namespace {

using testing::ElementsAre;

template <class Handle>
Handle handle(std::uintptr_t value) {
  return reinterpret_cast<Handle>(value);
}

std::string released(const FreeZone& zone) {
  MemoryStream stream;
  zone.Output(stream.file());
  return stream.text();
}

class FreeZoneOutput : public testing::Test {
 protected:
  FreeZoneOutput() { tabLevel = 1; }

  FreeZone zone_;
};

static_assert(!std::is_copy_constructible_v<FreeZone> && !std::is_copy_assignable_v<FreeZone>);

TEST_F(FreeZoneOutput, NamesContainersByKindAndSixteenDigits) {
  zone_.Add(handle<PIActionReference>(0x60000000abcd));
  zone_.Add(handle<PIActionList>(1));
  zone_.Add(handle<PIActionDescriptor>(0xFEDCBA9876543210));
  EXPECT_THAT(zone_.names,
              ElementsAre("ref000060000000abcd", "list0000000000000001", "descfedcba9876543210"));
}

TEST_F(FreeZoneOutput, UsesOneNameForAllAliasesAndOneForAllBookmarks) {
  zone_.Add(handle<AliasHandle>(0x10));
  zone_.Add(handle<CFDataRef>(0x20));
  zone_.Add(handle<Handle>(0x30));
  EXPECT_THAT(zone_.names, ElementsAre("aliasValue", "bookmarkValue", "aliasValue"));
}

TEST_F(FreeZoneOutput, ReleasesEachNameInOrderByItsFirstLetter) {
  zone_.names = {"aliasValue", "bookmarkValue", "desc01", "list02", "ref03"};
  EXPECT_EQ(released(zone_),
            "     if (aliasValue != NULL) sPSHandle->DisposeRegularHandle(aliasValue);\n"
            "     if (bookmarkValue != NULL) CFRelease(bookmarkValue);\n"
            "     if (desc01 != NULL) sPSActionDescriptor->Free(desc01);\n"
            "     if (list02 != NULL) sPSActionList->Free(list02);\n"
            "     if (ref03 != NULL) sPSActionReference->Free(ref03);\n");
}

TEST_F(FreeZoneOutput, ReleasesANameTwiceIfItOccursTwice) {
  zone_.names = {"list5", "list5"};
  EXPECT_EQ(released(zone_),
            "     if (list5 != NULL) sPSActionList->Free(list5);\n"
            "     if (list5 != NULL) sPSActionList->Free(list5);\n");
}

TEST_F(FreeZoneOutput, SkipsNamesWithAnUnknownFirstLetter) {
  zone_.names = {"value", "", "Desc", "9"};
  EXPECT_EQ(released(zone_), "");
}

TEST_F(FreeZoneOutput, WritesNothingToANullStream) {
  zone_.names = {"desc1"};
  zone_.Output(nullptr);
  EXPECT_THAT(zone_.names, ElementsAre("desc1"));
}

}  // namespace
