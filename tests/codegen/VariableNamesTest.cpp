#include <gtest/gtest.h>

#include <cstdint>

#include "codegen/VariableNames.h"

namespace {

const void* handle(std::uintptr_t value) { return reinterpret_cast<const void*>(value); }

TEST(VariableNames, UseSixteenDigitsInDeclarationsAndTheUnpaddedPointerInReferences) {
  EXPECT_EQ(declaredName("desc", handle(0x600A0)), "desc00000000000600a0");
  EXPECT_EQ(nestedName("desc", handle(0x600A0)), "desc0x600a0");
  EXPECT_EQ(declaredName("list", handle(UINTPTR_MAX)), "listffffffffffffffff");
  EXPECT_EQ(nestedName("ref", nullptr), "ref0x0");
}

}  // namespace
