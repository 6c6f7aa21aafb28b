// Time types, with the target's sizes.
#pragma once

#include <stddef.h>

#define CLOCKS_PER_SEC 1000000

#ifdef __cplusplus
extern "C" {
#endif

typedef long time_t;
typedef unsigned long clock_t;

struct timespec {
  time_t tv_sec;
  long tv_nsec;
};

struct tm {
  int tm_sec, tm_min, tm_hour, tm_mday, tm_mon, tm_year, tm_wday, tm_yday, tm_isdst;
  long tm_gmtoff;
  char* tm_zone;
};

typedef enum { CLOCK_REALTIME = 0, CLOCK_MONOTONIC = 6 } clockid_t;

clock_t clock(void);
time_t time(time_t* result);
int clock_gettime(clockid_t clock, struct timespec* result);
int nanosleep(const struct timespec* wanted, struct timespec* left);

#ifdef __cplusplus
}
#endif
