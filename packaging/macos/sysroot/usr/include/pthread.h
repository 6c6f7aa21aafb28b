// The threading types that the C++ library's headers use, with the target's sizes. Few functions
// are declared, because the plug-in starts its only thread with Multiprocessing Services.
#pragma once

#include <sched.h>
#include <time.h>

#define PTHREAD_MUTEX_RECURSIVE 2
#define PTHREAD_MUTEX_INITIALIZER {0x32AAABA7, {0}}
#define PTHREAD_COND_INITIALIZER {0x3CB0B1BB, {0}}
#define PTHREAD_ONCE_INIT {0x30B1BCBA, {0}}

#ifdef __cplusplus
extern "C" {
#endif

typedef struct _opaque_pthread_t* pthread_t;
typedef unsigned long pthread_key_t;
typedef struct {
  long signature;
  char opaque[56];
} pthread_mutex_t;
typedef struct {
  long signature;
  char opaque[8];
} pthread_mutexattr_t;
typedef struct {
  long signature;
  char opaque[40];
} pthread_cond_t;
typedef struct {
  long signature;
  char opaque[8];
} pthread_condattr_t;
typedef struct {
  long signature;
  char opaque[8];
} pthread_once_t;

int pthread_mutexattr_init(pthread_mutexattr_t* attributes);
int pthread_mutexattr_settype(pthread_mutexattr_t* attributes, int type);
int pthread_mutexattr_destroy(pthread_mutexattr_t* attributes);
int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int pthread_mutex_lock(pthread_mutex_t* mutex);
int pthread_mutex_trylock(pthread_mutex_t* mutex);
int pthread_mutex_unlock(pthread_mutex_t* mutex);
int pthread_mutex_destroy(pthread_mutex_t* mutex);
int pthread_cond_signal(pthread_cond_t* condition);
int pthread_cond_broadcast(pthread_cond_t* condition);
int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex);
int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                           const struct timespec* until);
int pthread_cond_destroy(pthread_cond_t* condition);
pthread_t pthread_self(void);
int pthread_equal(pthread_t left, pthread_t right);
int pthread_create(pthread_t* thread, const void* attributes, void* (*start)(void*), void* data);
int pthread_join(pthread_t thread, void** result);
int pthread_detach(pthread_t thread);
int pthread_once(pthread_once_t* once, void (*function)(void));
int pthread_key_create(pthread_key_t* key, void (*destructor)(void*));
void* pthread_getspecific(pthread_key_t key);
int pthread_setspecific(pthread_key_t key, const void* value);

#ifdef __cplusplus
}
#endif
