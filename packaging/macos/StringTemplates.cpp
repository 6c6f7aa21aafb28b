// The C++ library's headers leave the common templates to the system's library, but the library
// of the oldest supported system is older than these headers and lacks some of them. The bundle
// brings what it uses; the rest is stripped.
#include <string>

template class std::basic_string<char>;
template std::string std::operator+
    <char, std::char_traits<char>, std::allocator<char>>(const char*, const std::string&);
