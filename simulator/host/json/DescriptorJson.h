// Descriptors, lists and references as JSON.
//
//     [{"key": "Tool", "type": "enum", "enumType": "$paintbrushTool", "value": "Trgt"},
//      {"key": "Dmtr", "type": "UntF", "unit": "#Pxl", "value": 13.0}]
//
// An ID is one of: a text of four ASCII characters, which is a four-character code even if it
// begins with "$"; any other text that begins with "$", which is a string ID that the host numbers;
// an integer, which is the ID itself.
#pragma once

#include <stdexcept>
#include <string>

#include "simulator/base/Log.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// The reason why JSON cannot be read as a descriptor. `what` is "place: reason".
class DescriptorJsonError : public std::runtime_error {
 public:
  DescriptorJsonError(std::string place, std::string reason);

  /// A JSON pointer relative to the value that was read; empty for that value itself.
  const std::string& place() const { return place_; }
  const std::string& reason() const { return reason_; }

 private:
  std::string place_;
  std::string reason_;
};

/// Read a whole value and number new string IDs in the order of the document. Unknown and missing
/// fields, wrong types, values out of range and keys that occur twice are errors. Nesting depth is
/// not limited. Throw DescriptorJsonError.
ContainerPtr descriptorFromJson(const Json& json, TypeIds& ids);  ///< JSON null gives null
ContainerPtr listFromJson(const Json& json, TypeIds& ids);
Reference referenceFromJson(const Json& json, TypeIds& ids);
std::uint32_t idFromJson(const Json& json, TypeIds& ids);

/// Write the same format. Malformed UTF-8 in a text is replaced by U+FFFD; NaN and infinity are
/// written as null.
Json descriptorToJson(const Container& descriptor, const TypeIds& ids);
Json listToJson(const Container& list, const TypeIds& ids);
Json referenceToJson(const Reference& reference, const TypeIds& ids);
Json idToJson(std::uint32_t id, const TypeIds& ids);

}  // namespace simulator
