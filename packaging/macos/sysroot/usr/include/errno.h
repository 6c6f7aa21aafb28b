// The error number of the calling thread and the codes that differ from, or agree with, other
// systems: the values are the target's.
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
