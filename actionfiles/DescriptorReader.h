// Reads the parts of an action file of which descriptors are made.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "actionfiles/ActionFile.h"
#include "actionfiles/ByteInput.h"

namespace actionfiles {

/// The most descriptors and lists that may lie one in another, the outermost included.
inline constexpr std::size_t kDeepestNesting = 256;

/// Its members read the part that follows in the input and throw ActionFileError if it is not there
/// or not valid. Nested descriptors and lists are read without recursion.
class DescriptorReader {
 public:
  explicit DescriptorReader(ByteInput& input) : in_(input) {}

  void text(Text& text);
  void id(Id& id);
  void descriptor(Descriptor& descriptor);

 private:
  /// A descriptor or a list of which items are still to be read; one of the pointers is null.
  struct Open {
    std::vector<Item>* items;
    std::vector<Value>* values;
    std::uint32_t left;
  };

  void className(ClassName& name);
  void enumerated(Enumerated& enumerated);
  void openDescriptor(Descriptor& descriptor);
  void openList(List& list);
  void open(const Open& container);
  void next();
  void value(Value& value);
  void reference(Reference& reference);
  void form(Form& form);
  void data(std::string& bytes);
  void unitFloats(UnitFloats& floats);
  void objectArray(ObjectArray& array);
  void column(ObjectArray::Column& column);

  ByteInput& in_;
  std::vector<Open> open_;
  std::string buffer_;  ///< of a text or a string ID that does not lie in one piece
};

}  // namespace actionfiles
