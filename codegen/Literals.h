// Values as C++ source text that compilers read back exactly, without a warning. [any-thread]
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// A string literal of UTF-8 or any other bytes, without the terminator. A long one is broken into
/// pieces on lines of their own. Characters that are not seen, or that turn the direction of
/// writing, become escape sequences, as do all bytes that are not UTF-8.
std::string stringLiteral(std::string_view text);

/// A string literal of bytes that are not text: only ASCII stands for itself.
std::string bytesLiteral(std::string_view bytes);

/// A literal of UTF-16 units: u"...". Any unit may be in it, also an unpaired surrogate.
std::string unitsLiteral(std::u16string_view units);

/// Text for a comment that ends with its line; escaped as in a string literal.
std::string commentText(std::string_view text);

/// The code of an identifier between apostrophes, for a comment of either kind.
std::string codeComment(std::uint32_t id);

/// The shortest decimal literal that gives the same number, or a call of realOfBits
/// (RecordedSteps.h) for infinities and NaNs.
std::string realLiteral(double number);

std::string integerLiteral(std::int32_t number);
std::string integerLiteral(std::int64_t number);
std::string integerLiteral(std::uint32_t number);

/// ASCII letters and digits of `text`, with one underscore for what lies between them, cut to a
/// length that suits a name; empty if there are none. Begins with a digit if the text does.
std::string identifierPart(std::string_view text);
