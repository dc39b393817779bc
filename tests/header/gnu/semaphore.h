// SPDX-License-Identifier: MIT
// As much of the header as the GNU standard library names, for a compilation that makes no code.
#pragma once
typedef struct semaphore_* sem_t;
extern "C" {
int sem_destroy(sem_t*);
int sem_init(sem_t*, int, unsigned int);
int sem_post(sem_t*);
int sem_timedwait(sem_t*, const timespec*);
int sem_trywait(sem_t*);
int sem_wait(sem_t*);
}
