// Descriptors, lists and references as JSON.
//
//     [{"key": "Tool", "type": "enum", "enumType": "$paintbrushTool", "value": "Trgt"},
//      {"key": "Dmtr", "type": "UntF", "unit": "#Pxl", "value": 13.0}]
//
// An ID is one of:
// - a text that begins with "$": the string ID after it, of any length, which the host numbers;
// - any other text of four ASCII characters: a four-character code;
// - an integer from 0 to 4294967295: the ID itself. IDs that have no text, such as a code that
//   begins with "$", are written as one.
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
Json referenceToJson(Forms reference, const TypeIds& ids);
Json idToJson(std::uint32_t id, const TypeIds& ids);

}  // namespace simulator
