// SPDX-License-Identifier: MIT
// As much of the header as the GNU standard library names, for a compilation that makes no code.
#pragma once
typedef struct thread_* pthread_t;
typedef unsigned int pthread_key_t;
typedef long pthread_once_t;
typedef struct mutex_* pthread_mutex_t;
typedef struct mutex_attribute_* pthread_mutexattr_t;
typedef struct condition_* pthread_cond_t;
#define PTHREAD_ONCE_INIT 0
#define PTHREAD_MUTEX_INITIALIZER nullptr
#define PTHREAD_COND_INITIALIZER nullptr
#define PTHREAD_MUTEX_RECURSIVE 1
extern "C" {
int sched_yield();
int pthread_cond_broadcast(pthread_cond_t*);
int pthread_cond_destroy(pthread_cond_t*);
int pthread_cond_signal(pthread_cond_t*);
int pthread_cond_timedwait(pthread_cond_t*, pthread_mutex_t*, const timespec*);
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t*);
int pthread_create(pthread_t*, const void*, void* (*)(void*), void*);
int pthread_detach(pthread_t);
int pthread_equal(pthread_t, pthread_t);
void* pthread_getspecific(pthread_key_t);
int pthread_join(pthread_t, void**);
int pthread_key_create(pthread_key_t*, void (*)(void*));
int pthread_key_delete(pthread_key_t);
int pthread_mutex_destroy(pthread_mutex_t*);
int pthread_mutex_init(pthread_mutex_t*, const pthread_mutexattr_t*);
int pthread_mutex_lock(pthread_mutex_t*);
int pthread_mutex_timedlock(pthread_mutex_t*, const timespec*);
int pthread_mutex_trylock(pthread_mutex_t*);
int pthread_mutex_unlock(pthread_mutex_t*);
int pthread_mutexattr_destroy(pthread_mutexattr_t*);
int pthread_mutexattr_init(pthread_mutexattr_t*);
int pthread_mutexattr_settype(pthread_mutexattr_t*, int);
int pthread_once(pthread_once_t*, void (*)());
pthread_t pthread_self();
int pthread_setspecific(pthread_key_t, const void*);
}
