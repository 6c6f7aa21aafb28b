// The three kinds of containers: their types, their suites and their names in the generated code.
// A descriptor's getters select an item by its key, a list's by its index.
#pragma once

#include <PIActions.h>

#include <cstdint>
#include <string_view>

#include "suites/Suites.h"

struct DescriptorKind {
  using Container = PIActionDescriptor;
  static constexpr std::string_view kType = "PIActionDescriptor";
  static constexpr std::string_view kSuite = "sPSActionDescriptor";
  static constexpr std::string_view kVariable = "desc";
  static auto suite() { return sPSActionDescriptor.operator->(); }
  static std::uint32_t selector(DescriptorKeyID key, std::uint32_t) { return key; }
  static bool readKey(Container descriptor, std::uint32_t index, DescriptorKeyID* key) {
    return suite()->GetKey(descriptor, index, key) == 0;
  }
};

struct ListKind {
  using Container = PIActionList;
  static constexpr std::string_view kType = "PIActionList";
  static constexpr std::string_view kSuite = "sPSActionList";
  static constexpr std::string_view kVariable = "list";
  static auto suite() { return sPSActionList.operator->(); }
  static std::uint32_t selector(DescriptorKeyID, std::uint32_t index) { return index; }
  static bool readKey(Container, std::uint32_t, DescriptorKeyID*) { return true; }
};

struct ReferenceKind {
  using Container = PIActionReference;
  static constexpr std::string_view kType = "PIActionReference";
  static constexpr std::string_view kSuite = "sPSActionReference";
  static constexpr std::string_view kVariable = "ref";
  static auto suite() { return sPSActionReference.operator->(); }
};
