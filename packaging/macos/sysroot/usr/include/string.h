// Memory blocks and strings of the target's C library.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

void* memchr(const void* block, int byte, size_t size);
int memcmp(const void* left, const void* right, size_t size);
void* memcpy(void* destination, const void* source, size_t size);
void* memmove(void* destination, const void* source, size_t size);
void* memset(void* block, int byte, size_t size);

char* strcat(char* destination, const char* source);
char* strchr(const char* text, int character);
int strcmp(const char* left, const char* right);
char* strcpy(char* destination, const char* source);
size_t strcspn(const char* text, const char* characters);
char* strdup(const char* text);
char* strerror(int number);
size_t strlcat(char* destination, const char* source, size_t size);
size_t strlcpy(char* destination, const char* source, size_t size);
size_t strlen(const char* text);
char* strncat(char* destination, const char* source, size_t size);
int strncmp(const char* left, const char* right, size_t size);
char* strncpy(char* destination, const char* source, size_t size);
size_t strnlen(const char* text, size_t size);
char* strpbrk(const char* text, const char* characters);
char* strrchr(const char* text, int character);
size_t strspn(const char* text, const char* characters);
char* strstr(const char* text, const char* part);

#ifdef __cplusplus
}
#endif
