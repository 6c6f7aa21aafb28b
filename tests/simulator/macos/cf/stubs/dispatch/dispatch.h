// As much of the dispatch library as Apple's Core Foundation needs to compile and to answer
// questions on one thread. What has no body here is not called.
#pragma once

#include <pthread.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <time.h>

typedef long dispatch_once_t;
typedef uint64_t dispatch_time_t;
typedef void* dispatch_data_t;
typedef void* dispatch_queue_t;
typedef void* dispatch_semaphore_t;
typedef void* dispatch_source_t;
typedef void (^dispatch_block_t)(void);

#define DISPATCH_TIME_FOREVER (~0ull)
#define DISPATCH_TIME_NOW 0ull
#define DISPATCH_QUEUE_CONCURRENT ((dispatch_queue_t)0)
#define DISPATCH_APPLY_AUTO ((dispatch_queue_t)0)
#define DISPATCH_QUEUE_PRIORITY_HIGH 2
#define DISPATCH_QUEUE_PRIORITY_DEFAULT 0
#define DISPATCH_QUEUE_PRIORITY_LOW (-2)
#define DISPATCH_QUEUE_PRIORITY_BACKGROUND INT16_MIN
#define NSEC_PER_SEC 1000000000ull
#define NSEC_PER_MSEC 1000000ull
#define NSEC_PER_USEC 1000ull

static inline void dispatch_once(dispatch_once_t* done, dispatch_block_t block) {
  if (*done != 0) return;
  *done = 1;
  block();
}

dispatch_queue_t dispatch_get_global_queue(long, unsigned long);
dispatch_queue_t dispatch_get_main_queue(void);
dispatch_queue_t dispatch_queue_create(const char*, void*);
dispatch_semaphore_t dispatch_semaphore_create(long);
dispatch_time_t dispatch_time(dispatch_time_t, int64_t);
long dispatch_semaphore_signal(dispatch_semaphore_t);
long dispatch_semaphore_wait(dispatch_semaphore_t, dispatch_time_t);
void dispatch_apply(size_t, dispatch_queue_t, void (^)(size_t));
void dispatch_async(dispatch_queue_t, dispatch_block_t);
void dispatch_release(void*);
void dispatch_retain(void*);
void dispatch_source_cancel(dispatch_source_t);
void dispatch_sync(dispatch_queue_t, dispatch_block_t);
