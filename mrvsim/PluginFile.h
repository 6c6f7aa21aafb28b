// A first look at the file of a plug-in, before any of it is run.
#pragma once

#include <string>

namespace simulator {

/// Throws `std::runtime_error` with one line if the file cannot be read or is neither a module for
/// Linux, nor a Mach-O file, nor a bundle's folder.
void expectPluginFile(const std::string& plugin);

}  // namespace simulator
