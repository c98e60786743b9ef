// SPDX-License-Identifier: MIT
#include "tests/plugin/ForbiddenCalls.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <pthread.h>
#include <sched.h>
#include <semaphore.h>
#include <unistd.h>

namespace {

// Constant-initialised, so that calls before main find them ready.
constinit thread_local bool watching = false;
constinit int calls = 0;
constinit const char* lastCall = "none";

void note(const char* what) {
  if (!watching) return;
  ++calls;
  lastCall = what;
}

template <class Function>
Function next(Function& cached, const char* name) {
  if (!cached) cached = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
  return cached;
}

}  // namespace

namespace forbidden {

Watch::Watch() { watching = true; }
Watch::~Watch() { watching = false; }
int count() { return calls; }
std::string last() { return lastCall; }
void reset() {
  calls = 0;
  lastCall = "none";
}

}  // namespace forbidden

#define IN_FRONT extern "C" __attribute__((visibility("default")))

// Stands in front of the system's function of that name and passes the call on.
#define INTERPOSE(result, name, parameters, arguments) \
  IN_FRONT result name parameters {                    \
    static result(*real) parameters = nullptr;         \
    note(#name);                                       \
    return next(real, #name) arguments;                \
  }

// The same for memory, by the C library's second names: looking for the next malloc may itself need memory.
#define INTERPOSE_MEMORY(result, name, parameters, arguments) \
  extern "C" result __libc_##name parameters;                 \
  IN_FRONT result name parameters noexcept {                  \
    note(#name);                                              \
    return __libc_##name arguments;                           \
  }

INTERPOSE_MEMORY(void*, malloc, (std::size_t size), (size))
INTERPOSE_MEMORY(void*, calloc, (std::size_t n, std::size_t size), (n, size))
INTERPOSE_MEMORY(void*, realloc, (void* old, std::size_t size), (old, size))
INTERPOSE_MEMORY(void*, memalign, (std::size_t alignment, std::size_t size), (alignment, size))
INTERPOSE_MEMORY(void, free, (void* memory), (memory))

IN_FRONT void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept { return memalign(alignment, size); }
IN_FRONT int posix_memalign(void** out, std::size_t alignment, std::size_t size) noexcept {
  *out = memalign(alignment, size);
  return *out ? 0 : ENOMEM;
}

INTERPOSE(int, pthread_mutex_lock, (pthread_mutex_t * m) noexcept, (m))
INTERPOSE(int, pthread_mutex_trylock, (pthread_mutex_t * m) noexcept, (m))
INTERPOSE(int, pthread_rwlock_rdlock, (pthread_rwlock_t * l) noexcept, (l))
INTERPOSE(int, pthread_rwlock_wrlock, (pthread_rwlock_t * l) noexcept, (l))
INTERPOSE(int, pthread_spin_lock, (pthread_spinlock_t * l) noexcept, (l))
INTERPOSE(int, pthread_cond_wait, (pthread_cond_t * c, pthread_mutex_t* m), (c, m))
INTERPOSE(int, sem_wait, (sem_t * s), (s))
INTERPOSE(int, sched_yield, () noexcept, ())
INTERPOSE(int, nanosleep, (const timespec* t, timespec* rest), (t, rest))
INTERPOSE(int, usleep, (useconds_t t), (t))
INTERPOSE(ssize_t, write, (int file, const void* data, std::size_t size), (file, data, size))
INTERPOSE(ssize_t, read, (int file, void* data, std::size_t size), (file, data, size))

// The C library's streams reach their files by names of its own, so these are watched one by one.
INTERPOSE(int, vfprintf, (FILE * file, const char* format, va_list values), (file, format, values))
INTERPOSE(int, fputs, (const char* text, FILE* file), (text, file))
INTERPOSE(int, fputc, (int character, FILE* file), (character, file))
INTERPOSE(std::size_t, fwrite, (const void* data, std::size_t size, std::size_t n, FILE* file), (data, size, n, file))
IN_FRONT int fprintf(FILE* file, const char* format, ...) {
  va_list values;
  va_start(values, format);
  const int written = vfprintf(file, format, values);
  va_end(values);
  return written;
}
