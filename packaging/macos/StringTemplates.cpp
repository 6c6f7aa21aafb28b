// The C++ library's headers expect common template instantiations in the system's library. The
// library of the oldest supported system is older than the headers and lacks some of them, so the
// bundle contains its own; those it does not use are stripped.
#include <string>

template class std::basic_string<char>;
template std::string std::operator+
    <char, std::char_traits<char>, std::allocator<char>>(const char*, const std::string&);
