// Compares every routine with a reference implementation written from its contract, on up to a
// million random inputs.
#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdio>

#include "hostutil/Strings.h"
#include "tests/hostutil/Buffers.h"
#include "tests/support/Build.h"

namespace {

using hostutil_test::CString;
using hostutil_test::PString;
using hostutil_test::Random;

constexpr int kInputs = testing_support::kRandomInputs;
constexpr std::string_view kLetters = "abAB";
constexpr std::string_view kNumberCharacters = "0123456789012345678901234567890123456789  -.,x";

PString randomString(Random& random, std::string_view alphabet = kLetters) {
  return PString(random.text(random.length(), alphabet));
}

// --- the reference implementations

void store(PString& text, int index, int value) { text[index] = static_cast<unsigned char>(value); }

short appended(PString& destination, const unsigned char* source, int start, int count) {
  const int length = destination[0];
  int bytes = start + 255 - length;
  if (count - start + length < 256) bytes = count;
  for (int taken = 0; taken < bytes; taken++) {
    store(destination, 0, (destination[0] + 1) % 256);
    store(destination, destination[0], source[start + taken]);
  }
  if (destination[0] == 255) store(destination, 0, 254);
  store(destination, destination[0] + 1, 0);
  return destination[0];
}

char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Bytes after the end of a string read as zero.
int matched(const std::string& text, const std::string& pattern, int patternLength, bool ignoreCase,
            int limit) {
  const auto at = [](const std::string& s, int i) {
    return static_cast<std::size_t>(i) < s.size() ? s[static_cast<std::size_t>(i)] : '\0';
  };
  int m = 0;
  int s = -1;
  for (int i = 0;; i++) {
    const char t = at(text, i);
    const char p = at(pattern, m);
    if (t == p || (ignoreCase && lowered(t) == lowered(p))) {
      m++;
      if (s == -1) s = i;
    } else {
      m = 0;
      s = -1;
    }
    const char next = at(text, i + 1);
    const bool stop =
        (m >= patternLength && next == 0) || i + 1 > limit || (limit < 256 && next == 0);
    if (stop) return next == 0 || (next & 0x80) != 0 ? s : -1;
  }
}

double tenTo(int k) {
  double result = 1.0;
  for (int i = 0; i < k && std::isfinite(result); i++) result *= 10.0;
  return result;
}

double low32(double x) {
  const double whole = std::trunc(x);
  if (!(std::fabs(whole) < 0x1p63)) return 0;
  return static_cast<double>(static_cast<unsigned long long>(static_cast<long long>(whole)) &
                             0xFFFFFFFFull);
}

std::string doubleText(double value, int places, int* last) {
  double a = std::fabs(value);
  double t = a * tenTo(places);
  double d = (t - low32(t)) * 10.0;
  if (d >= 5.0) a += 5.0 / tenTo(places + 1);
  if (places >= 2) {
    t = a * tenTo(places - 1);
    d = (t - low32(t)) * 10.0;
    if (d < 1.0) places--;
  }
  const auto word = static_cast<unsigned>(low32(std::signbit(value) ? -a : a));
  std::string text = std::to_string(static_cast<int>(word)) + ".";
  double f = a - low32(a);
  for (;;) {
    f *= 10.0;
    const double digit = low32(f);
    *last = static_cast<int>(static_cast<unsigned>(digit));
    if (text.size() < 254)
      text += static_cast<char>(static_cast<unsigned>('0') + static_cast<unsigned>(digit));
    f -= digit;
    places--;
    if (!(f > 0.0) || places < 1) return text;
  }
}

int numberOf(std::string& text, int* value) {
  std::string digits;
  bool minus = false, tail = false, bad = false;
  for (const char c : text) {
    if (c == ' ') {
      if (!digits.empty()) tail = true;
    } else if (c >= '0' && c <= '9' && !tail) {
      digits += c;
    } else if (c == '-' && digits.empty() && !minus) {
      minus = true;
    } else {
      bad = true;
      break;
    }
  }
  if (digits.empty() && !minus) return 0;
  text = digits;
  if (bad) return 0;
  *value = digits.size() < 10 ? 0 : INT_MAX;
  if (minus) *value = -*value;
  return minus ? 2 : 1;
}

bool divided(std::string& number, std::string& fraction) {
  const auto separator = number.find_last_of(".,");
  if (separator == std::string::npos) return false;
  fraction += number.substr(separator + 1);
  number.resize(separator);
  return true;
}

int doubleOf(std::string& text, double* value) {
  std::string fraction;
  divided(text, fraction);
  int whole = 0, part = 0;
  const int wholeKind = numberOf(text, &whole);
  const int partKind = numberOf(fraction, &part);
  if (wholeKind == 0 && partKind == 0) return 0;
  const bool negative = wholeKind == 2 || partKind == 2 || whole < 0;
  double result = part / tenTo(static_cast<int>(fraction.size()));
  if (negative) result = -result;
  *value = result + whole;
  return negative ? 2 : 1;
}

// --- the comparisons

TEST(StringsRandom, AppendStringMatchesTheReference) {
  Random random(1);
  const std::string source = random.text(1280, kLetters);
  for (int i = 0; i < kInputs; ++i) {
    PString ours = randomString(random);
    PString theirs = ours;
    const auto* bytes = reinterpret_cast<const unsigned char*>(source.data()) + random.below(256);
    const auto start = static_cast<short>(random.below(300));
    const auto count = static_cast<short>(random.between(-5, 520));
    ASSERT_EQ(AppendString(ours, bytes, start, count), appended(theirs, bytes, start, count));
    ASSERT_TRUE(ours == theirs) << "start " << start << ", count " << count;
  }
}

TEST(StringsRandom, AppendCharToStringMatchesTheReference) {
  Random random(2);
  for (int i = 0; i < kInputs; ++i) {
    PString text = randomString(random);
    const std::string before = text.text();
    const char c = random.text(1, kLetters)[0];
    const std::string after = before.size() < 254 ? before + c : before.substr(0, 254);
    ASSERT_EQ(AppendCharToString(text, c), static_cast<short>(after.size()));
    ASSERT_EQ(text.terminated(), after);
  }
}

TEST(StringsRandom, ZeroTerminatedConcatenationMatchesTheReference) {
  Random random(3);
  for (int i = 0; i < kInputs; ++i) {
    const std::string a = random.text(random.below(24), kLetters);
    const std::string b = random.text(random.below(24), kLetters);
    const auto size = static_cast<std::size_t>(random.below(48));
    CString bounded(a, std::max(size, a.size() + 1));
    const std::size_t full = (a.size() < size ? a.size() : size) + b.size();
    ASSERT_EQ(PIstrlcat(bounded, CString(b), size), full);
    ASSERT_EQ(bounded.text(), a.size() < size ? (a + b).substr(0, size - 1) : a);
    CString unbounded(a, a.size() + b.size() + 1);
    ASSERT_EQ(HostStringCat(unbounded, CString(b)), PIstrlen(CString(a + b)));
    ASSERT_EQ(unbounded.text(), a + b);
  }
}

TEST(StringsRandom, HostMatchWithALimitBelow256MatchesTheReference) {
  Random random(4);
  for (int i = 0; i < kInputs; ++i) {
    const std::string_view alphabet = i % 2 ? kLetters : "ab\xC1\xE1";
    const std::string text = random.text(random.below(i % 16 ? 12 : 400), alphabet);
    const std::string pattern = random.text(random.between(text.empty() ? 1 : 0, 5), alphabet);
    const bool ignoreCase = random.below(2) != 0;
    const auto limit = static_cast<short>(random.below(4) ? random.between(-2, 20) : 255);
    ASSERT_EQ(HostMatch(CString(text), CString(pattern), ignoreCase, limit),
              matched(text, pattern, static_cast<int>(pattern.size()), ignoreCase, limit))
        << text << " / " << pattern << " / " << limit;
  }
}

TEST(StringsRandom, HostMatchWithALimitOf256OrMoreMatchesTheReference) {
  Random random(5);
  constexpr std::string_view kAlphabet("abAB\0", 5);
  for (int i = 0; i < kInputs / 10; ++i) {
    const auto limit = static_cast<short>(random.between(256, 300));
    const std::string text = random.text(limit + 2, kAlphabet);
    std::string pattern = random.text(random.between(1, 3), kLetters);
    pattern += '\0' + random.text(limit + 2, kAlphabet);
    const bool ignoreCase = random.below(2) != 0;
    ASSERT_EQ(HostMatch(CString(text), CString(pattern), ignoreCase, limit),
              matched(text, pattern, static_cast<int>(pattern.find('\0')), ignoreCase, limit));
  }
}

TEST(StringsRandom, HostStringMatchMatchesTheReference) {
  Random random(6);
  for (int i = 0; i < kInputs; ++i) {
    PString text = randomString(random);
    const std::string before = text.text();
    const std::string whole(text.characters(), 255);
    const std::string pattern = random.text(random.between(0, 5), kLetters);
    const int length = std::min(text.length(), 254);
    std::string characters = whole;
    characters[static_cast<std::size_t>(length)] = 0;
    const int expected =
        matched(characters, pattern, static_cast<int>(pattern.size()), true, length);
    ASSERT_EQ(HostStringMatch(text, CString(pattern), true), expected);
    ASSERT_EQ(text.terminated(), before.substr(0, 254));
  }
}

TEST(StringsRandom, PStrCatAndPStrInsertMatchTheReference) {
  Random random(7);
  for (int i = 0; i < kInputs; ++i) {
    const PString source = randomString(random);
    PString appendedTo = randomString(random);
    PString insertedInto = appendedTo;
    const std::string old = appendedTo.text();
    const auto sum = static_cast<unsigned char>(source.length() + appendedTo.length());
    ASSERT_EQ(PStrCat(source, appendedTo), sum);
    ASSERT_EQ(PStrInsert(source, insertedInto), sum);
    const std::string behind = (old + source.text()).substr(0, 255);
    const std::string before = (source.text() + old).substr(0, 255);
    ASSERT_EQ(std::string(appendedTo.characters(), behind.size()), behind);
    ASSERT_EQ(std::string(insertedInto.characters(), before.size()), before);
    ASSERT_EQ(appendedTo.length(), sum);
    ASSERT_EQ(insertedInto.length(), sum);
  }
}

TEST(StringsRandom, ConversionsBetweenStringFormsMatchTheReference) {
  Random random(8);
  for (int i = 0; i < kInputs; ++i) {
    const std::string text = random.text(random.length(), kLetters);
    CString zeroTerminated(std::string(text.size(), 'X'));
    PToCStr(PString(text), zeroTerminated);
    ASSERT_EQ(zeroTerminated.text(), text);
    std::string prefixed(text.size() + 2, 'X');
    CToPStr(CString(text), reinterpret_cast<unsigned char*>(prefixed.data()));
    ASSERT_EQ(prefixed, static_cast<char>(text.size()) + text + '\0');
  }
}

TEST(StringsRandom, FourCharacterCodesMatchTheReference) {
  Random random(9);
  for (int i = 0; i < kInputs; ++i) {
    const auto code = static_cast<std::uint32_t>(random.bits());
    const std::uint32_t bytes[4] = {code >> 24, code >> 16 & 255, code >> 8 & 255, code & 255};
    CString buffer("xxxxx");
    PIType2Char(code, buffer);
    std::uint32_t expected = 0;
    for (int k = 0; k < 4; ++k) {
      ASSERT_EQ(static_cast<unsigned char>(buffer[k]), bytes[k]);
      expected = expected * 256 | (bytes[k] < 128 ? bytes[k] : bytes[k] + 0xFFFFFF00u);
    }
    ASSERT_EQ(buffer[4], 0);
    ASSERT_EQ(PIChar2Type(buffer), expected);
  }
}

TEST(StringsRandom, HostReportErrorMatchesTheReference) {
  Random random(10);
  for (int i = 0; i < kInputs; ++i) {
    PString errorString = randomString(random);
    const PString message = randomString(random);
    ASSERT_EQ(HostReportError(errorString, message), -30904);
    ASSERT_EQ(errorString.terminated(), message.text().substr(0, 254));
  }
}

TEST(StringsRandom, NumToStringMatchesTheReference) {
  Random random(11);
  PString text;
  for (int i = 0; i < kInputs; ++i) {
    const auto number = static_cast<std::int32_t>(random.bits()) >> random.below(32);
    char expected[16];
    std::snprintf(expected, sizeof expected, "%d", number);
    NumToString(number, text);
    ASSERT_EQ(text.terminated(), expected);
    ASSERT_EQ(text.length(), static_cast<int>(std::strlen(expected)));
  }
}

TEST(StringsRandom, PowerMatchesTheReference) {
  Random random(12);
  for (int i = 0; i < kInputs; ++i) {
    const auto base = static_cast<std::uint32_t>(random.bits() >> random.below(64));
    const int exponent = random.below(100) ? random.between(-3, 40) : random.between(0, 0x30000);
    double expected = 1.0;
    if (exponent % 65536 != 0) {
      expected = base;
      for (int k = 1; k < exponent; ++k) expected *= base;
    }
    ASSERT_EQ(power(base, exponent), expected) << base << " to the power of " << exponent;
  }
}

double randomDouble(Random& random) {
  switch (random.below(8)) {
    case 0:
      return std::bit_cast<double>(random.bits());
    case 1:
      return std::ldexp(static_cast<double>(random.bits()), random.between(-70, 5));
    case 2:
      return random.between(-20000, 20000) / 8.0;
    default:
      return random.between(-2000000, 2000000) / 1000.0;
  }
}

TEST(StringsRandom, DoubleToStringMatchesTheReference) {
  Random random(13);
  PString text;
  for (int i = 0; i < kInputs; ++i) {
    const double value = randomDouble(random);
    const auto places =
        static_cast<short>(random.below(50) ? random.between(-2, 9) : random.between(-400, 400));
    int last = 0;
    const std::string expected = doubleText(value, places, &last);
    ASSERT_EQ(DoubleToString(text, places, value), last) << value << ", " << places;
    ASSERT_EQ(text.text(), expected) << value << ", " << places;
    ASSERT_EQ(text[text.length() + 1], 0);
  }
}

TEST(StringsRandom, DivideAtDecimalMatchesTheReference) {
  Random random(14);
  for (int i = 0; i < kInputs; ++i) {
    PString number = randomString(random, kNumberCharacters);
    PString fraction(random.text(random.below(8), kLetters));
    const PString numberBefore = number;
    std::string left = number.text();
    std::string right = fraction.text();
    DivideAtDecimal(number, fraction);
    if (!divided(left, right)) {
      ASSERT_TRUE(number == numberBefore);
      ASSERT_EQ(fraction.text(), right);
    } else {
      ASSERT_EQ(number.terminated(), left);
      ASSERT_EQ(fraction.terminated(), right.substr(0, 254));
    }
  }
}

TEST(StringsRandom, StringToNumberMatchesTheReference) {
  Random random(15);
  for (int i = 0; i < kInputs; ++i) {
    PString text = randomString(random, i % 2 ? kNumberCharacters : " -12");
    std::string plain = text.text();
    std::int32_t ours = 77;
    int theirs = 77;
    ASSERT_EQ(StringToNumber(text, &ours), numberOf(plain, &theirs)) << plain;
    ASSERT_EQ(ours, theirs);
    ASSERT_EQ(text.text(), plain);
  }
}

TEST(StringsRandom, StringToDoubleMatchesTheReference) {
  Random random(16);
  for (int i = 0; i < kInputs; ++i) {
    PString text = randomString(random, i % 2 ? kNumberCharacters : "0123456789.-");
    const std::string before = text.text();
    std::string plain = before;
    double ours = 77;
    double theirs = 77;
    ASSERT_EQ(StringToDouble(text, &ours), doubleOf(plain, &theirs)) << before;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(ours), std::bit_cast<std::uint64_t>(theirs)) << before;
    ASSERT_EQ(text.text(), plain);
  }
}

}  // namespace
