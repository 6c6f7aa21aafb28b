// Reads any bytes as an action file. What was read can be written, and is then read as the same.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "actionfiles/ActionFileError.h"
#include "actionfiles/FilePath.h"
#include "fuzz/Input.h"
#include "tests/actionfiles/ActionFileWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  actionfiles::pathOf(bytes);
  actionfiles::fileNameOfAlias(bytes);
  try {
    const std::string written = testing_support::written(testing_support::readAll(bytes));
    fuzz::require(testing_support::written(testing_support::readAll(written)) == written,
                  "what is written is read as the same");
  } catch (const actionfiles::ActionFileError& error) {
    fuzz::require(error.offset() <= size, "an error names an offset in the file");
  }
  return 0;
}
