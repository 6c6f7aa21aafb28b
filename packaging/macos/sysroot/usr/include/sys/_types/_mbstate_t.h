// The state of a multi-byte conversion, which the C++ library's headers name and nothing here uses.
#pragma once

typedef union {
  char opaque[128];
  long long align;
} mbstate_t;
