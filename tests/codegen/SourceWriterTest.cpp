#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "codegen/DumpDescriptor.h"
#include "codegen/SourceWriter.h"
#include "tests/codegen/CommaLocale.h"
#include "tests/codegen/MemoryStream.h"

namespace {

template <class... Parts>
std::string written(const Parts&... parts) {
  MemoryStream stream;
  SourceWriter(stream.file()).write(parts...);
  return stream.text();
}

TEST(SourceWriter, WritesNumbersAsSignedDecimals) {
  EXPECT_EQ(written(std::int32_t{-1}, " ", std::uint32_t{4294967295u}), "-1 4294967295");
  EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(SourceWriter, WritesFloatsWithSixSignificantDigits) {
  EXPECT_EQ(written(0.1234567), "0.123457");
  EXPECT_EQ(written(5.0, " ", -0.0, " ", 1e20, " ", 1234567.0), "5 -0 1e+20 1.23457e+06");
  EXPECT_EQ(written(std::numeric_limits<double>::max()), "1.79769e+308");
}

TEST(SourceWriter, WritesFloatsWithAPointInALocaleWithCommas) {
  const CommaLocale locale;
  EXPECT_EQ(written(-2.5e-9), "-2.5e-09");
}

TEST(SourceWriter, IndentsByFiveSpacesPerLevelAndNotBelowLevelOne) {
  for (const auto& [level, expected] :
       {std::pair{3, "               x\n"}, {0, "x\n"}, {-4, "x\n"}}) {
    tabLevel = static_cast<std::int16_t>(level);
    MemoryStream stream;
    SourceWriter(stream.file()).indentedLine("x");
    EXPECT_EQ(stream.text(), expected);
  }
}

TEST(SourceWriter, IndentsAnyLevelWhole) {
  for (const int level : {8, 9, 16, 17, 1000}) {
    tabLevel = static_cast<std::int16_t>(level);
    MemoryStream stream;
    SourceWriter(stream.file()).indentedLine("x");
    EXPECT_EQ(stream.text(), std::string(static_cast<std::size_t>(level) * 5, ' ') + "x\n")
        << level;
  }
}

TEST(SourceWriter, WritesAnEmptyLineAfterAnErrorCheck) {
  tabLevel = 1;
  MemoryStream stream;
  SourceWriter(stream.file()).errorCheck();
  EXPECT_EQ(stream.text(), "     if (error) goto returnError;\n\n");
}

TEST(SourceWriter, EscapesCharactersThatWouldEndALiteralOrItsLine) {
  EXPECT_EQ(written(StringLiteral{"plain 'text'"}), R"("plain 'text'")");
  EXPECT_EQ(written(StringLiteral{"say \"hi\" \\ there"}), R"("say \"hi\" \\ there")");
  EXPECT_EQ(written(StringLiteral{"a\nb\rc\td"}), R"("a\nb\rc\td")");
  EXPECT_EQ(written(StringLiteral{"\x01"
                                  "7\x7F"
                                  "8"}),
            R"("\0017\1778")");
  EXPECT_EQ(written(StringLiteral{""}), R"("")");
}

TEST(SourceWriter, LeavesUTF8UnchangedAndEscapesInvalidBytes) {
  for (const char* text : {"\u00E9", "\u20AC", "\uFFFD", "\U0001F58C", "\U0010FFFF"}) {
    EXPECT_EQ(written(StringLiteral{text}), '"' + std::string(text) + '"');
  }
  EXPECT_EQ(written(StringLiteral{"\x8E"}), R"("\216")") << "a continuation alone";
  EXPECT_EQ(written(StringLiteral{"\xC3"}), R"("\303")") << "cut off";
  EXPECT_EQ(written(StringLiteral{"\xE2\x82"}), R"("\342\202")");
  EXPECT_EQ(written(StringLiteral{"\xF0\x90\x80"
                                  "A"}),
            R"("\360\220\200A")");
  EXPECT_EQ(written(StringLiteral{"\xC0\x80"}), R"("\300\200")") << "too long a form";
  EXPECT_EQ(written(StringLiteral{"\xE0\x80\x80"}), R"("\340\200\200")");
  EXPECT_EQ(written(StringLiteral{"\xED\xA0\x80"}), R"("\355\240\200")") << "a surrogate";
  EXPECT_EQ(written(StringLiteral{"\xF4\x90\x80\x80"}), R"("\364\220\200\200")");
}

IDName code(std::string_view text) { return {text, NameKind::kCode}; }

IDName stringID(std::string_view text) { return {text, NameKind::kStringID}; }

TEST(SourceWriter, WritesNamesUnchanged) {
  EXPECT_EQ(written(IDName{"keyName", NameKind::kConstant}), "keyName");
  EXPECT_EQ(written(IDName{"runtimeKeyID", NameKind::kVariable}), "runtimeKeyID");
  EXPECT_EQ(written(stringID("paintbrushTool")), "paintbrushTool");
  EXPECT_EQ(written(code("'setd'")), "'setd'");
  EXPECT_EQ(written(code("'")), "'") << "a code that begins with a zero byte";
  EXPECT_EQ(written(code("'ab")), "'ab") << "a code cut by a zero byte";
}

TEST(SourceWriter, WritesAStringIDThatLooksLikeACodeWhole) {
  for (const char* text : {"'hello world", "'", "''", "'abc'", "'setd'", "'setd'more", "'ab'd'"}) {
    EXPECT_EQ(written(stringID(text)), text);
  }
}

TEST(SourceWriter, EscapesCharactersOfAStringIDThatWouldEndItsLine) {
  EXPECT_EQ(written(stringID("'two\nlines\\\x01")), R"('two\nlines\\\001)");
  EXPECT_EQ(written(stringID("'\u00E9\xA9")), "'\u00E9\\251");
}

TEST(SourceWriter, EscapesCharactersThatWouldEndACode) {
  EXPECT_EQ(written(code("'a'b\\'")), R"('a\'b\\')");
  EXPECT_EQ(written(code("''\"\n\xA9'")), R"('\'"\n\251')");
}

TEST(SourceWriter, EscapesUTF8InACodeByteByByte) {
  EXPECT_EQ(written(code("'a\u00E9b'")), R"('a\303\251b')");
}

TEST(SourceWriter, KeepsACommentFromContinuingOnTheNextLine) {
  EXPECT_EQ(written(CommentText{"plain"}), "plain");
  EXPECT_EQ(written(CommentText{"two\nlines"}), R"(two\nlines)");
  EXPECT_EQ(written(CommentText{"path\\"}), R"(path\134)");
  EXPECT_EQ(written(CommentText{"a\\b\\\\"}), R"(a\\b\\\134)");
  EXPECT_EQ(written(CommentText{"path\\  "}), R"(path\134  )");
  EXPECT_EQ(written(CommentText{"  "}), "  ");
}

TEST(SourceWriter, WritesPiecesLongerThanItsBufferCompletely) {
  const std::string text(1'000'000, 'a');
  EXPECT_EQ(written("(", text, ")"), "(" + text + ")");
}

}  // namespace
