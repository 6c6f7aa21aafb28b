// Streams and formatted text of the target's C library.
#pragma once

#include <stdarg.h>
#include <stddef.h>

#define EOF (-1)
#define BUFSIZ 1024
#define _IONBF 2
#define FILENAME_MAX 1024
#define SEEK_SET 0
#define SEEK_CUR 1
#define SEEK_END 2

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __sFILE FILE;
typedef long long fpos_t;
typedef long long off_t;

// The standard streams are pointer variables in the library.
extern FILE* __stdinp;
extern FILE* __stdoutp;
extern FILE* __stderrp;
#define stdin __stdinp
#define stdout __stdoutp
#define stderr __stderrp

FILE* fopen(const char* path, const char* mode);
int fclose(FILE* stream);
int feof(FILE* stream);
int ferror(FILE* stream);
int fflush(FILE* stream);
int fgetc(FILE* stream);
char* fgets(char* buffer, int size, FILE* stream);
int fputc(int character, FILE* stream);
int fputs(const char* text, FILE* stream);
size_t fread(void* buffer, size_t size, size_t count, FILE* stream);
size_t fwrite(const void* buffer, size_t size, size_t count, FILE* stream);
int fseek(FILE* stream, long offset, int origin);
int fseeko(FILE* stream, off_t offset, int origin);
long ftell(FILE* stream);
off_t ftello(FILE* stream);
void rewind(FILE* stream);
int setvbuf(FILE* stream, char* buffer, int mode, size_t size);
int getc(FILE* stream);
int putc(int character, FILE* stream);
int putchar(int character);
int puts(const char* text);
int remove(const char* path);
int ungetc(int character, FILE* stream);

int printf(const char* format, ...) __attribute__((format(printf, 1, 2)));
int fprintf(FILE* stream, const char* format, ...) __attribute__((format(printf, 2, 3)));
int snprintf(char* buffer, size_t size, const char* format, ...)
    __attribute__((format(printf, 3, 4)));
int sscanf(const char* text, const char* format, ...) __attribute__((format(scanf, 2, 3)));
int vprintf(const char* format, va_list arguments) __attribute__((format(printf, 1, 0)));
int vfprintf(FILE* stream, const char* format, va_list arguments)
    __attribute__((format(printf, 2, 0)));
int vsnprintf(char* buffer, size_t size, const char* format, va_list arguments)
    __attribute__((format(printf, 3, 0)));

#ifdef __cplusplus
}
#endif
