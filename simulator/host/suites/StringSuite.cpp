// Reference-counted texts.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "simulator/base/Text.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace string_suite {
namespace {

ASErr call(const char* procedure, ProcedureBody body) {
  return hostCall<ASErr>(SuiteId::string, procedure, body);
}

std::u16string& textOf(ASZString string, const char* procedure) {
  return hostState().strings.at(string, procedure).text;
}

/// Hands out a new string with the text that `text` returns.
template <class MakeText>
ASErr make(const char* procedure, ASZString* newString, MakeText&& text) {
  return call(procedure, [&] {
    ASZString& result = destination(newString);
    result = hostState().strings.add({std::forward<MakeText>(text)()}, procedure);
  });
}

/// Changes the text of a string in place.
template <class Change>
ASErr change(const char* procedure, ASZString string, Change&& body) {
  return call(procedure, [&] { std::forward<Change>(body)(textOf(string, procedure)); });
}

/// A query without an error code: returns false or 0 if the string is not alive.
template <class Result, class Question>
Result ask(const char* procedure, ASZString string, Question&& question) {
  return hostAnswer<Result>(SuiteId::string, procedure, Result{0}, [&] {
    return static_cast<Result>(std::forward<Question>(question)(textOf(string, procedure)));
  });
}

std::string_view given(const char* source, std::size_t byteCount) {
  if (source == nullptr && byteCount > 0) throw CallError{paramErr};
  return {source, byteCount};
}

ASErr makeFromUnicode(const char* procedure, ASUnicode* source, std::size_t byteCount,
                      ASZString* newString) {
  return make(procedure, newString, [&] {
    if (source == nullptr && byteCount > 0) throw CallError{paramErr};
    return std::u16string(source, source + byteCount / sizeof(ASUnicode));
  });
}

ASErr makeFromCString(const char* procedure, const char* source, std::size_t byteCount,
                      ASZString* newString) {
  return make(procedure, newString, [&] { return utf16From(given(source, byteCount)); });
}

ASErr makeFromPascalString(const char* procedure, const unsigned char* source, std::size_t,
                           ASZString* newString) {
  return make(procedure, newString, [&] {
    const unsigned char length = destination(source);
    return utf16From({reinterpret_cast<const char*>(source) + 1, length});
  });
}

ASErr makeFromInteger(const char* procedure, ASInt32 value, ASZString* newString) {
  return make(procedure, newString, [&] { return utf16From(fmt::format("{}", value)); });
}

std::string fixedText(ASInt32 value, ASInt16 places, bool trim, bool isSigned) {
  constexpr double one = 65536.0;
  std::string text = fmt::format("{:.{}f}", value / one, std::max<int>(places, 0));
  if (trim && text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return isSigned && value > 0 ? "+" + text : text;
}

ASErr makeFromFixed(const char* procedure, ASInt32 value, ASInt16 places, ASBoolean trim,
                    ASBoolean isSigned, ASZString* newString) {
  return make(procedure, newString,
              [&] { return utf16From(fixedText(value, places, trim != 0, isSigned != 0)); });
}

ASErr makeFromDouble(const char* procedure, double value, ASZString* newString) {
  return make(procedure, newString, [&] { return utf16From(fmt::format("{}", value)); });
}

// The host owns the empty string: callers may release it but need not.
ASZString getEmpty(const char* procedure) {
  const HostEntry entry(SuiteId::string, procedure);
  static const ASZString empty = hostState().strings.add({}, nullptr);
  StringBody& body = hostState().strings.at(empty, procedure);
  ++body.references;
  return empty;
}

ASErr copy(const char* procedure, ASZString source, ASZString* result) {
  return make(procedure, result, [&] { return textOf(source, procedure); });
}

/// The placeholder of the replacement with this index: "^0", "^1" ...
std::u16string placeholder(ASUInt32 index) { return u"^" + utf16From(fmt::format("{}", index)); }

ASErr replace(const char* procedure, ASZString string, ASUInt32 index, ASZString replacement) {
  return change(procedure, string, [&](std::u16string& text) {
    const std::u16string mark = placeholder(index);
    const std::u16string value = textOf(replacement, procedure);
    for (auto at = text.find(mark); at != text.npos; at = text.find(mark, at + value.size())) {
      text.replace(at, mark.size(), value);
    }
  });
}

ASErr trimEllipsis(const char* procedure, ASZString string) {
  return change(procedure, string, [](std::u16string& text) {
    for (const std::u16string_view ellipsis : {u"\u2026", u"..."}) {
      if (text.ends_with(ellipsis)) text.resize(text.size() - ellipsis.size());
    }
  });
}

ASErr trimSpaces(const char* procedure, ASZString string) {
  return change(procedure, string, [](std::u16string& text) {
    text.erase(0, text.find_first_not_of(u' '));
    text.erase(text.find_last_not_of(u' ') + 1);
  });
}

ASErr removeAccelerators(const char* procedure, ASZString string) {
  return change(procedure, string, [](std::u16string& text) { std::erase(text, u'&'); });
}

ASErr addRef(const char* procedure, ASZString string) {
  return call(procedure, [&] { ++hostState().strings.at(string, procedure).references; });
}

ASErr release(const char* procedure, ASZString string) {
  return hostRelease<ASErr>(SuiteId::string, procedure, [&] {
    ObjectTable<ASZString>& strings = hostState().strings;
    if (string == nullptr || strings.at(string, procedure).references == 1) {
      strings.free(string, procedure);
    } else {
      --strings.at(string, procedure).references;
    }
  });
}

bool isSpace(char16_t c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }

ASBoolean isAllWhiteSpace(const char* procedure, ASZString string) {
  return ask<ASBoolean>(procedure, string, [](const std::u16string& text) {
    return std::all_of(text.begin(), text.end(), isSpace);
  });
}

ASBoolean isEmpty(const char* procedure, ASZString string) {
  return ask<ASBoolean>(procedure, string, [](const std::u16string& text) { return text.empty(); });
}

ASBoolean willReplace(const char* procedure, ASZString string, ASUInt32 index) {
  return ask<ASBoolean>(procedure, string, [&](const std::u16string& text) {
    return text.find(placeholder(index)) != text.npos;
  });
}

/// Writes as many units as fit, then a terminator. With `check`, throws paramErr if not all fit.
template <class Unit, class Source>
void copyUnits(const Source& source, Unit* target, ASUInt32 size, ASBoolean check) {
  destination(target);
  if (size == 0 || (check && source.size() >= size)) throw CallError{paramErr};
  const std::size_t count = std::min<std::size_t>(source.size(), size - 1);
  std::copy_n(source.begin(), count, target);
  target[count] = 0;
}

ASUInt32 lengthAsUnicode(const char* procedure, ASZString string) {
  return ask<ASUInt32>(procedure, string, [](const std::u16string& text) { return text.size(); });
}

ASErr asUnicode(const char* procedure, ASZString string, ASUnicode* target, ASUInt32 size,
                ASBoolean check) {
  return call(procedure, [&] { copyUnits(textOf(string, procedure), target, size, check); });
}

ASUInt32 lengthAsBytes(const char* procedure, ASZString string) {
  return ask<ASUInt32>(procedure, string,
                       [](const std::u16string& text) { return utf8From(text).size(); });
}

ASErr asBytes(const char* procedure, ASZString string, char* target, ASUInt32 size,
              ASBoolean check) {
  return call(procedure,
              [&] { copyUnits(utf8From(textOf(string, procedure)), target, size, check); });
}

ASUInt32 lengthAsPascal(const char* procedure, ASZString string) {
  return ask<ASUInt32>(procedure, string, [](const std::u16string& text) {
    return std::min<std::size_t>(utf8From(text).size(), 255);
  });
}

ASErr asPascal(const char* procedure, ASZString string, unsigned char* target, ASUInt32 size,
               ASBoolean check) {
  return call(procedure, [&] {
    destination(target);
    const std::string bytes = utf8From(textOf(string, procedure));
    const std::size_t room = std::min<std::size_t>(size, 256);
    if (room == 0 || (check && bytes.size() >= room)) throw CallError{paramErr};
    target[0] = static_cast<unsigned char>(std::min(bytes.size(), room - 1));
    std::copy_n(bytes.begin(), target[0], target + 1);
  });
}

constexpr auto kProcedures = std::to_array<Procedure<ASZStringSuite>>({
    row<"ASZStringSuite.MakeFromUnicode", &ASZStringSuite::MakeFromUnicode, makeFromUnicode>,
    row<"ASZStringSuite.MakeFromCString", &ASZStringSuite::MakeFromCString, makeFromCString>,
    row<"ASZStringSuite.MakeFromPascalString", &ASZStringSuite::MakeFromPascalString,
        makeFromPascalString>,
    row<"ASZStringSuite.MakeRomanizationOfInteger", &ASZStringSuite::MakeRomanizationOfInteger,
        makeFromInteger>,
    row<"ASZStringSuite.MakeRomanizationOfFixed", &ASZStringSuite::MakeRomanizationOfFixed,
        makeFromFixed>,
    row<"ASZStringSuite.MakeRomanizationOfDouble", &ASZStringSuite::MakeRomanizationOfDouble,
        makeFromDouble>,
    row<"ASZStringSuite.GetEmpty", &ASZStringSuite::GetEmpty, getEmpty>,
    row<"ASZStringSuite.Copy", &ASZStringSuite::Copy, copy>,
    row<"ASZStringSuite.Replace", &ASZStringSuite::Replace, replace>,
    row<"ASZStringSuite.TrimEllipsis", &ASZStringSuite::TrimEllipsis, trimEllipsis>,
    row<"ASZStringSuite.TrimSpaces", &ASZStringSuite::TrimSpaces, trimSpaces>,
    row<"ASZStringSuite.RemoveAccelerators", &ASZStringSuite::RemoveAccelerators,
        removeAccelerators>,
    row<"ASZStringSuite.AddRef", &ASZStringSuite::AddRef, addRef>,
    row<"ASZStringSuite.Release", &ASZStringSuite::Release, release>,
    row<"ASZStringSuite.IsAllWhiteSpace", &ASZStringSuite::IsAllWhiteSpace, isAllWhiteSpace>,
    row<"ASZStringSuite.IsEmpty", &ASZStringSuite::IsEmpty, isEmpty>,
    row<"ASZStringSuite.WillReplace", &ASZStringSuite::WillReplace, willReplace>,
    row<"ASZStringSuite.LengthAsUnicodeCString", &ASZStringSuite::LengthAsUnicodeCString,
        lengthAsUnicode>,
    row<"ASZStringSuite.AsUnicodeCString", &ASZStringSuite::AsUnicodeCString, asUnicode>,
    row<"ASZStringSuite.LengthAsCString", &ASZStringSuite::LengthAsCString, lengthAsBytes>,
    row<"ASZStringSuite.AsCString", &ASZStringSuite::AsCString, asBytes>,
    row<"ASZStringSuite.LengthAsPascalString", &ASZStringSuite::LengthAsPascalString,
        lengthAsPascal>,
    row<"ASZStringSuite.AsPascalString", &ASZStringSuite::AsPascalString, asPascal>,
});

}  // namespace
}  // namespace string_suite

constinit const HostSuite<ASZStringSuite> stringSuite = suiteOf<string_suite::kProcedures>();

}  // namespace simulator
