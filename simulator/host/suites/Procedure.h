// A suite's procedures as rows: the suite's record, the name that each procedure reports and the
// list of the names all follow from the same rows.
//
//     constexpr auto kProcedures = std::to_array<Procedure<PSAliasSuite>>({
//         row<"AliasSuite.MacNewAliasFromCString", &PSAliasSuite::MacNewAliasFromCString,
//             [](const char* procedure, const char* path, AliasHandle* alias) { ... }>,
//     });
//     constinit const HostSuite<PSAliasSuite> aliasSuite = suiteOf<kProcedures>();
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <span>
#include <string_view>
#include <type_traits>

namespace simulator {

/// A string literal that can be a template argument.
template <std::size_t kSize>
struct FixedString {
  char text[kSize]{};

  consteval FixedString() = default;
  consteval FixedString(const char (&literal)[kSize]) { std::copy_n(literal, kSize, text); }
};

template <std::size_t kLeft, std::size_t kRight>
consteval auto operator+(const FixedString<kLeft>& left, const FixedString<kRight>& right) {
  FixedString<kLeft + kRight - 1> joined;
  std::copy_n(right.text, kRight, std::copy_n(left.text, kLeft - 1, joined.text));
  return joined;
}

/// One procedure of a suite whose record of function pointers is a `Record`.
template <class Record>
struct Procedure {
  using RecordType = Record;

  std::string_view name;   ///< "Suite.Member"
  void (*enter)(Record&);  ///< sets the member of the record
};

template <FixedString kName, auto kMember, auto kBody, class Member = decltype(kMember)>
struct ProcedureRow;

template <FixedString kName, auto kMember, auto kBody, class Record, class Result,
          class... Arguments>
struct ProcedureRow<kName, kMember, kBody, Result (*Record::*)(Arguments...)> {
  static Result call(Arguments... arguments) {
    const char* const name = kName.text;
    return kBody(name, arguments...);
  }

  static constexpr void enter(Record& record) {
    if (record.*kMember != nullptr) std::abort();  // two rows for one member do not compile
    record.*kMember = call;
  }

  static constexpr Procedure<Record> procedure{kName.text, enter};
};

/// The procedure `kName`, which is the member `kMember` of its suite's record. `kBody`, a function
/// or a lambda without captures, gets the name as a `const char*` and then the member's arguments.
template <FixedString kName, auto kMember, auto kBody>
inline constexpr auto row = ProcedureRow<kName, kMember, kBody>::procedure;

/// A suite as the host offers it.
template <class Record>
struct HostSuite {
  Record record;
  std::span<const std::string_view> procedureNames;
};

template <class Record, std::size_t kCount>
consteval auto namesOf(const std::array<Procedure<Record>, kCount>& procedures) {
  std::array<std::string_view, kCount> names;
  std::transform(procedures.begin(), procedures.end(), names.begin(),
                 [](const Procedure<Record>& procedure) { return procedure.name; });
  return names;
}

template <const auto& kProcedures>
inline constexpr auto kNamesOf = namesOf(kProcedures);

template <const auto& kProcedures>
using RecordOf = typename std::remove_cvref_t<decltype(kProcedures.front())>::RecordType;

/// The suite of these procedures. `setOthers` sets the members of its record that have no row.
template <const auto& kProcedures, class SetOthers>
consteval HostSuite<RecordOf<kProcedures>> suiteOf(SetOthers setOthers) {
  HostSuite<RecordOf<kProcedures>> suite{{}, kNamesOf<kProcedures>};
  for (const auto& procedure : kProcedures) procedure.enter(suite.record);
  setOthers(suite.record);
  return suite;
}

/// The suite of these procedures, which must be all members of its record.
template <const auto& kProcedures>
consteval HostSuite<RecordOf<kProcedures>> suiteOf() {
  static_assert(sizeof(RecordOf<kProcedures>) == kProcedures.size() * sizeof(void (*)()));
  return suiteOf<kProcedures>([](RecordOf<kProcedures>&) {});
}

/// The rows of both tables.
template <class Record, std::size_t kLeft, std::size_t kRight>
consteval auto joined(const std::array<Procedure<Record>, kLeft>& left,
                      const std::array<Procedure<Record>, kRight>& right) {
  std::array<Procedure<Record>, kLeft + kRight> rows;
  std::copy(right.begin(), right.end(), std::copy(left.begin(), left.end(), rows.begin()));
  return rows;
}

}  // namespace simulator
