// Compiles what the generator wrote, as a developer who takes it in would.
#pragma once

#include <PIActions.h>
#include <SPBasic.h>

#include <filesystem>
#include <string>
#include <vector>

/// A module of generated functions, built by the compiler that built the tests.
class GeneratedCode {
 public:
  /// Adapts each function and builds them in `folder`. A function that does not compile is a test
  /// failure with the compiler's first lines, and an empty module.
  GeneratedCode(const std::vector<std::string>& functions, const std::filesystem::path& folder);
  ~GeneratedCode();
  GeneratedCode(const GeneratedCode&) = delete;
  GeneratedCode& operator=(const GeneratedCode&) = delete;

  bool isBuilt() const { return module_ != nullptr; }

  /// Lets the functions use this host, with `play` in place of the control suite's own Play.
  void prepare(SPBasicSuite* host, decltype(PSActionControlProcs::Play) play);

  /// Runs one function, counted from 0, and returns its error.
  int run(std::size_t function);

  /// Gives the suites back.
  void finish();

 private:
  void* symbol(const char* name);

  void* module_ = nullptr;
};

/// The function with every nested handle spelled as its variable is declared, and the declarations
/// moved to the top of the routine, where the text asks for them.
std::string adapted(const std::string& function);
