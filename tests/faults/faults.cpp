#include "tests/faults/faults.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include <unistd.h>

namespace {

Fault kind;
unsigned long wanted;
unsigned long *counted; /* null: not armed */

bool fails(Fault fault) {
    return counted != nullptr && fault == kind && ++*counted == wanted;
}

/* --- output: a stream that is written through here, so that it fails as a full disk makes it ---
 */

ssize_t writeThrough(void *cookie, const char *octets, std::size_t size) {
    const int file = static_cast<int>(reinterpret_cast<std::intptr_t>(cookie));
    if (!fails(Fault::Output))
        return write(file, octets, size);
    errno = ENOSPC;
    return 0;
}

int closeThrough(void *cookie) {
    const int file = static_cast<int>(reinterpret_cast<std::intptr_t>(cookie));
    const int closed = close(file);
    if (!fails(Fault::Output))
        return closed;
    errno = EIO;
    return -1;
}

std::FILE *openThrough(int file, const char *mode) {
    cookie_io_functions_t functions = {};
    functions.write = writeThrough;
    functions.close = closeThrough;
    return fopencookie(reinterpret_cast<void *>(static_cast<std::intptr_t>(file)), mode, functions);
}

} // namespace

/* --- allocations: those of C where the linker leads them here --- */

extern "C" {
void *__real_malloc(std::size_t size);
void *__real_calloc(std::size_t count, std::size_t size);
void *__real_realloc(void *memory, std::size_t size);
void *__wrap_malloc(std::size_t size);
void *__wrap_calloc(std::size_t count, std::size_t size);
void *__wrap_realloc(void *memory, std::size_t size);

void *__wrap_malloc(std::size_t size) {
    return fails(Fault::Allocation) ? nullptr : __real_malloc(size);
}
void *__wrap_calloc(std::size_t count, std::size_t size) {
    return fails(Fault::Allocation) ? nullptr : __real_calloc(count, size);
}
void *__wrap_realloc(void *memory, std::size_t size) {
    return fails(Fault::Allocation) ? nullptr : __real_realloc(memory, size);
}
}

namespace {

void *allocate(std::size_t size) {
    for (;;) {
        void *memory = std::malloc(size == 0 ? 1 : size);
        if (memory != nullptr)
            return memory;
        if (std::get_new_handler() == nullptr)
            throw std::bad_alloc();
        std::get_new_handler()();
    }
}

} // namespace

void armFaults(Fault fault, unsigned long number, unsigned long &counter) {
    kind = fault;
    wanted = number;
    counted = &counter;
    if (fault == Fault::Output)
        stdout = openThrough(dup(STDOUT_FILENO), "w");
}

void disarmFaults() {
    counted = nullptr;
}

void *operator new(std::size_t size) {
    return allocate(size);
}
void operator delete(void *memory) noexcept {
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept {
    std::free(memory);
}

extern "C" {

std::FILE *__real_fopen(const char *path, const char *mode);
int __real_rename(const char *from, const char *to);
std::FILE *__wrap_fopen(const char *path, const char *mode);
int __wrap_rename(const char *from, const char *to);

std::FILE *__wrap_fopen(const char *path, const char *mode) {
    if (counted == nullptr || mode[0] == 'r' || kind != Fault::Output)
        return __real_fopen(path, mode);
    if (fails(Fault::Output)) {
        errno = ENOSPC;
        return nullptr;
    }
    std::FILE *file = __real_fopen(path, mode);
    if (file == nullptr)
        return nullptr;
    const int number = dup(fileno(file));
    std::fclose(file);
    return openThrough(number, mode);
}

int __wrap_rename(const char *from, const char *to) {
    if (!fails(Fault::Output))
        return __real_rename(from, to);
    errno = EIO;
    return -1;
}
}
