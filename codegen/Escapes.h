// The characters that need an escape sequence in generated text. [any-thread]
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The length of the well-formed UTF-8 sequence of two or more bytes at the start of `text`; 0 if
/// there is none (Unicode, table 3-7).
std::size_t longSequence(std::string_view text);

/// How many bytes at the start of `text` need no escape between two `quote` characters. Between
/// apostrophes, UTF-8 needs one: compilers differ in how many characters of a code it makes.
std::size_t plainLength(std::string_view text, char quote);

/// The escape sequence of one byte. Octal ones always have three digits; a digit after them cannot
/// become part of them.
std::string escapeSequence(char c);
