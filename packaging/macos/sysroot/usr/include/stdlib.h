// Memory, conversion and process functions of the target's C library that the plug-in may call.
#pragma once

#include <stddef.h>

#define EXIT_SUCCESS 0
#define EXIT_FAILURE 1

#ifdef __cplusplus
extern "C" {
#endif

typedef struct {
  int quot, rem;
} div_t;
typedef struct {
  long quot, rem;
} ldiv_t;
typedef struct {
  long long quot, rem;
} lldiv_t;

void* malloc(size_t size);
void* calloc(size_t count, size_t size);
void* realloc(void* block, size_t size);
void free(void* block);
int posix_memalign(void** block, size_t alignment, size_t size);

void abort(void) __attribute__((noreturn));
void exit(int status) __attribute__((noreturn));
int atexit(void (*function)(void));
char* getenv(const char* name);

int atoi(const char* text);
double atof(const char* text);
double strtod(const char* text, char** end);
long strtol(const char* text, char** end, int base);
unsigned long strtoul(const char* text, char** end, int base);
long long strtoll(const char* text, char** end, int base);
unsigned long long strtoull(const char* text, char** end, int base);

int abs(int value);
long labs(long value);
long long llabs(long long value);
div_t div(int numerator, int denominator);
ldiv_t ldiv(long numerator, long denominator);
lldiv_t lldiv(long long numerator, long long denominator);

void qsort(void* base, size_t count, size_t size, int (*compare)(const void*, const void*));
void* bsearch(const void* key, const void* base, size_t count, size_t size,
              int (*compare)(const void*, const void*));

#ifdef __cplusplus
}
#endif
