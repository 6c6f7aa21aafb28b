// The state of a multi-byte conversion; the C++ library's headers need the type.
#pragma once

typedef union {
  char opaque[128];
  long long align;
} mbstate_t;
