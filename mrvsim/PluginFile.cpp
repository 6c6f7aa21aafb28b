#include "mrvsim/PluginFile.h"

#include <elf.h>
#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "simulator/loader/MachPlugin.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

void expectPluginFile(const std::string& plugin) {
  std::error_code ignored;
  if (std::filesystem::is_directory(plugin, ignored)) return;
  const InputFile file(plugin);
  std::array<char, SELFMAG> magic{};
  const std::size_t size = file.read(0, magic.data(), magic.size());
  const bool isElf = std::string_view(magic.data(), size) == ELFMAG;
  if (isElf || isMacPlugin(plugin)) return;
  throw std::runtime_error(fmt::format(
      "{}: is not a plug-in: expected a module for Linux, a Mach-O file or a bundle's folder",
      printableFile(plugin)));
}

}  // namespace simulator
