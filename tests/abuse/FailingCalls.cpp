// A library to preload: the Nth call of one kind fails, as it does when a disk, a table or the memory is
// full.
//
//     GENVARA_FAIL_CALL   open, read, write, fsync, rename, truncate, map or malloc
//     GENVARA_FAIL_AT     which of them, from 1
//     GENVARA_FAIL_BELOW  only files of this folder count, and memory always
//     GENVARA_FAIL_ON     the fault lasts from there on, and not for one call alone
//     GENVARA_FAIL_MARK   a file that is made when the call fails: whoever does not find it asked for one too
//     many
//
// Every kind stands for all calls of its family. Nothing fails before `main`: a loader without memory proves
// nothing.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

std::atomic<long> s_seen{0};
std::atomic<bool> s_isReady{false};
const char* s_call = nullptr;
const char* s_below = nullptr;
const char* s_mark = nullptr;
long s_at = 0;
bool s_lasts = false;

__attribute__((constructor)) void ReadEnvironment() {
    s_call = std::getenv("GENVARA_FAIL_CALL");
    s_below = std::getenv("GENVARA_FAIL_BELOW");
    s_mark = std::getenv("GENVARA_FAIL_MARK");
    const char* at = std::getenv("GENVARA_FAIL_AT");
    s_at = at != nullptr ? std::atol(at) : 0;
    s_lasts = std::getenv("GENVARA_FAIL_ON") != nullptr;
}

using Main = int (*)(int, char**, char**);
Main s_main = nullptr;

int MainThatMayFail(int count, char** arguments, char** environment) {
    s_isReady = s_call != nullptr && std::getenv("GENVARA_FAIL_LATER") == nullptr;
    const int status = s_main(count, arguments, environment);
    s_isReady = false;
    return status;
}

