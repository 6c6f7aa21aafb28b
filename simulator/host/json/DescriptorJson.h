// Descriptors, lists and references as JSON.
//
//     [{"key": "Tool", "type": "enum", "enumType": "$paintbrushTool", "value": "Trgt"},
//      {"key": "Dmtr", "type": "UntF", "unit": "#Pxl", "value": 13.0}]
//
// An ID is a text of four ASCII characters (a four-character code), a text that begins with "$"
// (the string ID after it, which the host gives a number), or an integer (the ID itself). A text of
// four characters is a code also where it begins with "$".
#pragma once

#include <stdexcept>
#include <string>

#include "simulator/base/Log.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// Why JSON is no descriptor. `what` is "place: reason".
class DescriptorJsonError : public std::runtime_error {
 public:
  DescriptorJsonError(std::string place, std::string reason);

  /// A JSON pointer from the value that was read; empty for that value itself.
  const std::string& place() const { return place_; }
  const std::string& reason() const { return reason_; }

 private:
  std::string place_;
  std::string reason_;
};

/// Read a whole value; string IDs get their numbers in the order of the document. Everything that
/// the form does not provide for is an error: unknown and missing fields, wrong types, values out
/// of range, a key that occurs twice. Nesting may be of any depth.
/// Throws DescriptorJsonError.
ContainerPtr descriptorFromJson(const Json& json, TypeIds& ids);  ///< null for null
ContainerPtr listFromJson(const Json& json, TypeIds& ids);
Reference referenceFromJson(const Json& json, TypeIds& ids);
std::uint32_t idFromJson(const Json& json, TypeIds& ids);

/// Write the same forms. Texts that are not UTF-8 have what is wrong in them replaced; a number
/// that JSON does not know (not a number, infinite) becomes null.
Json descriptorToJson(const Container& descriptor, const TypeIds& ids);
Json listToJson(const Container& list, const TypeIds& ids);
Json referenceToJson(const Reference& reference, const TypeIds& ids);
Json idToJson(std::uint32_t id, const TypeIds& ids);

}  // namespace simulator
