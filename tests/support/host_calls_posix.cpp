// A program's own functions come before those of the C library (glibc), also for the libraries it has loaded.
// What a stream does is seen by making it from functions of our own, by fopencookie.

#include "support/host_calls.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

long s_untilFailure = 0; // 0: none is to fail
long s_calls = 0;

bool fails() {
    ++s_calls;
    if (s_untilFailure == 0 || --s_untilFailure > 0)
        return false;
    errno = EIO;
    return true;
}

/// The C library's function of the same type as `own`.
template <class Function>
Function* original(Function* /*own*/, char const* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

template <class Function, class... Arguments>
auto call(Function* own, char const* name, Arguments... arguments) -> decltype(own(arguments...)) {
    if (fails())
        return -1;
    return original(own, name)(arguments...);
}

/// A name in an open directory, as a path from the root.
std::string pathOf(int directory, char const* name) {
    if (directory == AT_FDCWD || name[0] == '/')
        return name;
    char path[PATH_MAX];
    std::string const link = "/proc/self/fd/" + std::to_string(directory);
    ssize_t const length = readlink(link.c_str(), path, sizeof path);
    return std::string(path, length > 0 ? static_cast<std::size_t>(length) : 0) + "/" + name;
}

void tellOfMaking(int directory, char const* name) {
    if (test::g_afterMaking)
        test::g_afterMaking(pathOf(directory, name));
}

/// The streams made here, by their descriptors.
std::array<std::FILE*, 64> s_streams{};

int descriptorOf(void* cookie) { return static_cast<int>(reinterpret_cast<std::intptr_t>(cookie)); }

ssize_t readCookie(void* cookie, char* buffer, std::size_t size) {
    return read(descriptorOf(cookie), buffer, size);
}

ssize_t writeCookie(void* cookie, char const* buffer, std::size_t size) {
    return fails() ? 0 : write(descriptorOf(cookie), buffer, size); // 0 is a cookie's way to fail
}

int seekCookie(void* cookie, off64_t* offset, int whence) {
    *offset = lseek(descriptorOf(cookie), *offset, whence);
    return *offset < 0 ? -1 : 0;
}

int closeCookie(void* cookie) {
    s_streams.at(static_cast<std::size_t>(descriptorOf(cookie))) = nullptr;
    close(descriptorOf(cookie));
    return fails() ? -1 : 0;
}

std::FILE* cookieStream(int descriptor, char const* mode) {
    std::FILE* const stream = fopencookie(reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor)),
                                          mode, {readCookie, writeCookie, seekCookie, closeCookie});
    if (stream != nullptr)
        s_streams.at(static_cast<std::size_t>(descriptor)) = stream;
    return stream;
}

} // namespace

std::function<void(std::string const& path)> test::g_afterMaking;

extern "C" {

std::FILE* fdopen(int descriptor, char const* mode) noexcept {
    if (s_untilFailure == 0)
        return original(&fdopen, "fdopen")(descriptor, mode);
    return fails() ? nullptr : cookieStream(descriptor, mode);
}

int fileno(std::FILE* stream) noexcept {
    for (std::size_t descriptor = 0; descriptor < s_streams.size(); ++descriptor)
        if (s_streams.at(descriptor) == stream)
            return static_cast<int>(descriptor);
    return original(&fileno, "fileno")(stream);
}

int open(char const* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    mode_t const mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openat(AT_FDCWD, path, flags, mode);
}

int openat(int directory, char const* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    mode_t const mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    int const result = call(&openat, "openat", directory, path, flags, mode);
    if ((flags & O_CREAT) != 0)
        tellOfMaking(directory, path);
    return result;
}

ssize_t read(int descriptor, void* bytes, std::size_t count) {
    return call(&read, "read", descriptor, bytes, count);
}
off_t lseek(int descriptor, off_t offset, int whence) noexcept {
    return call(&lseek, "lseek", descriptor, offset, whence);
}
DIR* opendir(char const* path) { return fails() ? nullptr : original(&opendir, "opendir")(path); }
DIR* fdopendir(int descriptor) { return fails() ? nullptr : original(&fdopendir, "fdopendir")(descriptor); }
dirent* readdir(DIR* directory) { return fails() ? nullptr : original(&readdir, "readdir")(directory); }
int access(char const* path, int mode) noexcept { return call(&access, "access", path, mode); }
int stat(char const* path, struct stat* status) noexcept {
    return call(static_cast<int (*)(char const*, struct stat*)>(&stat), "stat", path, status);
}
int lstat(char const* path, struct stat* status) noexcept { return call(&lstat, "lstat", path, status); }
int fstat(int descriptor, struct stat* status) noexcept { return call(&fstat, "fstat", descriptor, status); }
int fstatat(int directory, char const* path, struct stat* status, int flags) noexcept {
    return call(&fstatat, "fstatat", directory, path, status, flags);
}
int mkdir(char const* path, mode_t mode) noexcept { return call(&mkdir, "mkdir", path, mode); }
int mkdirat(int directory, char const* path, mode_t mode) noexcept {
    int const result = call(&mkdirat, "mkdirat", directory, path, mode);
    tellOfMaking(directory, path);
    return result;
}
int renameat(int from, char const* oldName, int to, char const* newName) noexcept {
    return call(&renameat, "renameat", from, oldName, to, newName);
}
int unlink(char const* path) noexcept { return call(&unlink, "unlink", path); }
int unlinkat(int directory, char const* name, int flags) noexcept {
    return call(&unlinkat, "unlinkat", directory, name, flags);
}

} // extern "C"

namespace test {

long hostCalls() { return s_calls; }

FailingHostCall::FailingHostCall(long n) { s_untilFailure = n; }
FailingHostCall::~FailingHostCall() { s_untilFailure = 0; }
bool FailingHostCall::happened() { return s_untilFailure == 0; }

} // namespace test