/// Counts a call of a kind; whether it is to fail.
bool Fails(const char* kind) {
    if (!s_isReady || std::strcmp(kind, s_call) != 0) {
        return false;
    }
    const long number = ++s_seen;
    if (number != s_at && !(s_lasts && number > s_at)) {
        return false;
    }
    if (number == s_at && s_mark != nullptr) {
        const long mark = syscall(SYS_openat, AT_FDCWD, s_mark, O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        syscall(SYS_close, mark);
    }
    return true;
}

bool IsBelow(const char* path) {
    return s_below == nullptr || (path != nullptr && std::strncmp(path, s_below, std::strlen(s_below)) == 0);
}

/// Whether an open file lies in the folder.
bool IsBelow(int descriptor) {
    if (!s_isReady) {
        return false;
    }
    std::array<char, 64> link{};
    std::array<char, PATH_MAX> path{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link.data(), path.data(), path.size() - 1);
    return length > 0 && IsBelow(path.data());
}

int Failed(int error) {
    errno = error;
    return -1;
}

template <typename Function>
Function Next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int OpenNext(const char* name, const char* path, int flags, mode_t mode) {
    using Open = int (*)(const char*, int, mode_t);
    return IsBelow(path) && Fails("open") ? Failed(EMFILE) : Next<Open>(name)(path, flags, mode);
}

mode_t ModeOf(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

// The system's own names; its headers give even the parameters such.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)
extern "C" {

void genvara_fail_from_now() {
    s_isReady = s_call != nullptr;
}

int __libc_start_main(Main main, int count, char** arguments, void (*begin)(), void (*end)(),
                      void (*loader)(), void* stack) {
    using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
    s_main = main;
    return Next<Start>("__libc_start_main")(MainThatMayFail, count, arguments, begin, end, loader, stack);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenNext("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenNext("open64", path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    if (IsBelow(path) && Fails("open")) {
        errno = EMFILE;
        return nullptr;
    }
    return Next<FILE* (*)(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    if (IsBelow(path) && Fails("open")) {
        errno = EMFILE;
        return nullptr;
    }
    return Next<FILE* (*)(const char*, const char*)>("fopen64")(path, mode);
}

int mkostemp(char* pattern, int flags) {
    return IsBelow(pattern) && Fails("open") ? Failed(ENOSPC)
                                             : Next<int (*)(char*, int)>("mkostemp")(pattern, flags);
}

int mkostemp64(char* pattern, int flags) {
    return IsBelow(pattern) && Fails("open") ? Failed(ENOSPC)
                                             : Next<int (*)(char*, int)>("mkostemp64")(pattern, flags);
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
    if (IsBelow(descriptor) && Fails("write")) {
        return Failed(ENOSPC);
    }
    return Next<ssize_t (*)(int, const void*, size_t)>("write")(descriptor, bytes, count);
}

ssize_t writev(int descriptor, const iovec* parts, int count) {
    if (IsBelow(descriptor) && Fails("write")) {
        return Failed(ENOSPC);
    }
    return Next<ssize_t (*)(int, const iovec*, int)>("writev")(descriptor, parts, count);
}

ssize_t pwrite(int descriptor, const void* bytes, size_t count, off_t offset) {
    if (IsBelow(descriptor) && Fails("write")) {
        return Failed(ENOSPC);
    }
    return Next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite")(descriptor, bytes, count, offset);
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t offset) {
    if (IsBelow(descriptor) && Fails("write")) {
        return Failed(ENOSPC);
    }
    return Next<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64")(descriptor, bytes, count, offset);
}

ssize_t read(int descriptor, void* bytes, size_t count) {
    if (IsBelow(descriptor) && Fails("read")) {
        return Failed(EIO);
    }
    return Next<ssize_t (*)(int, void*, size_t)>("read")(descriptor, bytes, count);
}

ssize_t pread(int descriptor, void* bytes, size_t count, off_t offset) {
    if (IsBelow(descriptor) && Fails("read")) {
        return Failed(EIO);
    }
    return Next<ssize_t (*)(int, void*, size_t, off_t)>("pread")(descriptor, bytes, count, offset);
}

ssize_t pread64(int descriptor, void* bytes, size_t count, off64_t offset) {
    if (IsBelow(descriptor) && Fails("read")) {
        return Failed(EIO);
    }
    return Next<ssize_t (*)(int, void*, size_t, off64_t)>("pread64")(descriptor, bytes, count, offset);
}

int fsync(int descriptor) {
    return IsBelow(descriptor) && Fails("fsync") ? Failed(EIO) : Next<int (*)(int)>("fsync")(descriptor);
}

int fdatasync(int descriptor) {
    return IsBelow(descriptor) && Fails("fsync") ? Failed(EIO) : Next<int (*)(int)>("fdatasync")(descriptor);
}

int rename(const char* from, const char* to) {
    return IsBelow(to) && Fails("rename") ? Failed(EACCES)
                                          : Next<int (*)(const char*, const char*)>("rename")(from, to);
}

int ftruncate(int descriptor, off_t size) {
    return IsBelow(descriptor) && Fails("truncate")
               ? Failed(ENOSPC)
               : Next<int (*)(int, off_t)>("ftruncate")(descriptor, size);
}

int ftruncate64(int descriptor, off64_t size) {
    return IsBelow(descriptor) && Fails("truncate")
               ? Failed(ENOSPC)
               : Next<int (*)(int, off64_t)>("ftruncate64")(descriptor, size);
}

void* mmap64(void* address, size_t size, int protection, int flags, int descriptor, off64_t offset) {
    if (descriptor >= 0 && IsBelow(descriptor) && Fails("map")) {
        errno = ENOMEM;
        return MAP_FAILED;
    }
    using Map = void* (*)(void*, size_t, int, int, int, off64_t);
    return Next<Map>("mmap64")(address, size, protection, flags, descriptor, offset);
}

void* mmap(void* address, size_t size, int protection, int flags, int descriptor, off_t offset) {
    if (descriptor >= 0 && IsBelow(descriptor) && Fails("map")) {
        errno = ENOMEM;
        return MAP_FAILED;
    }
    using Map = void* (*)(void*, size_t, int, int, int, off_t);
    return Next<Map>("mmap")(address, size, protection, flags, descriptor, offset);
}

// What the C library offers under these names is what `dlsym` would find; it needs memory itself to look for
// it.
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);

void* malloc(size_t size) {
    if (Fails("malloc")) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_malloc(size);
}

void* calloc(size_t count, size_t size) {
    if (Fails("malloc")) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_calloc(count, size);
}

void* realloc(void* memory, size_t size) {
    if (Fails("malloc")) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_realloc(memory, size);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)
