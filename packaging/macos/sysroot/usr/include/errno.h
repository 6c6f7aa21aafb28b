// The error number of the calling thread, and error codes with the values of the target.
#pragma once

#define EPERM 1
#define ENOENT 2
#define EINTR 4
#define EIO 5
#define ENOMEM 12
#define EACCES 13
#define EBUSY 16
#define EEXIST 17
#define EINVAL 22
#define EDOM 33
#define ERANGE 34
#define EAGAIN 35
#define ETIMEDOUT 60

#ifdef __cplusplus
extern "C" {
#endif

int* __error(void);
#define errno (*__error())

#ifdef __cplusplus
}
#endif
