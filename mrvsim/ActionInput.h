// An action file that is read through the runner's input files.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "actionfiles/ByteSource.h"
#include "simulator/scenario/InputFile.h"

namespace simulator {

/// Whether a file is to be read as an action file: its name ends in ".atn", in upper or lower case,
/// or it begins with a zero byte, as action files do and JSON never does. Throws what `InputFile`
/// throws.
bool isActionFile(const std::string& name, const InputFile& input);

/// The bytes of an input from its start. REQUIRES: the input outlives the source.
class ActionInput : public actionfiles::ByteSource {
 public:
  explicit ActionInput(const InputFile& input) : input_(input) {}

  const std::string& name() const override { return input_.name(); }
  std::optional<std::uint64_t> size() const override { return input_.size(); }
  /// Throws what `InputFile` throws.
  std::string_view next() override;

 private:
  const InputFile& input_;
  std::uint64_t offset_ = 0;
  std::array<char, 65536> buffer_;
};

}  // namespace simulator
